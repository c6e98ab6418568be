// Numeric text as users type it (decimal comma or point, blanks, trailing
// letters) turned into numbers, and a few arithmetic conveniences.
#include <cmath>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

bool HasPoint(const String& s) { return s.find(u'.') != String::npos; }

// `NumVar + q` of the runtime for the Variant types a counter can hold: the
// sum widens to Double, Null stays Null, a Date stays a Date.
Variant AddDouble(const Variant& v, Double q) {
    if (v.isNull()) return v;
    if (v.isError() || v.isObject() || v.isArray()) Raise(kTypeMismatch);
    if (const Date* d = v.as<Date>()) return Variant(DateFromSerial(d->serial + q));
    const Double sum = ToDoubleLocale(v) + q;  // Empty is 0, numeric text is read, other text is 13
    if (!std::isfinite(sum)) Raise(kOverflow);
    return Variant(sum);
}

}  // namespace

Double Cl_KIV::Str2Num(const Variant& S) {
    if (!IsNumericValue(S)) return 0;
    const String text = ToText(S);
    // A point anywhere is a decimal point here, never a grouping mark.
    if (HasPoint(text)) return ValPrefix(text);
    return ToDoubleLocale(S);
}

Double Cl_KIV::ToNumber(const Variant& S) {
    if (S.isNull() || S.isError()) return 0;
    if (IsNumericValue(S)) return ToDoubleLocale(S);
    const String text = ToText(S);
    if (!IsNumericText(Left(text, 1))) return 0;
    // The longest numeric prefix: grow it while it stays numeric.
    String prefix = Left(text, 1);
    const Long length = static_cast<Long>(text.size());
    for (Long i = 2; i <= length && IsNumericText(Left(text, i)); ++i) prefix = Left(text, i);
    if (HasPoint(prefix)) return ValPrefix(prefix);
    return ToDoubleLocale(Variant(prefix));
}

Double Cl_KIV::Space2Dbl(const Variant& Txt) {
    if (CompareValues(Txt, Variant(String())) == Order::Equal) return 0;
    return ToDoubleLocale(Txt);
}

Double Cl_KIV::Blank20(const String& S) {
    if (S.empty()) return 0;
    return ToDoubleLocale(Variant(S));
}

String Cl_KIV::InvPunt(const String& N) {
    if (N.empty()) return String();
    String t = N;
    for (char16_t& c : t) {
        if (c == u',') c = u'.';
        else if (c == u'.') c = u',';
    }
    // A trailing comma of the input would now be a dangling point.
    if (t.back() == u'.') t.pop_back();
    return t;
}

Boolean Cl_KIV::ToBoolean(const Variant& T_Val) {
    if (IsNumericValue(T_Val)) return this->ToNumber(T_Val) != 0;
    // Null compares unequal to every word.
    if (T_Val.isNull()) return false;
    const String word = UCase(ToText(T_Val));
    for (const char16_t* yes : {u"TRUE", u"VERO", u"YES", u"SI", u"OK", u"VA BENE"})
        if (word == yes) return true;
    return false;
}

Long Cl_KIV::Ceil(const Variant& N) {
    const Double n = ToDoubleLocale(N);
    Long r = RoundToLong(n);
    const Double floor = IntFloor(n);
    if (floor != n) r = RoundToLong(floor + 1);
    return r;
}

Long Cl_KIV::UnCeil(const Variant& N) {
    const Double n = ToDoubleLocale(N);
    Long r = RoundToLong(n);
    const Double floor = IntFloor(n);
    // One below the floor, not the floor: callers rely on it.
    if (floor != n) r = RoundToLong(floor - 1);
    return r;
}

Double Cl_KIV::Min(const Variant& a, const Variant& B) {
    if (CompareValues(B, a) == Order::Less) return ToDoubleLocale(B);
    return ToDoubleLocale(a);
}

Variant Cl_KIV::Minim(const Variant& a, const Variant& B) {
    if (CompareValues(B, a) == Order::Less) return B;
    return a;
}

Variant Cl_KIV::Maxim(const Variant& a, const Variant& B) {
    if (CompareValues(B, a) == Order::Greater) return B;
    return a;
}

void Cl_KIV::Incr(Ref<Variant> NumVar, Double QtaIncr) { *NumVar = AddDouble(*NumVar, QtaIncr); }

void Cl_KIV::Decr(Ref<Variant> NumVar, Double QtaDecr) { *NumVar = AddDouble(*NumVar, -QtaDecr); }

Double Cl_KIV::Log10(const Variant& X) {
    const Double x = ToDoubleLocale(X);
    if (x <= 0) Raise(kInvalidCall);
    // The quotient of natural logarithms, as FmtNum's digit count expects
    // (it is a hair below 3 for 1000).
    return std::log(x) / std::log(10.0);
}

}  // namespace kiv
