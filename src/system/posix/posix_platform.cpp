#include "system/posix/posix_platform.hpp"

namespace kiv {

PosixPlatform::PosixPlatform(PlatformSettings settings)
    : settings_(std::move(settings)),
      host_(MakePosixHost(settings_)),
      files_(MakePosixFileSystem(settings_)),
      fileTable_(MakePosixFileTable(settings_)),
      profiles_(MakePosixProfileFiles(settings_)),
      registry_(MakePosixRegistryStore(settings_)),
      windows_(MakePosixWindowSystem(settings_)),
      machine_(MakePosixMachine(settings_)) {}

std::shared_ptr<Platform> MakeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<PosixPlatform>(std::move(settings));
}

}  // namespace kiv
