#include "system/windows/windows_platform.hpp"

namespace kiv {

WindowsPlatform::WindowsPlatform(PlatformSettings settings)
    : SystemPlatform(std::move(settings),
                     {MakeWindowsHost, MakeWindowsFileSystem, MakeWindowsFileTable, MakeWindowsProfileFiles,
                      MakeWindowsRegistryStore, MakeWindowsWindowSystem, MakeWindowsMachine}) {}

std::shared_ptr<Platform> MakeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<WindowsPlatform>(std::move(settings));
}

}  // namespace kiv
