// Password scrambling and the master user. The scramble is obfuscation, not
// encryption: the key is fixed and public, so it only keeps a password out of
// a casual reader's sight in an INI file or the settings store. Hosts that
// need secrecy hash (PBKDF2, bcrypt, scrypt, Argon2) or use the platform's
// protected storage instead.
#include <exception>
#include <string>
#include <string_view>

#include "frame/cl_kiv.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

// Byte I of the key stream: "KIVPWD" stepped by 7 at each position.
unsigned char KeyByte(std::size_t i) {
    static constexpr std::string_view kKey = "KIVPWD";
    return static_cast<unsigned char>((static_cast<unsigned char>(kKey[i % kKey.size()]) + 7 * i) % 256);
}

// Each byte is chained to the previous scrambled one (the first to the
// length), so repeated characters and shared beginnings do not show.
std::string Chained(std::string_view bytes, bool scramble) {
    std::string out(bytes.size(), '\0');
    unsigned char prev = static_cast<unsigned char>(bytes.size() % 256);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto in = static_cast<unsigned char>(bytes[i]);
        const auto res = static_cast<unsigned char>(in ^ KeyByte(i) ^ prev);
        out[i] = static_cast<char>(res);
        prev = scramble ? res : in;
    }
    return out;
}

int HexValue(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    return -1;
}

// Well-formed UTF-8: no stray or missing continuation bytes, no overlong
// form, no surrogate, nothing above U+10FFFF.
bool IsUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        const auto c = static_cast<unsigned char>(s[i]);
        std::size_t len;
        char32_t cp;
        if (c < 0x80) { ++i; continue; }
        if (c >= 0xC2 && c <= 0xDF) { len = 2; cp = c & 0x1F; }
        else if (c >= 0xE0 && c <= 0xEF) { len = 3; cp = c & 0x0F; }
        else if (c >= 0xF0 && c <= 0xF4) { len = 4; cp = c & 0x07; }
        else return false;
        if (i + len > s.size()) return false;
        for (std::size_t k = 1; k < len; ++k) {
            const auto cc = static_cast<unsigned char>(s[i + k]);
            if ((cc & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (cc & 0x3F);
        }
        if ((len == 3 && (cp < 0x800 || (cp >= 0xD800 && cp <= 0xDFFF))) || (len == 4 && (cp < 0x10000 || cp > 0x10FFFF)))
            return false;
        i += len;
    }
    return true;
}

}  // namespace

String Cl_KIV::PwdCrypt(const String& T_Pwd) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    String out;
    for (const char ch : Chained(ToUtf8(T_Pwd), true)) {
        const auto b = static_cast<unsigned char>(ch);
        out += static_cast<char16_t>(kDigits[b >> 4]);
        out += static_cast<char16_t>(kDigits[b & 15]);
    }
    return out;
}

String Cl_KIV::PwdDeCrypt(const String& T_Crypt) {
    if (T_Crypt.size() % 2 != 0) return String();
    std::string scrambled;
    for (std::size_t i = 0; i < T_Crypt.size(); i += 2) {
        const int hi = HexValue(T_Crypt[i]), lo = HexValue(T_Crypt[i + 1]);
        if (hi < 0 || lo < 0) return String();
        scrambled += static_cast<char>(hi * 16 + lo);
    }
    const std::string plain = Chained(scrambled, false);
    return IsUtf8(plain) ? FromUtf8(plain) : String();
}

Boolean Cl_KIV::UserInit(const String& Appl) {
    try {
        DlK_WinUser = GetWinUserName();
        DlK_PCName = GetPCName();
        if (Appl.empty()) {
            DlK_MasterUser = String();
            DlK_MasterPwd = String();
            return false;
        }
        // What cannot be read stays "".
        DlK_MasterUser = String();
        DlK_MasterPwd = String();
        DlK_MasterUser = LOADRegString(u"Utenti", u"MasterUser", u"", Appl);
        DlK_MasterPwd = LOADRegString(u"Utenti", u"MasterPwd", u"", Appl);
        return !DlK_MasterUser.empty() && !DlK_MasterPwd.empty();
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace kiv
