// Masked dates ("dd/mm/yyyy", empty "__/__/____"), compact dates (yyyymmdd)
// and their conversions to and from Date values and database literals.
#include <cmath>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

const String kEmptyMask = u"__/__/____";
const String kNoCompactDate = u"00000000";

// c = yyyy & mm & dd taken by position from a masked date.
String CompactOf(const String& msk) { return Right(msk, 4) + Mid(msk, 4, 2) + Mid(msk, 1, 2); }

// The three "no date" tests shared by Msk2Str, Msk2Dat and Msk2Date.
bool IsNoCompact(const String& msk, const String& c) {
    return Trim(msk).empty() || c == u"________" || InStr(c, u"_") > 0;
}

String Pattern(Date d, const char16_t* pattern) { return FormatPattern(Variant(d), pattern); }

}  // namespace

String Cl_KIV::FormattaData(const Variant& sData) {
    const Variant x = sData.isNull() ? Variant(Integer{0}) : sData;
    const String t = ToText(x);
    if (ValPrefix(t) == 0) return kEmptyMask;
    if (Mid(t, 3, 1) == u"/") return t;
    return Mid(t, 7, 2) + u"/" + Mid(t, 5, 2) + u"/" + Mid(t, 1, 4);
}

String Cl_KIV::FmtData(Integer dd, Integer mm, Integer yy) {
    const auto bare = [](Integer n) { return Trim(StrNum(Variant(n))); };
    return AllineaDxZeri(2, bare(dd)) + u"/" + AllineaDxZeri(2, bare(mm)) + u"/" + AllineaDxZeri(4, bare(yy));
}

String Cl_KIV::Cal2Dat(Integer d, Integer M, Integer Y) {
    return Right(u"00" + ToText(Variant(d)), 2) + u"/" + Right(u"00" + ToText(Variant(M)), 2) + u"/" +
           Right(u"0000" + ToText(Variant(Y)), 4);
}

String Cl_KIV::Date2Mask(const Variant& Data) {
    // The short date alone: the month arithmetic built on this cuts the text
    // by position, and month-end counts then see the time of day as a fraction.
    if (const Date* d = Data.as<Date>()) return DateText(DateFromSerial(std::trunc(d->serial)));
    if (Data.as<Long>()) return FormattaData(Variant(Trim(ToText(Data))));
    return ToText(Data);
}

Double Cl_KIV::Date20(Ref<Variant> S) {
    if (S->isNull()) *S = Variant(kEmptyMask);

    // From here every failure is reported to the user and the next step runs.
    Double result = 0;
    const auto step = [&](auto&& body) {
        try {
            body();
        } catch (const RuntimeError& e) {
            CurrentPlatform().host().messageBox(MsgIcon::Exclamation, u"Date20",
                                     u"Plileglo : " + ToText(Variant(Long{e.number()})) + u" - " +
                                         FromUtf8(e.description()) + u" : '" + JoinText(*S) + u"'");
        }
    };
    const auto differsFromMask = [&] { return CompareValues(*S, Variant(kEmptyMask)) != Order::Equal; };
    const auto normalise = [&] {
        step([&] { *S = Variant(NormalizeDateText(*S)); });
        step([&] { result = ToDateLocale(*S).serial; });
    };

    step([&] {
        if (S->isString() && differsFromMask()) normalise();
    });
    step([&] {
        if (!S->isDate() && differsFromMask()) normalise();
    });
    step([&] {
        if (const Date* d = S->as<Date>()) result = d->serial;
    });
    step([&] {
        if (S->isString() && *S->as<String>() == kEmptyMask) result = 0;
    });
    return result;
}

