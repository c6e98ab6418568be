// Facts of the machine on Windows: the true version from ntdll's
// RtlGetVersion (GetVersionEx answers what compatibility shims make it
// answer), the bitness from the process's own size or WOW64. A fact pinned
// in the settings is answered as pinned.
#include <windows.h>

#include <charconv>
#include <string>

#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

using RtlGetVersionCall = LONG(WINAPI*)(OSVERSIONINFOEXW*);

String Decimal(unsigned long n) {
    const std::string digits = std::to_string(n);
    return String(digits.begin(), digits.end());
}

String ProductName(const OSVERSIONINFOEXW& v) {
    if (v.wProductType != VER_NT_WORKSTATION) return u"Windows Server";
    const unsigned long major = v.dwMajorVersion, minor = v.dwMinorVersion;
    if (major == 5 && minor == 0) return u"Windows 2000";
    if (major == 5 && (minor == 1 || minor == 2)) return u"Windows XP";
    if (major == 6 && minor == 0) return u"Windows Vista";
    if (major == 6 && minor == 1) return u"Windows 7";
    if (major == 6 && minor == 2) return u"Windows 8";
    if (major == 6 && minor == 3) return u"Windows 8.1";
    if (major == 10 && minor == 0) return v.dwBuildNumber < 22000 ? u"Windows 10" : u"Windows 11";
    return u"Windows";
}

class WindowsMachine final : public Machine {
public:
    explicit WindowsMachine(const PlatformSettings& settings) : pins_(settings.pins) {}

    SystemVersion systemVersion() override {
        if (const auto pinned = pins_.find("winver"); pinned != pins_.end()) return {FromUtf8(pinned->second), u""};
        OSVERSIONINFOEXW v{};
        v.dwOSVersionInfoSize = sizeof v;
        const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
        const auto call = ntdll != nullptr
                              ? reinterpret_cast<RtlGetVersionCall>(reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")))
                              : nullptr;
        if (call == nullptr || call(&v) != 0) raise(kInvalidCall);
        const String name = ProductName(v) + u" " + Decimal(v.dwMajorVersion) + u"." + Decimal(v.dwMinorVersion) +
                            u"." + Decimal(v.dwBuildNumber);
        // The whole service-pack buffer, its NULs included.
        const wchar_t* sp = v.szCSDVersion;
        return {name, String(sp, sp + sizeof v.szCSDVersion / sizeof v.szCSDVersion[0])};
    }

    Integer systemBits() override {
        if (const auto pinned = pins_.find("winbit"); pinned != pins_.end()) {
            Integer bits = 0;
            const std::string& text = pinned->second;
            const auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), bits);
            if (ec != std::errc() || p != text.data() + text.size()) raise(kTypeMismatch);
            return bits;
        }
        if constexpr (sizeof(void*) == 8) return 64;
        BOOL wow64 = FALSE;
        if (!IsWow64Process(GetCurrentProcess(), &wow64)) raise(kInvalidCall);
        return wow64 ? Integer{64} : Integer{32};
    }

private:
    std::map<std::string, std::string> pins_;
};

}  // namespace

std::unique_ptr<Machine> makeWindowsMachine(const PlatformSettings& settings) {
    return std::make_unique<WindowsMachine>(settings);
}

}  // namespace kiv
