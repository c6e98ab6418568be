#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixMachine final : public Machine {};

}  // namespace

std::unique_ptr<Machine> makePosixMachine(const PlatformSettings&) { return std::make_unique<PosixMachine>(); }

}  // namespace kiv
