#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixWindowSystem final : public WindowSystem {};

}  // namespace

std::unique_ptr<WindowSystem> makePosixWindowSystem(const PlatformSettings&) { return std::make_unique<PosixWindowSystem>(); }

}  // namespace kiv
