// The window seam: the few calls into the window system that the form
// helpers make, and the screen's scale. Handles are Longs, as hosts hold them.
#pragma once

#include <optional>

#include "frame/value.hpp"

namespace kiv {

class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    // Twips per pixel of the screen, horizontally and vertically (15 at 96 dpi).
    virtual Double twipsPerPixelX() = 0;
    virtual Double twipsPerPixelY() = 0;

    // Places a window in the z-order (after -1: top-most, -2: not top-most)
    // and moves and sizes it; false when the window system refused.
    virtual bool setWindowPos(Long hWnd, Long after, Long x, Long y, Long cx, Long cy, Long flags) = 0;
    virtual bool killTimer(Long hWnd, Long idEvent) = 0;
    // A top-level window of that class and title; 0 when there is none.
    virtual Long findWindow(const String& className, const String& title) = 0;
    virtual bool setForegroundWindow(Long hWnd) = 0;
    // Types keys (in the host's key notation, "{enter}") into the active
    // window without waiting for them to be processed.
    virtual void sendKeys(const String& keys) = 0;

    // A rectangle in pixels, right and bottom excluded.
    struct Rect {
        Long left = 0, top = 0, right = 0, bottom = 0;
    };
    // Sends a message to a window and waits for its answer.
    virtual Long sendMessage(Long hWnd, Long msg, Long wParam, Long lParam) = 0;
    // Paints a rectangle of a window's client area in one colour (&HBBGGRR).
    virtual bool fillRect(Long hWnd, const Rect& rect, Long colour) = 0;
    // The width in pixels of a text in the window's own font.
    virtual Long textWidth(Long hWnd, const String& text) = 0;
    // The client area of a window, or nothing when it has none.
    virtual std::optional<Rect> clientRect(Long hWnd) = 0;
    // The rectangle that spans every monitor, or nothing without a screen.
    virtual std::optional<Rect> virtualScreen() = 0;
};

}  // namespace kiv
