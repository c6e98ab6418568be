// The machine on Windows: the true version from RtlGetVersion, the names,
// folders and addresses the system reports. Libraries a machine may lack
// (uxtheme, wininet, iphlpapi, shlwapi) are loaded when asked, so a missing
// one gives the neutral answer instead of a DLL that does not load.
#include <winsock2.h>
#include <ws2tcpip.h>
#include <windows.h>
#include <iphlpapi.h>
#include <shlobj.h>

#include <string>
#include <vector>

#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

template <class F>
F Proc(const wchar_t* library, const char* name) {
    HMODULE module = GetModuleHandleW(library);
    if (module == nullptr) module = LoadLibraryW(library);
    return module == nullptr ? nullptr : reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

String Text(const wchar_t* s) { return String(s, s + wcslen(s)); }

class WindowsMachine final : public Machine {
public:
    explicit WindowsMachine(const PlatformSettings& settings) : pins_(settings.pins) {}

    SystemVersion systemVersion() override {
        if (const std::string* p = pin("winver")) return {FromUtf8(*p), u""};
        using RtlGetVersionFn = LONG(WINAPI*)(OSVERSIONINFOEXW*);
        const auto rtlGetVersion = Proc<RtlGetVersionFn>(L"ntdll.dll", "RtlGetVersion");
        OSVERSIONINFOEXW v{};
        v.dwOSVersionInfoSize = sizeof v;
        if (rtlGetVersion == nullptr || rtlGetVersion(&v) != 0) Raise(kInvalidCall);
        const DWORD major = v.dwMajorVersion, minor = v.dwMinorVersion, build = v.dwBuildNumber;
        const char* name = "Windows";
        if (v.wProductType != VER_NT_WORKSTATION) name = "Windows Server";
        else if (major == 5 && minor == 0) name = "Windows 2000";
        else if (major == 5 && (minor == 1 || minor == 2)) name = "Windows XP";
        else if (major == 6 && minor == 0) name = "Windows Vista";
        else if (major == 6 && minor == 1) name = "Windows 7";
        else if (major == 6 && minor == 2) name = "Windows 8";
        else if (major == 6 && minor == 3) name = "Windows 8.1";
        else if (major == 10 && minor == 0) name = build < 22000 ? "Windows 10" : "Windows 11";
        const std::string text = std::string(name) + " " + std::to_string(major) + "." + std::to_string(minor) + "." +
                                 std::to_string(build);
        // The whole 128-character buffer, NULs included, for the caller to strip.
        return {FromUtf8(text), String(std::begin(v.szCSDVersion), std::end(v.szCSDVersion))};
    }

    Integer systemBits() override {
        if (const std::string* p = pin("winbit")) {
            std::size_t used = 0;
            const int bits = std::stoi(*p, &used);
            if (used != p->size()) Raise(kTypeMismatch);
            return static_cast<Integer>(bits);
        }
        if (sizeof(void*) == 8) return 64;
        BOOL emulated = FALSE;
        return IsWow64Process(GetCurrentProcess(), &emulated) && emulated ? Integer{64} : Integer{32};
    }

    String computerName() override {
        if (const std::string* p = pin("pcname")) return FromUtf8(*p);
        wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
        DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
        if (!GetComputerNameW(name, &size)) Raise(kInvalidCall);
        return Text(name);
    }

    String userName() override {
        if (const std::string* p = pin("username")) return FromUtf8(*p);
        wchar_t name[257] = {};
        DWORD size = 257;
        return GetUserNameW(name, &size) ? Text(name) : String();
    }

    String systemFolder(Long which, const String&) override {
        wchar_t path[MAX_PATH + 1] = {};
        const auto shell = [&](int csidl) {
            return SUCCEEDED(SHGetFolderPathW(nullptr, csidl, nullptr, 0, path)) ? Text(path) : String();
        };
        switch (which) {
            case 0: return GetWindowsDirectoryW(path, MAX_PATH) ? Text(path) : String();
            case 1: return shell(CSIDL_PROGRAM_FILES);
            case 2: return GetTempPathW(MAX_PATH, path) ? Text(path) : String();
            case 3: return GetSystemDirectoryW(path, MAX_PATH) ? Text(path) : String();
            case 4: return shell(CSIDL_PERSONAL);
            case 5: return shell(CSIDL_DESKTOPDIRECTORY);
            case 6: return shell(CSIDL_FONTS);
            case 7: return shell(CSIDL_PROGRAM_FILES_COMMON);
            case 8: return shell(CSIDL_COMMON_STARTUP);
            case 9: return shell(CSIDL_STARTUP);
            default: return String();
        }
    }

    std::vector<String> localAddresses() override {
        if (const std::string* p = pin("ip")) return p->empty() ? std::vector<String>{} : std::vector{FromUtf8(*p)};
        using GetAdaptersAddressesFn = ULONG(WINAPI*)(ULONG, ULONG, void*, IP_ADAPTER_ADDRESSES*, ULONG*);
        const auto get = Proc<GetAdaptersAddressesFn>(L"iphlpapi.dll", "GetAdaptersAddresses");
        if (get == nullptr) return {};
        ULONG size = 16384;
        std::vector<unsigned char> buffer;
        ULONG rc = ERROR_BUFFER_OVERFLOW;
        for (int tries = 0; tries < 3 && rc == ERROR_BUFFER_OVERFLOW; ++tries) {
            buffer.resize(size);
            rc = get(AF_INET, GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER, nullptr,
                     reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data()), &size);
        }
        if (rc != NO_ERROR) return {};
        std::vector<String> out;
        for (auto* a = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(buffer.data()); a != nullptr; a = a->Next) {
            if (a->OperStatus != IfOperStatusUp || a->FirstUnicastAddress == nullptr) continue;
            const SOCKADDR* address = a->FirstUnicastAddress->Address.lpSockaddr;
            if (address == nullptr || address->sa_family != AF_INET) continue;
            const auto* b = reinterpret_cast<const unsigned char*>(&reinterpret_cast<const sockaddr_in*>(address)->sin_addr);
            if (!IsRoutableLocal(b[0], b[1])) continue;
            out.push_back(FromUtf8(std::to_string(b[0]) + "." + std::to_string(b[1]) + "." + std::to_string(b[2]) +
                                   "." + std::to_string(b[3])));
        }
        return out;
    }

    std::optional<ConnectionState> connection() override {
        using GetConnectedStateFn = BOOL(WINAPI*)(DWORD*, DWORD);
        const auto get = Proc<GetConnectedStateFn>(L"wininet.dll", "InternetGetConnectedState");
        if (get == nullptr) return ConnectionState{};
        DWORD flags = 0;
        const bool connected = get(&flags, 0) != FALSE;
        return ConnectionState{connected, flags};
    }

    String programFor(const String& extension) override {
        using AssocQueryStringFn = HRESULT(WINAPI*)(DWORD, DWORD, const wchar_t*, const wchar_t*, wchar_t*, DWORD*);
        const auto query = Proc<AssocQueryStringFn>(L"shlwapi.dll", "AssocQueryStringW");
        if (query == nullptr) return String();
        const std::wstring ext(extension.begin(), extension.end());
        wchar_t path[MAX_PATH * 2] = {};
        DWORD size = MAX_PATH * 2;
        constexpr DWORD kExecutable = 2;  // ASSOCSTR_EXECUTABLE
        return query(0, kExecutable, ext.c_str(), L"open", path, &size) == S_OK ? Text(path) : String();
    }

    bool themeActive() override {
        using ThemeFn = BOOL(WINAPI*)();
        const auto active = Proc<ThemeFn>(L"uxtheme.dll", "IsThemeActive");
        const auto appThemed = Proc<ThemeFn>(L"uxtheme.dll", "IsAppThemed");
        return active != nullptr && appThemed != nullptr && active() && appThemed();
    }

private:
    const std::string* pin(const std::string& name) const {
        const auto it = pins_.find(name);
        return it == pins_.end() ? nullptr : &it->second;
    }

    std::map<std::string, std::string> pins_;
};

}  // namespace

std::unique_ptr<Machine> MakeWindowsMachine(const PlatformSettings& settings) {
    return std::make_unique<WindowsMachine>(settings);
}

}  // namespace kiv
