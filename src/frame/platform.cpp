#include "frame/platform.hpp"

#include <cctype>
#include <cstdlib>

namespace kiv {
namespace {

std::shared_ptr<Platform>& installed() {
    static std::shared_ptr<Platform> p;
    return p;
}

std::string environment(const char* name) {
    const char* v = std::getenv(name);
    return v != nullptr ? v : "";
}

// $XDG_DATA_HOME/kiv, else ~/.local/share/kiv.
std::string dataFolder() {
    std::string base = environment("XDG_DATA_HOME");
    if (base.empty()) {
        const std::string home = environment("HOME");
        base = (home.empty() ? std::string(".") : home) + "/.local/share";
    }
    return base + "/kiv";
}

}  // namespace

PlatformSettings PlatformSettings::fromEnvironment() {
    PlatformSettings s;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string folder = environment((std::string("KIV_DRIVE_") + letter).c_str());
        if (!folder.empty()) s.drives[letter] = folder;
    }
    if (!s.drives.contains('C')) s.drives['C'] = defaultDriveC();
    s.registryFolder = environment("KIV_REGISTRY");
    if (s.registryFolder.empty()) s.registryFolder = dataFolder() + "/registry";
    s.utf8Files = !environment("KIV_TEXT_UTF8").empty() && environment("KIV_TEXT_UTF8") != "0";
    return s;
}

std::string PlatformSettings::defaultDriveC() { return dataFolder() + "/drive-c"; }

Platform& platform() {
    std::shared_ptr<Platform>& p = installed();
    if (!p) p = makeSystemPlatform(PlatformSettings::fromEnvironment());
    return *p;
}

void installPlatform(std::shared_ptr<Platform> p) { installed() = std::move(p); }

}  // namespace kiv
