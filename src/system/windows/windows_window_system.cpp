// The window helpers' calls on Windows, through user32. Handles travel as
// Longs: window handles are 32-bit values on 64-bit Windows too, and the
// z-order markers (-1, -2) are sign-extended as the system defines them.
#include <windows.h>

#include <cstdint>
#include <vector>

#include "frame/runtime.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

HWND Window(Long h) { return reinterpret_cast<HWND>(static_cast<std::intptr_t>(h)); }

// 1440 twips to the inch over the screen's dots per inch.
Double TwipsPerPixel(int axis) {
    const HDC screen = GetDC(nullptr);
    const int dpi = screen != nullptr ? GetDeviceCaps(screen, axis) : 0;
    if (screen != nullptr) ReleaseDC(nullptr, screen);
    return 1440.0 / (dpi > 0 ? dpi : 96);
}

// The keys of a name in braces ("{enter}"), as script hosts spell them.
WORD NamedKey(const String& name) {
    static const struct { const char16_t* name; WORD key; } keys[] = {
        {u"ENTER", VK_RETURN}, {u"TAB", VK_TAB}, {u"ESC", VK_ESCAPE}, {u"ESCAPE", VK_ESCAPE},
        {u"BACKSPACE", VK_BACK}, {u"BS", VK_BACK}, {u"DEL", VK_DELETE}, {u"DELETE", VK_DELETE},
        {u"UP", VK_UP}, {u"DOWN", VK_DOWN}, {u"LEFT", VK_LEFT}, {u"RIGHT", VK_RIGHT},
        {u"HOME", VK_HOME}, {u"END", VK_END}, {u"PGUP", VK_PRIOR}, {u"PGDN", VK_NEXT},
    };
    for (const auto& k : keys)
        if (CaseBlindEqual(name, k.name)) return k.key;
    return 0;
}

void AddKey(std::vector<INPUT>& inputs, WORD key, wchar_t unicode) {
    for (const DWORD up : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
        INPUT in{};
        in.type = INPUT_KEYBOARD;
        in.ki.wVk = key;
        in.ki.wScan = unicode;
        in.ki.dwFlags = up | (key == 0 ? KEYEVENTF_UNICODE : 0);
        inputs.push_back(in);
    }
}

class WindowsWindowSystem final : public WindowSystem {
public:
    Double twipsPerPixelX() override { return TwipsPerPixel(LOGPIXELSX); }
    Double twipsPerPixelY() override { return TwipsPerPixel(LOGPIXELSY); }

    bool setWindowPos(Long hWnd, Long after, Long x, Long y, Long cx, Long cy, Long flags) override {
        return SetWindowPos(Window(hWnd), Window(after), x, y, cx, cy, static_cast<UINT>(flags)) != FALSE;
    }
    bool killTimer(Long hWnd, Long idEvent) override {
        return KillTimer(Window(hWnd), static_cast<UINT_PTR>(static_cast<std::uint32_t>(idEvent))) != FALSE;
    }
    Long findWindow(const String& className, const String& title) override {
        const std::wstring c(className.begin(), className.end()), t(title.begin(), title.end());
        return static_cast<Long>(reinterpret_cast<std::intptr_t>(FindWindowW(c.c_str(), t.c_str())));
    }
    bool setForegroundWindow(Long hWnd) override { return SetForegroundWindow(Window(hWnd)) != FALSE; }

    // "~" and "{enter}" are the Enter key, "{name}" a named key, "{x}" the
    // character x itself, any other character is typed as it is.
    void sendKeys(const String& keys) override {
        std::vector<INPUT> inputs;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (keys[i] == u'~') {
                AddKey(inputs, VK_RETURN, 0);
                continue;
            }
            const std::size_t close = keys[i] == u'{' ? keys.find(u'}', i + 2) : String::npos;
            if (close != String::npos) {
                const String name = keys.substr(i + 1, close - i - 1);
                const WORD key = NamedKey(name);
                if (key != 0) AddKey(inputs, key, 0);
                else for (char16_t c : name) AddKey(inputs, 0, c);
                i = close;
                continue;
            }
            AddKey(inputs, 0, keys[i]);
        }
        if (!inputs.empty()) SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    }
};

}  // namespace

std::unique_ptr<WindowSystem> makeWindowsWindowSystem(const PlatformSettings&) {
    return std::make_unique<WindowsWindowSystem>();
}

}  // namespace kiv
