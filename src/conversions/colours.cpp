// RGB colours as hexadecimal texts ("RRGGBB" or "#RRGGBB"), as the host's
// colour value R + 256G + 65536B, and mixed towards another colour.
#include <algorithm>
#include <optional>

#include "frame/cl_kiv.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

struct Rgb {
    Integer r, g, b;
};

int HexValue(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    return -1;
}

// A valid colour text, once trimmed, is an optional "#" and six hexadecimal digits.
std::optional<Rgb> ParseColour(const String& text) {
    String t = Trim(text);
    if (!t.empty() && t[0] == u'#') t.erase(0, 1);
    if (t.size() != 6) return std::nullopt;
    int channel[3];
    for (int k = 0; k < 3; ++k) {
        const int hi = HexValue(t[2 * k]);
        const int lo = HexValue(t[2 * k + 1]);
        if (hi < 0 || lo < 0) return std::nullopt;
        channel[k] = hi * 16 + lo;
    }
    return Rgb{static_cast<Integer>(channel[0]), static_cast<Integer>(channel[1]), static_cast<Integer>(channel[2])};
}

}  // namespace

Boolean Cl_KIV::Hex2RGB(const String& T_Hex, Ref<Integer> R, Ref<Integer> G, Ref<Integer> B) {
    const auto c = ParseColour(T_Hex);
    if (!c) return false;  // the caller's variables stay as they were
    *R = c->r;
    *G = c->g;
    *B = c->b;
    return true;
}

String Cl_KIV::RGB2Hex(Integer R, Integer G, Integer B, Boolean Cancelletto) {
    constexpr std::u16string_view digits = u"0123456789ABCDEF";
    String result = Cancelletto ? u"#" : u"";
    for (const int v : {R, G, B}) {
        const int c = std::clamp(v, 0, 255);
        result += digits[c >> 4];
        result += digits[c & 15];
    }
    return result;
}

Long Cl_KIV::Hex2Color(const String& T_Hex) {
    Integer r = 0, g = 0, b = 0;
    if (!Hex2RGB(T_Hex, r, g, b)) return -1;
    return r + 256 * g + 65536 * b;
}

String Cl_KIV::Color2Hex(Long Colore, Boolean Cancelletto) {
    if (Colore < 0 || Colore > 16777215) return u"";  // system colours are negative
    return RGB2Hex(static_cast<Integer>(Colore % 256), static_cast<Integer>(Colore / 256 % 256),
                   static_cast<Integer>(Colore / 65536), Cancelletto);
}

String Cl_KIV::MescolaColori(const String& T_Hex1, const String& T_Hex2, Double Perc) {
    const auto c1 = ParseColour(T_Hex1);
    const auto c2 = ParseColour(T_Hex2);
    if (!c1 || !c2) return u"";
    const Double p = Perc > 100 ? 100 : (Perc >= 0 ? Perc : 0);  // no number counts as 0
    auto mix = [p](Integer a, Integer b) {
        return static_cast<Integer>(RoundHalfEven(a + (b - a) * p / 100));
    };
    const Boolean hash = Trim(T_Hex1)[0] == u'#';
    return RGB2Hex(mix(c1->r, c2->r), mix(c1->g, c2->g), mix(c1->b, c2->b), hash);
}

String Cl_KIV::SchiarisciColore(const String& T_Hex, Double Perc) { return MescolaColori(T_Hex, u"FFFFFF", Perc); }

String Cl_KIV::ScurisciColore(const String& T_Hex, Double Perc) { return MescolaColori(T_Hex, u"000000", Perc); }

}  // namespace kiv
