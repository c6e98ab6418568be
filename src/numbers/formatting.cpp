// Fixed-width number formatting for screens, reports and record files:
// right-aligned, decimal comma, optional apostrophe thousands marks, fill
// character and trimming of trailing zeros.
#include <cmath>

#include "frame/ascii.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// The marker a mis-sized column gets: the number through `marker`, then
// right-aligned in fifteen characters so that it stands out.
String FormatError(const Variant& x, const char16_t* marker) {
    CurrentPlatform().host().messageBox(MsgIcon::Exclamation, u"FmtNum", u"ERRORE di formato in Function FmtNum!");
    return FormatPattern(Variant(FormatPattern(x, marker)), String(15, u'@'));
}

// Every third integer digit from the right becomes a mark; the pattern keeps its length.
void PutMarks(String& pattern, std::size_t integerLength) {
    for (long k = static_cast<long>(integerLength) - 3; k >= 1; k -= 4) pattern[static_cast<std::size_t>(k - 1)] = u'\'';
}

// "###...0" or "###...0.00": exactly Lun characters. Its integer part is
// `integerLength` long; the decimals take `extra` places with the point.
struct NumberShape {
    std::size_t integerLength;
    Long extra;
};

NumberShape ShapeOf(Integer Lun, Integer Dec) {
    // Lun - Dec is a 16-bit difference of its own before the 2 comes off.
    const Integer hashes = CheckedInteger(Dec != 0 ? CheckedInteger(Lun - Dec) - 2 : Lun - 1);
    if (hashes < 0 || Dec < 0) Raise(kInvalidCall);  // a negative repeat count
    return {static_cast<std::size_t>(hashes) + 1, Dec != 0 ? Long{Dec} + 1 : 0};
}

// Written into `pattern`, reused between calls: every amount of a report
// comes through here.
const String& NumberPattern(const NumberShape& shape, Integer Dec, bool marks) {
    thread_local String pattern;
    pattern.assign(shape.integerLength - 1, u'#');
    pattern += u'0';
    if (Dec != 0) {
        pattern += u'.';
        pattern.append(static_cast<std::size_t>(Dec), u'0');
    }
    if (marks) PutMarks(pattern, shape.integerLength);
    return pattern;
}

// Digits, marks and decimals the number needs; the digit count comes from
// the component's own Log10, quirks and all.
Double NeededWidth(Cl_KIV& kiv, Double x, Long extra) {
    Double L = 0;
    if (x != 0) {
        L = kiv.Log10(Variant(std::fabs(x)));
        if (x < 0) L = L + 1;  // room for the sign
    }
    const Double digits = IntFloor(L) + 1;
    const Double marks = IntFloor((digits - 1) / 3);
    return marks + digits + static_cast<Double>(extra);
}

// Marks printed before the first digit would stand alone: they become blanks.
// A sign is passed over, so a mark between sign and digits goes too.
void BlankLeadingMarks(String& s) {
    for (char16_t& c : s) {
        if (IsAsciiDigit(c)) break;
        if (c == u'\'') c = u' ';
    }
}

String Aligned(const Variant& x, const String& pattern) {
    thread_local String places;  // reused: every amount of a report comes through here
    places.assign(pattern.size(), u'@');
    return FormatPattern(Variant(FormatPattern(x, pattern)), places);
}

// Leading blanks become the fill character; the first other character
// (a digit or a "-") ends the fill.
void FillBlanks(String& s, const String& Fill_Num) {
    if (Fill_Num.empty()) return;
    for (char16_t& c : s) {
        if (c != u' ') break;
        c = Fill_Num[0];
    }
}

// The opening FmtNum and FmtNumOld share: the shape of the pattern of Lun
// characters with Dec decimals, the number, and whether the marks fit
// when asked for (else Fl_Mig turns false, telling the caller they were
// dropped). False, with nothing laid out, when Lun leaves no room for the
// decimals.
bool OpenLayout(Cl_KIV& kiv, const Variant& X, Integer Lun, Integer Dec, Ref<Boolean>& Fl_Mig, NumberShape& shape,
                Double& x) {
    if (Dec >= 1 && Lun < CheckedInteger(Dec + 2)) return false;
    shape = ShapeOf(Lun, Dec);
    x = ToDoubleLocale(X);
    if (*Fl_Mig && NeededWidth(kiv, x, shape.extra) > Lun) *Fl_Mig = false;
    return true;
}

// Values the pattern reads as the Double they convert to (a Single keeps
// its own seven digits; a text may be a date or not a number at all).
bool PlainNumber(const Variant& x) {
    switch (x.type()) {
        case VarType::Integer: case VarType::Long: case VarType::Double: case VarType::Currency: case VarType::Byte:
            return true;
        default: return false;
    }
}

bool ZeroLike(const Variant& x) {
    if (x.isNull() || x.isEmpty()) return true;
    const String* s = x.as<String>();
    return s != nullptr && s->empty();
}

}  // namespace