String Cl_KIV::NormalizeDateText(Ref<Variant> X) {
    try {
        const Date today = TodayDate();
        const String todayMask = Pattern(today, u"dd/mm/yyyy");
        const String todayDd = Pattern(today, u"dd");
        const String todayMm = Pattern(today, u"mm");
        const String todayYyyy = Pattern(today, u"yyyy");
        const Double century = ValPrefix(Left(todayYyyy, 2)) * 100;

        const String t = JoinText(*X);
        if (t == kEmptyMask) return t;

        const Double day = ValPrefix(Mid(t, 1, 2));
        const Double month = ValPrefix(Mid(t, 4, 2));
        Double year = ValPrefix(Right(t, 4));
        const String dayText = day == 0 ? todayDd : NumberText(day);
        const String monthText = month == 0 ? todayMm : NumberText(month);
        String yearText;
        if (year < 100) {
            if (year > 0) {
                year += century;
                yearText = NumberText(year);
            } else {
                yearText = todayYyyy;
            }
        } else {
            yearText = NumberText(year);
        }

        String text = dayText + u"/" + monthText + u"/" + yearText;
        if (const Long p = InStr(text, u"_"); p > 0) text = Left(text, p - 1) + Mid(todayMask, p);

        const String masked = Pattern(ToDateLocale(Variant(text)), u"dd/mm/yyyy");
        *X = Variant(masked);
        return masked;
    } catch (const RuntimeError&) {
        CurrentPlatform().host().beep();
        return JoinText(*X);
    }
}

String Cl_KIV::Zero2Date(const Variant& Zz) {
    String result = kEmptyMask;
    if (Zz.isNull()) return result;
    const Variant t(ToText(Zz));
    if (IsDateValue(t)) {
        const Date d = ToDateLocale(t);
        if (d.serial >= ToDateLocale(Variant(u"01/01/1900")).serial) result = Pattern(d, u"dd/mm/yyyy");
    }
    return result;
}

String Cl_KIV::Zero2DateBl(const Variant& Zz) {
    const String answer = Zero2Date(Zz);
    return answer == kEmptyMask ? Space(10) : answer;
}

String Cl_KIV::Msk2Str(const String& Msk) {
    const String c = CompactOf(Msk);
    return IsNoCompact(Msk, c) ? kNoCompactDate : c;
}

Long Cl_KIV::Msk2Dat(const String& Msk) {
    (void)TodayDate();  // read and never used, as it always was
    const String c = CompactOf(Msk);
    if (IsNoCompact(Msk, c)) return 0;
    return RoundToLong(ToDoubleLocale(Variant(c)));
}

Long Cl_KIV::Msk2Date(const String& Msk) {
    (void)TodayDate();  // read and never used, as it always was
    const String c = CompactOf(Msk);
    if (IsNoCompact(Msk, c)) return 0;
    // The whole text, not c: callers rely on compact texts passing and masked
    // ones failing.
    return ToLong(Variant(Msk));
}

Date Cl_KIV::Msk2VarDate(const String& Msk_0) {
    if (Msk_0 == kEmptyMask) return Date{0};

    const Date today = TodayDate();
    const DateParts now = SplitDate(today);
    const String yyyy = Pattern(today, u"yyyy");

    const String s = SostChar(Msk_0, u"oO_", u"00");
    const String dayText = GetPipeStr(s, 1, u"/");
    const String monthText = GetPipeStr(s, 2, u"/");
    const String yearText = GetPipeStr(s, 3, u"/");

    Double day = ValPrefix(dayText);
    if (day <= 0) day = now.day;
    Double month = ValPrefix(monthText);
    if (month <= 0) month = now.month;
    if (month > 12) month = 12;

    // Short years are completed from today's year, digit by digit.
    Double y = ValPrefix(yearText);
    if (y < 10) y = ValPrefix(Left(yyyy, 3) + NumberText(y));
    if (y < 100) {
        const Double diff = ValPrefix(Right(yyyy, 2)) - y;
        Double century = ValPrefix(Left(yyyy, 2));
        if (std::fabs(diff) > 30) century -= 1;
        y = ValPrefix(NumberText(century) + NumberText(y));
    }
    if (y < 1000) {
        Double lead = ValPrefix(Left(yyyy, 1));
        if (y > 500) lead -= 1;
        y = ValPrefix(NumberText(lead) + NumberText(y));
    }

    Variant dayVar(day);
    Variant monthVar(month);
    String text = MettiADes(dayVar, 2, u"0") + u"/" + MettiADes(monthVar, 2, u"0") + u"/" + NumberText(y);

    if (!IsDateValue(Variant(text))) {
        text = DateText(today);
        CurrentPlatform().host().messageBox(MsgIcon::Critical, u"Function: Msk2VarDate",
                                 u"Data non valida ! ASSUMO DATA ODIERNA !\r\n\r\n>" + LCase(text) + u"<");
    }
    return ToDateLocale(Variant(text));
}

