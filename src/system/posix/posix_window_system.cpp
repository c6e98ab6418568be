#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// No window system here: every call is a no-op that finds nothing, and the
// screen is taken at 96 dpi.
class PosixWindowSystem final : public WindowSystem {
public:
    Double twipsPerPixelX() override { return 15.0; }
    Double twipsPerPixelY() override { return 15.0; }
    bool setWindowPos(Long, Long, Long, Long, Long, Long, Long) override { return false; }
    bool killTimer(Long, Long) override { return false; }
    Long findWindow(const String&, const String&) override { return 0; }
    bool setForegroundWindow(Long) override { return false; }
    void sendKeys(const String&) override {}
};

}  // namespace

std::unique_ptr<WindowSystem> makePosixWindowSystem(const PlatformSettings&) { return std::make_unique<PosixWindowSystem>(); }

}  // namespace kiv
