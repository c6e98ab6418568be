// Facts of the system the host runs on and the desktop's web opener, through
// the machine and host seams. Like every system helper they trap every error
// and answer a neutral result; none hands host text to a command interpreter.
#include <exception>
#include <optional>
#include <string_view>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

const String kCrLf = u"\r\n";

bool StartsCaseBlind(const String& s, std::u16string_view head) {
    return s.size() >= head.size() && CaseBlindEqual(s.substr(0, head.size()), String(head));
}

bool IsAsciiAlnum(char16_t c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// A web or mail address as the opener may receive it: http, https and mailto
// as given, a bare host name ("www.ditta.it", "ditta.it/listino") as http;
// nothing for any other text (another scheme, a path, a command).
std::optional<String> CheckedAddress(const String& u) {
    if (StartsCaseBlind(u, u"http://") || StartsCaseBlind(u, u"https://") || StartsCaseBlind(u, u"mailto:")) return u;
    if (StartsCaseBlind(u, u"www.")) return u"http://" + u;
    if (!IsAsciiAlnum(u.front()) || u.find_first_of(u":\\") != String::npos) return std::nullopt;
    const std::size_t dot = u.find(u'.');
    if (dot == String::npos || dot > u.find(u'/')) return std::nullopt;
    return u"http://" + u;
}

// Blanks, controls, non-ASCII characters (per UTF-8 byte) and the characters
// an address may not hold as "%XX"; "%" stays, so an encoded address passes.
String PercentEncoded(const String& u) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    static constexpr std::string_view kUnsafe = "\"<>\\^`{|}";
    std::string out;
    for (const char ch : ToUtf8(u)) {
        const auto b = static_cast<unsigned char>(ch);
        if (b < 33 || b >= 127 || kUnsafe.find(ch) != std::string_view::npos) {
            out += '%';
            out += kDigits[b >> 4];
            out += kDigits[b & 15];
        } else {
            out += ch;
        }
    }
    return FromUtf8(out);
}

}  // namespace

String Cl_KIV::GetSysDir(En_SysDir Quale) {
    try {
        String user = GetWinUserName();
        if (user.empty()) user = u"Default";
        String folder = CurrentPlatform().machine().systemFolder(Quale, user);
        if (folder.empty()) return folder;
        while (!folder.empty() && folder.back() == u'\\') folder.pop_back();
        return folder + u"\\";
    } catch (const std::exception&) {
        return String();
    }
}

String Cl_KIV::GetWindowsVer() {
    try {
        const SystemVersion v = CurrentPlatform().machine().systemVersion();
        const String servicePack = Trim(StripNuls(Variant(v.servicePack)));
        return servicePack.empty() ? v.name : v.name + u" " + servicePack;
    } catch (const std::exception&) {
        return String();
    }
}

Integer Cl_KIV::GetWindowsBit() {
    try {
        return CurrentPlatform().machine().systemBits();
    } catch (const std::exception&) {
        return 0;
    }
}

String Cl_KIV::GetPCName() {
    try {
        return CurrentPlatform().machine().computerName();
    } catch (const std::exception&) {
        return String();
    }
}

String Cl_KIV::GetWinUserName() {
    try {
        return CurrentPlatform().machine().userName();
    } catch (const std::exception&) {
        return String();
    }
}

Boolean Cl_KIV::Is_ThemeActive() {
    try {
        return CurrentPlatform().machine().themeActive();
    } catch (const std::exception&) {
        return false;
    }
}

String Cl_KIV::GetProviderType() {
    try {
        const std::optional<ConnectionState> state = CurrentPlatform().machine().connection();
        // Without the platform's report, a usable address means a network.
        if (!state) return GetIP().empty() ? String() : String(u"LAN");
        if (state->flags & 0x20) return u"OFFLINE";
        if (!state->connected) return String();
        if (state->flags & 0x1) return u"MODEM";
        if (state->flags & 0x2) return u"LAN";
        if (state->flags & 0x4) return u"PROXY";
        return String();
    } catch (const std::exception&) {
        return String();
    }
}

String Cl_KIV::Ext2Pgm(const String& Estensione) {
    try {
        String e = Trim(Estensione);
        const std::size_t dot = e.rfind(u'.');
        if (dot != String::npos) e.erase(0, dot + 1);
        if (e.empty() || e.find_first_of(u"\\/ ") != String::npos) return String();
        return CurrentPlatform().machine().programFor(u"." + e);
    } catch (const std::exception&) {
        return String();
    }
}

Boolean Cl_KIV::ApriSito(const String& Url) {
    try {
        const String u = Trim(Url);
        if (u.empty()) return false;
        const std::optional<String> address = CheckedAddress(u);
        if (!address) return false;
        return CurrentPlatform().host().openDocument(PercentEncoded(*address));
    } catch (const std::exception&) {
        return false;
    }
}

String Cl_KIV::SaveIP2Str() {
    try {
        String out;
        for (const String& address : CurrentPlatform().machine().localAddresses()) out += (out.empty() ? u"" : kCrLf) + address;
        return out;
    } catch (const std::exception&) {
        return String();
    }
}

String Cl_KIV::GetIP() {
    const String all = SaveIP2Str();
    return all.substr(0, all.find(kCrLf));
}

Boolean Cl_KIV::SaveIP(const String& T_File, Boolean B_Appe) {
    if (T_File.empty()) return false;
    FileTable& table = CurrentPlatform().fileTable();
    Integer number = 0;
    try {
        const String addresses = SaveIP2Str();
        number = table.freeNumber();
        table.open(T_File, B_Appe ? FileMode::Append : FileMode::Output, number);
        for (std::size_t start = 0; start < addresses.size();) {
            std::size_t end = addresses.find(kCrLf, start);
            if (end == String::npos) end = addresses.size();
            table.print(number, addresses.substr(start, end - start));
            start = end + kCrLf.size();
        }
        table.close(number);
        return true;
    } catch (const std::exception&) {
        if (number != 0) {
            try {
                table.close(number);
            } catch (const std::exception&) {
            }
        }
        return false;
    }
}

}  // namespace kiv
