#include "system/posix/posix_platform.hpp"

namespace kiv {

PosixPlatform::PosixPlatform(PlatformSettings settings)
    : SystemPlatform(std::move(settings),
                     {MakePosixHost, MakePosixFileSystem, MakePosixFileTable, MakePosixProfileFiles,
                      MakePosixRegistryStore, MakePosixWindowSystem, MakePosixMachine}) {}

std::shared_ptr<Platform> MakeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<PosixPlatform>(std::move(settings));
}

}  // namespace kiv
