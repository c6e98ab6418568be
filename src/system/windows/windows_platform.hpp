// The platform on Windows: the host's own message boxes, beep and clock, the
// Win32 file system with paths as they stand. The registry, INI, window and
// machine seams join as their operations define them.
#pragma once

#include <memory>

#include "frame/platform.hpp"

namespace kiv {

std::unique_ptr<Host> makeWindowsHost(const PlatformSettings& settings);
std::unique_ptr<FileSystem> makeWindowsFileSystem(const PlatformSettings& settings);
std::unique_ptr<Machine> makeWindowsMachine(const PlatformSettings& settings);

class WindowsPlatform final : public Platform {
public:
    explicit WindowsPlatform(PlatformSettings settings);
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

}  // namespace kiv
