#include "frame/platform.hpp"

#include <cctype>
#include <cstdlib>

namespace kiv {
namespace {

std::shared_ptr<Platform>& Installed() {
    static std::shared_ptr<Platform> p;
    return p;
}

std::string Environment(const char* name) {
    const char* v = std::getenv(name);
    return v != nullptr ? v : "";
}

// $XDG_DATA_HOME/kiv, else ~/.local/share/kiv.
std::string DataFolder() {
    std::string base = Environment("XDG_DATA_HOME");
    if (base.empty()) {
        const std::string home = Environment("HOME");
        base = (home.empty() ? std::string(".") : home) + "/.local/share";
    }
    return base + "/kiv";
}

}  // namespace

PlatformSettings PlatformSettings::fromEnvironment() {
    PlatformSettings s;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const std::string folder = Environment((std::string("KIV_DRIVE_") + letter).c_str());
        if (!folder.empty()) s.drives[letter] = folder;
    }
    if (!s.drives.contains('C')) s.drives['C'] = defaultDriveC();
    s.registryFolder = Environment("KIV_REGISTRY");
    if (s.registryFolder.empty()) s.registryFolder = DataFolder() + "/registry";
    s.utf8Files = !Environment("KIV_TEXT_UTF8").empty() && Environment("KIV_TEXT_UTF8") != "0";
    // Facts of the host and the machine pinned for unattended runs, as `kiv --pin`
    // does; a variable that is set but empty pins the empty fact.
    for (const char* fact : {"app", "winver", "winbit", "pcname", "username", "ip"}) {
        std::string name = "KIV_PIN_";
        for (const char* c = fact; *c != '\0'; ++c) name += static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
        if (const char* v = std::getenv(name.c_str())) s.pins[fact] = v;
    }
    return s;
}

std::string PlatformSettings::defaultDriveC() { return DataFolder() + "/drive-c"; }

SystemPlatform::SystemPlatform(PlatformSettings settings, const SeamMakers& make)
    : settings_(std::move(settings)),
      host_(make.host(settings_)),
      files_(make.files(settings_)),
      fileTable_(make.fileTable(settings_)),
      profiles_(make.profiles(settings_)),
      registry_(make.registry(settings_)),
      windows_(make.windows(settings_)),
      machine_(make.machine(settings_)) {}

Platform& CurrentPlatform() {
    std::shared_ptr<Platform>& p = Installed();
    if (!p) p = MakeSystemPlatform(PlatformSettings::fromEnvironment());
    return *p;
}

void InstallPlatform(std::shared_ptr<Platform> p) { Installed() = std::move(p); }

}  // namespace kiv
