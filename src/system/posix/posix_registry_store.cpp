#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixRegistryStore final : public RegistryStore {};

}  // namespace

std::unique_ptr<RegistryStore> makePosixRegistryStore(const PlatformSettings&) { return std::make_unique<PosixRegistryStore>(); }

}  // namespace kiv