String Cl_KIV::FmtNum(const Variant& N, Integer Lun, Integer Dec, Ref<Boolean> Fl_Mig, const String& Fill_Num,
                      Integer MaxEndingZeros) {
    // Null and "" print as zero (Empty equals "" as well).
    const Variant zero(Integer{0});
    const Variant& X = ZeroLike(N) ? zero : N;
    NumberShape shape{};
    Double x = 0;
    if (!OpenLayout(*this, X, Lun, Dec, Fl_Mig, shape, x)) return FormatError(X, u"0000000000Z.ZZZ");

    // Without marks the pattern is "#...#0.00", which lays out any number as
    // "0.00" does: the common column of amounts takes the direct way.
    String result = !*Fl_Mig && PlainNumber(X)
                        ? FormatFixedRight(ToDecimalDigits(x, 15), Dec, static_cast<std::size_t>(Lun))
                        : Aligned(X, NumberPattern(shape, Dec, *Fl_Mig));
    if (*Fl_Mig) BlankLeadingMarks(result);
    FillBlanks(result, Fill_Num);

    const Integer M = MaxEndingZeros;
    if (!(x != 0 && M >= 0)) {
        if (M == -2 && x == 0) return Space(Lun);  // blank when zero
        return result;
    }

    // The comma's position is held in a byte.
    if (result.size() > 255) Raise(kOverflow);
    const Long p = InStr(result, u",");
    if (p == 0) return result;
    const String D = Mid(result, p + 1);
    const std::size_t lastNonZero = D.find_last_not_of(u'0');
    // p + M is a 16-bit sum: a huge M overflows rather than padding on.
    if (lastNonZero == String::npos) return Left(result, M != 0 ? CheckedInteger(p + M) : p - 1);
    result = Left(result, p + static_cast<Long>(lastNonZero) + 1);
    // M is the least count of decimals kept once the zeros are cut.
    const Integer keep = CheckedInteger(p + M);
    while (static_cast<Long>(result.size()) < keep) result += u'0';
    return result;
}

String Cl_KIV::FmtNumOld(const Variant& N, Integer Lun, Integer Dec, Ref<Boolean> Fl_Mig, const String& Fill_Num) {
    // Only a true Null or Empty counts as zero here; "" is not numeric.
    const Variant X = (N.isNull() || N.isEmpty()) ? Variant(Integer{0}) : N;
    if (Dec < 0) Dec = 0;
    NumberShape shape{};
    Double x = 0;
    if (!OpenLayout(*this, X, Lun, Dec, Fl_Mig, shape, x)) return FormatError(X, u"00000000000.00000");

    // The magnitude is laid out first and the sign put against its digits.
    String result = Aligned(x < 0 ? Variant(std::fabs(x)) : X, NumberPattern(shape, Dec, *Fl_Mig));
    if (*Fl_Mig) BlankLeadingMarks(result);
    if (x < 0) {
        const std::size_t blank = result.rfind(u' ');
        if (blank == String::npos) result.insert(result.begin(), u'-');
        else result[blank] = u'-';
    }
    FillBlanks(result, Fill_Num);
    return result;
}

String Cl_KIV::NoVirg(const Variant& N, Integer Lun, Integer Dec) {
    const String S = this->FmtNum(N, CheckedInteger(Lun + 1), Dec);
    const Long p = InStr(S, u",");
    // Without decimals the extra column stays: old record layouts expect it.
    if (p == 0) return S;
    const Long width = CheckedInteger(Lun - Dec);
    return Right(Space(width) + Left(S, p - 1), width) + Mid(S, p + 1);
}

String Cl_KIV::FmtTag(const String& Txt, Ref<Variant> Lun, const String& Tag, Boolean Trimmed) {
    String result = Txt;
    if (IsNumericText(Txt) && Tag.size() == 2 && Tag[0] == u'N' && IsNumericText(Tag.substr(1))) {
        if (CompareValues(*Lun, Variant(Integer{1})) == Order::Less) *Lun = Variant(Integer{8});
        const Integer d = CheckedInteger(static_cast<std::int64_t>(ToDoubleLocale(Variant(Tag.substr(1)))));
        result = this->FmtNum(Variant(ToDoubleLocale(Variant(Trim(Txt)))), ToInteger(*Lun), d, false, u"", -1);
        if (Trimmed) result = Trim(result);
    }
    return result;
}

String Cl_KIV::FmtZero(const Variant& T_Tag) {
    const String tag = JoinText(T_Tag);
    String R;
    if (Left(tag, 1) == u"N") {
        R = u"0";
        const Double d = ValPrefix(Mid(tag, 2));
        if (d > 0) R = u"0," + StringOf(RoundToLong(d), u'0');
    }
    return Trim(R);
}

String Cl_KIV::Perc2Str(Ref<Variant> Perc, Ref<Integer> LStr, Ref<String> SStr) {
    if (CompareValues(*Perc, Variant(Integer{0})) == Order::Less) *Perc = Negate(*Perc);
    if (CompareValues(*Perc, Variant(Integer{100})) == Order::Greater) *Perc = Variant(Integer{100});

    if (*LStr == 0) *LStr = 10;

    String background;
    if (*LStr > 0) {
        if (SStr->size() < 2) *SStr += u'.';
        *SStr = Left(*SStr, 2);
        if (SStr->size() < 2) Raise(kInvalidCall);  // no background character
        background = StringOf(*LStr, (*SStr)[1]);
    }
    if (*LStr < 0) {
        // Ruler style: four segments of n dashes between marks.
        const Integer n = CheckedInteger(-static_cast<std::int64_t>(*LStr));
        const String B = StringOf(n, u'-');
        background = u"|" + B + u"+" + B + u"|" + B + u"+" + B + u"|";
        *LStr = Len16(background);
    }

    if (SStr->empty()) Raise(kInvalidCall);  // no fill character
    const Double count = IntFloor(static_cast<Double>(*LStr) * ToDoubleLocale(*Perc) / 100);
    const String filled = StringOf(static_cast<Long>(count), (*SStr)[0]);
    return filled + Mid(background, static_cast<Long>(filled.size()) + 1);
}

}  // namespace kiv