Integer Cl_KIV::Msk2Day(const String& Msk) { return RoundToInteger(ValPrefix(Mid(Msk, 1, 2))); }
Integer Cl_KIV::Msk2Mon(const String& Msk) { return RoundToInteger(ValPrefix(Mid(Msk, 4, 2))); }
Integer Cl_KIV::Msk2Yea(const String& Msk) { return RoundToInteger(ValPrefix(Right(Msk, 4))); }

String Cl_KIV::GbDate(const String& sData) { return Mid(sData, 4, 3) + Mid(sData, 1, 3) + Right(sData, 4); }

String Cl_KIV::Date2Sort(const Variant& Data, const String& Sep) {
    const String t = ToText(Data);
    // Ten characters, not eight: a compact date passes through unchanged.
    if (t.size() != 10) return t;
    return Mid(t, 1, 4) + Sep + Mid(t, 5, 2) + Sep + Mid(t, 7, 2);
}

namespace {

// Year, month and day of a Date through the shared number formatter.
String YearText(Cl_KIV& k, const DateParts& p) { return k.FmtNum(Variant(Long{p.year}), 4, 0, false, u""); }
String TwoDigits(Cl_KIV& k, int n) { return k.FmtNum(Variant(Long{n}), 2, 0, false, u"0"); }

}  // namespace

String Cl_KIV::Dat2Str(Date Dat_) {
    if (ValPrefix(DateText(Dat_)) == 0) return kNoCompactDate;
    const DateParts p = SplitDate(Dat_);
    return YearText(*this, p) + TwoDigits(*this, p.month) + TwoDigits(*this, p.day);
}

String Cl_KIV::Dat2ANSI(Date Dat_) {
    const DateParts p = SplitDate(Dat_);
    return YearText(*this, p) + u"-" + TwoDigits(*this, p.month) + u"-" + TwoDigits(*this, p.day) + u" 00:00:00";
}

String Cl_KIV::Dat2ANSIFull(Date Dat_) {
    const DateParts p = SplitDate(Dat_);
    String s = u"{ts '" + YearText(*this, p) + u"-" + TwoDigits(*this, p.month) + u"-" + TwoDigits(*this, p.day);
    // The default text shows a time of day only when there is one; its
    // separator is the locale's, so that is what to look for.
    if (DateText(Dat_).find(CurrentLocale().timeSeparator) != String::npos) {
        s += u" " + Pattern(Dat_, u"hh") + u":" + Pattern(Dat_, u"nn") + u":" + Pattern(Dat_, u"ss");
    } else {
        s += u" 00:00:00";
    }
    return s + u"'}";
}

Date Cl_KIV::ToDate(const String& cData, Date Defau) {
    if (cData.empty()) return Date{0};
    const String s = SostChar(cData, u"oO_", u"00");
    Date result = ToDateLocale(Variant(Pattern(Defau, u"dd/mm/yyyy")));
    if (IsDateValue(Variant(s))) result = ToDateLocale(Variant(Pattern(ToDateLocale(Variant(s)), u"dd/mm/yyyy")));
    return result;
}

}  // namespace kiv
