// Amounts written in Italian words, as on cheques: one word for the whole
// part, the cents as a fraction ("milleduecentotrentaquattro/50").
#include <cmath>
#include <cstdint>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

const char16_t* const kUnits[20] = {
    u"",         u"uno",    u"due",         u"tre",      u"quattro",    u"cinque",   u"sei",
    u"sette",    u"otto",   u"nove",        u"dieci",    u"undici",     u"dodici",   u"tredici",
    u"quattordici", u"quindici", u"sedici", u"diciassette", u"diciotto", u"diciannove",
};
const char16_t* const kTens[10] = {u"",          u"",         u"venti",    u"trenta",  u"quaranta",
                                   u"cinquanta", u"sessanta", u"settanta", u"ottanta", u"novanta"};

bool EndsWith(const String& s, std::u16string_view tail) {
    return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

// W(n), 1 <= n <= 999.
String GroupWords(int n) {
    const int h = n / 100;
    const int r = n % 100;
    String H = h == 0 ? u"" : h == 1 ? u"cento" : String(kUnits[h]) + u"cento";
    String R;
    if (r > 0 && r <= 19) {
        R = kUnits[r];
    } else if (r > 19) {
        const int t = r / 10;
        const int u = r % 10;
        R = kTens[t];
        if (u == 1 || u == 8) R.pop_back();  // ventuno, trentotto
        R += kUnits[u];
    }
    if (h >= 1 && r >= 80 && r <= 89) H.pop_back();  // centottanta
    return H + R;
}

// Billions or millions: "un" before the plural, one alone is its own word.
String LargeGroup(int g, const char16_t* one, const char16_t* many) {
    if (g == 0) return u"";
    if (g == 1) return one;
    String w = GroupWords(g);
    if (EndsWith(w, u"uno")) w.resize(w.size() - 1);
    return w + many;
}

// L(I), 0 <= I < 10^12.
String IntegerWords(std::int64_t I) {
    if (I == 0) return u"zero";
    const int g3 = static_cast<int>(I / 1000000000);
    const int g2 = static_cast<int>(I / 1000000 % 1000);
    const int g1 = static_cast<int>(I / 1000 % 1000);
    const int g0 = static_cast<int>(I % 1000);
    String result = LargeGroup(g3, u"unmiliardo", u"miliardi") + LargeGroup(g2, u"unmilione", u"milioni");
    if (g1 == 1) result += u"mille";
    else if (g1 > 1) result += GroupWords(g1) + u"mila";  // ventunomila: no cut before "mila"
    if (g0 > 0) result += GroupWords(g0);
    // Only the final "tre" of a compound takes the accent.
    if (result.size() > 3 && EndsWith(result, u"tre")) result.back() = u'\u00E9';
    return result;
}

}  // namespace

String Cl_KIV::Num2Let(const Variant& Importo, Integer N_Dec, const String& Sep) {
    if (N_Dec < 0 || N_Dec > 4) Raise(kInvalidCall);
    Double X = 0;
    const String* text = Importo.as<String>();
    if (!Importo.isNull() && !Importo.isEmpty() && !(text && Trim(*text).empty())) X = ToDoubleLocale(Importo);

    const String P = N_Dec == 0 ? String(u"0") : u"0." + StringOf(N_Dec, u'0');
    const String T = FormatPattern(Variant(std::fabs(X)), P);
    std::size_t comma = T.find_first_of(u",.");
    if (N_Dec == 0) comma = T.size();
    const String I = T.substr(0, comma);
    const String C = comma < T.size() ? T.substr(comma + 1) : String();
    if (I.size() > 12) Raise(kOverflow);

    std::int64_t value = 0;
    for (char16_t d : I) value = value * 10 + (d - u'0');
    String result;
    if (X < 0 && T.find_first_of(u"123456789") != String::npos) result = u"meno ";
    result += IntegerWords(value);
    if (N_Dec > 0) result += Sep + C;
    return result;
}

}  // namespace kiv
