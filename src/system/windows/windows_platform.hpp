// The platform on Windows: each seam as thin as the system allows, over its
// own calls (user32, kernel32's files and private profiles, advapi32's
// registry, ntdll's version), paths as they stand.
#pragma once

#include <memory>

#include "frame/platform.hpp"

namespace kiv {

std::unique_ptr<Host> makeWindowsHost(const PlatformSettings& settings);
std::unique_ptr<FileSystem> makeWindowsFileSystem(const PlatformSettings& settings);
std::unique_ptr<FileTable> makeWindowsFileTable(const PlatformSettings& settings);
std::unique_ptr<ProfileFiles> makeWindowsProfileFiles(const PlatformSettings& settings);
std::unique_ptr<RegistryStore> makeWindowsRegistryStore(const PlatformSettings& settings);
std::unique_ptr<WindowSystem> makeWindowsWindowSystem(const PlatformSettings& settings);
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
