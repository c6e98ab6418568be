#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixProfileFiles final : public ProfileFiles {};

}  // namespace

std::unique_ptr<ProfileFiles> makePosixProfileFiles(const PlatformSettings&) { return std::make_unique<PosixProfileFiles>(); }

}  // namespace kiv
