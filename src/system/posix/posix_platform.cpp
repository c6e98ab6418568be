#include "system/posix/posix_platform.hpp"

namespace kiv {

PosixPlatform::PosixPlatform(PlatformSettings settings)
    : settings_(std::move(settings)),
      host_(makePosixHost(settings_)),
      files_(makePosixFileSystem(settings_)),
      fileTable_(makePosixFileTable(settings_)),
      profiles_(makePosixProfileFiles(settings_)),
      registry_(makePosixRegistryStore(settings_)),
      windows_(makePosixWindowSystem(settings_)),
      machine_(makePosixMachine(settings_)) {}

std::shared_ptr<Platform> makeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<PosixPlatform>(std::move(settings));
}

}  // namespace kiv
