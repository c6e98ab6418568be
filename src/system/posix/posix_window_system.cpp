#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// No window system here: every call is a no-op that finds nothing, the
// screen is taken at 96 dpi and text at 8 pixels per character.
class PosixWindowSystem final : public WindowSystem {
public:
    Double twipsPerPixelX() override { return 15.0; }
    Double twipsPerPixelY() override { return 15.0; }
    bool setWindowPos(Long, Long, Long, Long, Long, Long, Long) override { return false; }
    bool killTimer(Long, Long) override { return false; }
    Long findWindow(const String&, const String&) override { return 0; }
    bool setForegroundWindow(Long) override { return false; }
    void sendKeys(const String&) override {}
    Long sendMessage(Long, Long, Long, Long) override { return 0; }
    bool fillRect(Long, const Rect&, Long) override { return false; }
    Long textWidth(Long, const String& text) override { return 8 * static_cast<Long>(text.size()); }
    std::optional<Rect> clientRect(Long) override { return std::nullopt; }
    std::optional<Rect> virtualScreen() override { return std::nullopt; }
};

}  // namespace

std::unique_ptr<WindowSystem> MakePosixWindowSystem(const PlatformSettings&) { return std::make_unique<PosixWindowSystem>(); }

}  // namespace kiv
