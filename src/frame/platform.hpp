// The platform object: everything the component asks of its surroundings
// (the host's messages and clock, files and the host's file numbers, INI
// files, the registry, the window system, facts of the machine) goes through
// one object made of small seams, so that a host, a test or another platform
// can supply its own.
//
// It is installed once per process, before the first call, and used from one
// thread at a time, as the component itself is (one object, one thread).
#pragma once

#include <map>
#include <memory>
#include <string>

#include "frame/file_system.hpp"
#include "frame/host.hpp"
#include "frame/machine.hpp"
#include "frame/profile_files.hpp"
#include "frame/registry_store.hpp"
#include "frame/window_system.hpp"

namespace kiv {

// Where the platform finds the user's data and which facts are pinned. The
// defaults come from the environment; the kiv driver's options override them.
struct PlatformSettings {
    // Drive letter (upper case) -> folder that stands for its root.
    std::map<char, std::string> drives;
    // Folder of the registry store's databases.
    std::string registryFolder;
    // Facts fixed for reproducible runs: app, winver, winbit, pcname, username, ip.
    std::map<std::string, std::string> pins;
    // Text files in UTF-8 instead of code page 1252.
    bool utf8Files = false;

    // KIV_DRIVE_<L>, KIV_REGISTRY, KIV_TEXT_UTF8, else folders under
    // $XDG_DATA_HOME/kiv (or ~/.local/share/kiv).
    static PlatformSettings fromEnvironment();
    // The folder that stands for C: when nothing else is configured; made on
    // first use, with an empty Windows folder in it.
    static std::string defaultDriveC();
};

class Platform {
public:
    virtual ~Platform() = default;
    virtual Host& host() = 0;
    virtual FileSystem& files() = 0;
    virtual FileTable& fileTable() = 0;
    virtual ProfileFiles& profiles() = 0;
    virtual RegistryStore& registry() = 0;
    virtual WindowSystem& windows() = 0;
    virtual Machine& machine() = 0;
    virtual const PlatformSettings& settings() const = 0;
};

// How one system makes its seams, each from the settings.
struct SeamMakers {
    std::unique_ptr<Host> (*host)(const PlatformSettings&);
    std::unique_ptr<FileSystem> (*files)(const PlatformSettings&);
    std::unique_ptr<FileTable> (*fileTable)(const PlatformSettings&);
    std::unique_ptr<ProfileFiles> (*profiles)(const PlatformSettings&);
    std::unique_ptr<RegistryStore> (*registry)(const PlatformSettings&);
    std::unique_ptr<WindowSystem> (*windows)(const PlatformSettings&);
    std::unique_ptr<Machine> (*machine)(const PlatformSettings&);
};

// A platform made of one system's seams (POSIX, Windows). A host or a test
// derives from it to replace a seam.
class SystemPlatform : public Platform {
public:
    SystemPlatform(PlatformSettings settings, const SeamMakers& make);
    Host& host() override { return *host_; }
    FileSystem& files() override { return *files_; }
    FileTable& fileTable() override { return *fileTable_; }
    ProfileFiles& profiles() override { return *profiles_; }
    RegistryStore& registry() override { return *registry_; }
    WindowSystem& windows() override { return *windows_; }
    Machine& machine() override { return *machine_; }
    const PlatformSettings& settings() const override { return settings_; }

private:
    PlatformSettings settings_;
    std::unique_ptr<Host> host_;
    std::unique_ptr<FileSystem> files_;
    std::unique_ptr<FileTable> fileTable_;
    std::unique_ptr<ProfileFiles> profiles_;
    std::unique_ptr<RegistryStore> registry_;
    std::unique_ptr<WindowSystem> windows_;
    std::unique_ptr<Machine> machine_;
};

// The platform in force. Until one is installed this is the system's own,
// with settings from the environment.
Platform& CurrentPlatform();
void InstallPlatform(std::shared_ptr<Platform> p);

// The system's own platform, defined in the system layer (src/system/<os>/).
std::shared_ptr<Platform> MakeSystemPlatform(PlatformSettings settings);

}  // namespace kiv
