#include "system/windows/windows_platform.hpp"

namespace kiv {

WindowsPlatform::WindowsPlatform(PlatformSettings settings)
    : settings_(std::move(settings)),
      host_(makeWindowsHost(settings_)),
      files_(makeWindowsFileSystem(settings_)),
      fileTable_(makeWindowsFileTable(settings_)),
      profiles_(makeWindowsProfileFiles(settings_)),
      registry_(makeWindowsRegistryStore(settings_)),
      windows_(makeWindowsWindowSystem(settings_)),
      machine_(makeWindowsMachine(settings_)) {}

std::shared_ptr<Platform> makeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<WindowsPlatform>(std::move(settings));
}

}  // namespace kiv
