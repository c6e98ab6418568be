// Partita IVA: the check digit of the first ten digits and the classification
// of a text as a VAT number.
#include "codes/code_text.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// A decimal digit is its value; any other character goes through the
// runtime's conversion of its one-character text, so a sign or an exponent
// letter that the numeric test let through fails with Type mismatch.
Long DigitAt(const String& text, std::size_t position) {
    const char16_t c = text[position - 1];
    if (c >= u'0' && c <= u'9') return c - u'0';
    return ToInteger(Variant(String(1, c)));
}

}  // namespace

String Cl_KIV::Get_CheckPI(const String& T_PI) {
    String storage;
    String t = SostChar(codes::Trimmed(T_PI, storage), u" ,.-", u"");
    if (t.size() < 10 || !IsNumericText(t)) return u"";

    Long x = 0;
    for (std::size_t i = 1; i <= 9; i += 2) x += DigitAt(t, i);

    Long y = 0;
    for (std::size_t i = 2; i <= 10; i += 2) {
        Long twice = DigitAt(t, i) * 2;
        if (twice > 9) twice -= 9;
        y += twice;
    }

    const Long check = (10 - (x + y) % 10) % 10;
    return String(1, static_cast<char16_t>(u'0' + check));
}

EnPI_Result Cl_KIV::Is_PITest(const String& T_PI) {
    String storage;
    String t = SostChar(codes::Trimmed(T_PI, storage), u" ,.", u"");
    // The length is taken once: a stripped "IT" prefix does not shorten it.
    const std::size_t n = t.size();

    if (n == 0) return PI_Null;
    if (n == 13) {
        if (UCase(Left(t, 2)) != u"IT") return PI_Estera;
        t = Mid(t, 3);
    }
    if (!IsNumericText(t)) return PI_Alfa;
    if (n < 11) return PI_Short;
    if (n > 11) return PI_Long;

    if (Right(t, 1) != Get_CheckPI(t)) return PI_Bad;
    if (t[0] == u'8' || t[0] == u'9') return PI_IsCF;
    return PI_IsOK;
}

}  // namespace kiv
