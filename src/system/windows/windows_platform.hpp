// The platform on Windows: each seam as thin as the system allows, over its
// own calls (user32, kernel32's files and private profiles, advapi32's
// registry, ntdll's version), paths as they stand.
#pragma once

#include <memory>

#include "frame/platform.hpp"

namespace kiv {

std::unique_ptr<Host> MakeWindowsHost(const PlatformSettings& settings);
std::unique_ptr<FileSystem> MakeWindowsFileSystem(const PlatformSettings& settings);
std::unique_ptr<FileTable> MakeWindowsFileTable(const PlatformSettings& settings);
std::unique_ptr<ProfileFiles> MakeWindowsProfileFiles(const PlatformSettings& settings);
std::unique_ptr<RegistryStore> MakeWindowsRegistryStore(const PlatformSettings& settings);
std::unique_ptr<WindowSystem> MakeWindowsWindowSystem(const PlatformSettings& settings);
std::unique_ptr<Machine> MakeWindowsMachine(const PlatformSettings& settings);

class WindowsPlatform final : public SystemPlatform {
public:
    explicit WindowsPlatform(PlatformSettings settings);
};

}  // namespace kiv
