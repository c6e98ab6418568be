// Codice fiscale: the check letter of a personal code and three tests of a
// text as a tax code (tolerant with a reason, shape only, strict personal).
#include <cstdint>

#include "codes/cf_tables.hpp"
#include "codes/code_text.hpp"
#include "frame/ascii.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace codes {

const CfValueTables& CfTables(Cl_KIV& reader) {
    static const CfValueTables tables = [&reader] {
        CfValueTables built;
        for (Integer index = 0; index <= 36; ++index) {
            // Whole values: the running sums of the check stay whole numbers.
            built.odd[index] = RoundToLong(reader.ToNumber(reader.GetPipeStr(kCfOddValues, index, u",", true)));
            built.even[index] = RoundToLong(reader.ToNumber(reader.GetPipeStr(kCfEvenValues, index, u",", true)));
        }
        return built;
    }();
    return tables;
}

}  // namespace codes

namespace {

using codes::Trimmed;

// Positions 1-6, 9, 12, 16 hold letters and 7, 8, 10, 11, 13-15 digits;
// positions past the end contribute nothing.
String LetterPart(const String& t) { return Mid(t, 1, 6) + Mid(t, 9, 1) + Mid(t, 12, 1) + Mid(t, 16, 1); }
String DigitPart(const String& t) { return Mid(t, 7, 2) + Mid(t, 10, 2) + Mid(t, 13, 3); }

}  // namespace

String Cl_KIV::Get_CheckCF(const String& T_Cf) {
    String storage;
    String t = SostChar(Trimmed(T_Cf, storage), u" ,.-", u"");
    if (t.empty()) return u"";
    if (IsNumericText(t)) return t.size() == 11 ? Get_CheckPI(t) : String();

    const codes::CfValueTables& values = codes::CfTables(*this);
    Long oddSum = 0;
    Long evenSum = 0;
    for (std::size_t i = 1; i <= 15; ++i) {
        // Past the end the empty text is looked up, and it is found at place 1.
        const int index = i <= t.size() ? codes::CfAlphabetIndex(t[i - 1]) : 1;
        if (i % 2 == 1) {
            oddSum += values.odd[index];
        } else {
            evenSum += values.even[index];
        }
    }
    const Long total = oddSum + evenSum;
    return String(1, codes::kCfCheckLetters[total % 26]);
}

EnCF_Result Cl_KIV::Is_CFTest(const String& T_Cf) {
    // Hyphens stay: only blanks, commas and points are dropped here.
    String storage;
    String t = SostChar(Trimmed(T_Cf, storage), u" ,.", u"");
    const bool numeric = IsNumericText(t);
    if (numeric) {
        // A company's code is eleven digits shaped like a VAT number.
        const EnPI_Result pi = Is_PITest(t);
        if (pi == PI_IsOK || pi == PI_IsCF) return CF_IsOK;
    }

    const std::size_t n = t.size();
    if (n == 0) return CF_Null;
    if (n >= 17) return CF_Long;
    if (n == 16) {
        if (numeric) return CF_Bad;
        return Get_CheckCF(t) == Right(t, 1) ? CF_IsOK : CF_Bad;
    }
    // Also an eleven-digit number with a wrong check digit.
    return CF_Short;
}

Boolean Cl_KIV::Is_CodFisc(const String& S_CF, Boolean StrongAlfa) {
    const String t = Trim(UCase(SostChar(S_CF, u" .-", u"")));
    if (t.empty() || (t.size() != 16 && t.size() != 11)) return false;

    if (IsNumericText(t)) {
        if (t.size() == 16 || StrongAlfa) return false;
        // A body's code (8 or 9 first) is refused here, unlike Is_CFTest.
        return Is_PITest(t) == PI_IsOK;
    }

    if (!IsNumericText(DigitPart(t))) return false;
    for (char16_t c : LetterPart(t)) {
        if (IsNumericText(String(1, c))) return false;
    }
    return true;
}

Boolean Cl_KIV::Is_CFAlfa(const String& T_Cf) {
    if (T_Cf.size() != 16) return false;
    if (!IsNumericText(DigitPart(T_Cf))) return false;

    const String letters = LetterPart(T_Cf);
    if (SostChar(letters, u"0123456789", u"") != letters) return false;

    if (CaseBlindFind(u"ABCDEHLMPRST", Mid(T_Cf, 9, 1)) == 0) return false;

    // Women's days run from 41; the month is not consulted.
    const Double day = ValPrefix(Mid(T_Cf, 10, 2));
    if (day == 0 || day > 71 || (day > 31 && day < 41)) return false;

    return Get_CheckCF(T_Cf) == Mid(T_Cf, 16, 1);
}

}  // namespace kiv
