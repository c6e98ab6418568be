// The host on Windows: message boxes and the beep through user32, the local
// clock, the host executable's name. For unattended runs KIV_MSGBOX_LOG names
// a file that receives each message as a line ("[title] text", UTF-8)
// instead of a box on the screen, and KIV_NOW ("YYYY-MM-DD HH:MM:SS") pins
// the clock.
#include <windows.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

std::wstring Wide(const String& s) { return std::wstring(s.begin(), s.end()); }

std::optional<Date> PinnedNow() {
    const char* text = std::getenv("KIV_NOW");
    if (text == nullptr || *text == '\0') return std::nullopt;
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    if (std::sscanf(text, "%d-%d-%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s) < 3) return std::nullopt;
    return Date{DateFromParts(y, mo, d).serial + TimeFromParts(h, mi, s).serial};
}

UINT IconStyle(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::Critical: return MB_ICONHAND;
        case MsgIcon::Question: return MB_ICONQUESTION;
        case MsgIcon::Exclamation: return MB_ICONEXCLAMATION;
        case MsgIcon::Information: return MB_ICONASTERISK;
        case MsgIcon::None: break;
    }
    return 0;
}

class WindowsHost final : public Host {
public:
    explicit WindowsHost(const PlatformSettings& settings) {
        const auto app = settings.pins.find("app");
        if (app != settings.pins.end()) app_ = FromUtf8(app->second);
    }

    int messageBox(MsgIcon icon, const String& title, const String& text) override {
        if (const char* log = std::getenv("KIV_MSGBOX_LOG"); log != nullptr && *log != '\0') {
            if (std::FILE* f = std::fopen(log, "ab")) {
                const std::string line = "[" + ToUtf8(title) + "] " + ToUtf8(text) + "\r\n";
                std::fwrite(line.data(), 1, line.size(), f);
                std::fclose(f);
            }
            return IDOK;
        }
        return MessageBoxW(nullptr, Wide(text).c_str(), Wide(title).c_str(), MB_OK | MB_TASKMODAL | IconStyle(icon));
    }
    void beep() override { MessageBeep(MB_OK); }
    Date now() override {
        if (const std::optional<Date> pinned = PinnedNow()) return *pinned;
        SYSTEMTIME t{};
        GetLocalTime(&t);
        return Date{DateFromParts(t.wYear, t.wMonth, t.wDay).serial + TimeFromParts(t.wHour, t.wMinute, t.wSecond).serial};
    }
    String applicationName() override {
        if (!app_.empty()) return app_;
        wchar_t path[MAX_PATH] = {};
        const DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
        String name(path, path + n);
        const std::size_t slash = name.find_last_of(u"\\/");
        if (slash != String::npos) name.erase(0, slash + 1);
        const std::size_t dot = name.rfind(u'.');
        if (dot != String::npos) name.erase(dot);
        return name;
    }
    bool startProgram(const String& commandLine) override {
        std::wstring line = Wide(commandLine);
        STARTUPINFOW si{};
        si.cb = sizeof si;
        PROCESS_INFORMATION pi{};
        if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) return false;
        CloseHandle(pi.hThread);
        CloseHandle(pi.hProcess);
        return true;
    }
    bool openDocument(const String& target) override {
        const HINSTANCE r = ShellExecuteW(nullptr, L"open", Wide(target).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
        return reinterpret_cast<INT_PTR>(r) > 32;
    }

private:
    String app_;
};

}  // namespace

std::unique_ptr<Host> MakeWindowsHost(const PlatformSettings& settings) { return std::make_unique<WindowsHost>(settings); }

}  // namespace kiv
