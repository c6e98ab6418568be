#include "system/windows/windows_platform.hpp"

namespace kiv {

WindowsPlatform::WindowsPlatform(PlatformSettings settings)
    : settings_(std::move(settings)),
      host_(MakeWindowsHost(settings_)),
      files_(MakeWindowsFileSystem(settings_)),
      fileTable_(MakeWindowsFileTable(settings_)),
      profiles_(MakeWindowsProfileFiles(settings_)),
      registry_(MakeWindowsRegistryStore(settings_)),
      windows_(MakeWindowsWindowSystem(settings_)),
      machine_(MakeWindowsMachine(settings_)) {}

std::shared_ptr<Platform> MakeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<WindowsPlatform>(std::move(settings));
}

}  // namespace kiv
