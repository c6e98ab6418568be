// The script's built-in functions: the runtime services under their own
// names, so they can be tried directly, and a few runtime text functions.
#include <memory>

#include "frame/code_page.hpp"
#include "frame/convert.hpp"
#include "frame/dispatch.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "driver_host.hpp"
#include "host_objects.hpp"
#include "interpreter.hpp"

namespace kiv::script {
namespace {

using Args = std::vector<Variant>;

Long Whole(const Variant& v) {
    if (const Integer* i = v.as<Integer>()) return *i;
    if (const Long* l = v.as<Long>()) return *l;
    return ToLong(v);
}

String Text(const Variant& v) {
    if (const String* s = v.as<String>()) return *s;
    return ToText(v);
}

Date DateArg(const Variant& v) {
    if (const Date* d = v.as<Date>()) return *d;
    return ToDateLocale(v);
}

Long Length(const Variant& v) {
    const Long n = Whole(v);
    if (n < 0) Raise(kInvalidCall);
    RequireTextLength(static_cast<std::uint64_t>(n));  // the component's own limit
    return n;
}

char16_t AnsiChar(Long code) {
    if (code < 0 || code > 255) Raise(kInvalidCall);
    return Cp1252Char(static_cast<unsigned char>(code));
}

Variant Chr(const Args& a) { return Variant(String(1, AnsiChar(Whole(a[0])))); }

Variant ChrW(const Args& a) {
    const Long code = Whole(a[0]);
    if (code < -32768 || code > 65535) Raise(kInvalidCall);
    return Variant(String(1, static_cast<char16_t>(code < 0 ? code + 65536 : code)));
}

Variant SpaceOf(const Args& a) { return Variant(Space(Length(a[0]))); }

Variant StringOfChar(const Args& a) {
    const Long n = Length(a[0]);
    if (a[1].isNull()) return Variant::null();
    char16_t c;
    if (const String* s = a[1].as<String>()) {
        if (s->empty()) Raise(kInvalidCall);
        c = (*s)[0];
    } else {
        c = AnsiChar(((Whole(a[1]) % 256) + 256) % 256);
    }
    return Variant(StringOf(n, c));
}

Variant Len(const Args& a) {
    if (a[0].isNull()) return Variant::null();
    return Variant(static_cast<Long>(Text(a[0]).size()));
}

Variant CreateObject(const Args& a) {
    const ClassInfo* c = FindCreatable(ToUtf8(Text(a[0])));
    if (c == nullptr) Raise(kCannotCreateObject);
    return Variant(c->create());
}

Variant HostObjectOf(const Args& a) { return Variant(MakeHostObject(Text(a[0]))); }

// Only the driver's window system can make windows.
Variant HostWindow(const Args& a) {
    auto* windows = dynamic_cast<DriverWindowSystem*>(&CurrentPlatform().windows());
    if (windows == nullptr) Raise(kCannotCreateObject);
    return Variant(windows->makeWindow(Text(a[0]), Text(a[1])));
}

int Decimals(const Args& a) { return a.size() > 1 && !a[1].isMissing() ? Whole(a[1]) : 0; }

const std::vector<Builtin> kBuiltins = {
    {"Chr", 1, 1, "Chr(n)", "The character of code n (0 to 255, Windows-1252).", Chr},
    {"ChrW", 1, 1, "ChrW(n)", "The UTF-16 code unit n (-32768 to 65535).", ChrW},
    {"Space", 1, 1, "Space(n)", "n blanks.", SpaceOf},
    {"String", 2, 2, "String(n, c)", "n copies of the first character of c (or of the character of code c).",
     StringOfChar},
    {"Len", 1, 1, "Len(s)", "The length of the text of s, as a Long; Null for Null.", Len},
    {"CreateObject", 1, 1, "CreateObject(progid)", "A new object: \"DLLKiv.Cl_KIV\" or \"DLLKiv.Col_KIV\".", CreateObject},
    {"HostObject", 1, 1, "HostObject(typeName)",
     "A host form or control: properties made by assignment; \"ListBox\" and \"ComboBox\" are list controls.",
     HostObjectOf},
    {"HostWindow", 2, 2, "HostWindow(class, title)", "Makes a top-level window that FindWindow finds; its handle.",
     HostWindow},
    {"ValPrefix", 1, 1, "ValPrefix(text)", "The leading number of a text, \".\" as decimal point.",
     [](const Args& a) { return Variant(ValPrefix(Text(a[0]))); }},
    {"ToDoubleLocale", 1, 1, "ToDoubleLocale(value)", "A number under the locale (\"1.234,5\").",
     [](const Args& a) { return Variant(ToDoubleLocale(a[0])); }},
    {"RoundHalfEven", 1, 2, "RoundHalfEven(value, [decimals])", "Rounds halves to the even neighbour.",
     [](const Args& a) { return RoundHalfEven(a[0], Decimals(a)); }},
    {"IntFloor", 1, 1, "IntFloor(value)", "The greatest whole number not above value, same type.",
     [](const Args& a) { return IntFloor(a[0]); }},
    {"IntTrunc", 1, 1, "IntTrunc(value)", "The whole part towards zero, same type.",
     [](const Args& a) { return IntTrunc(a[0]); }},
    {"StrNum", 1, 1, "StrNum(number)", "Invariant text of a number with a leading blank or \"-\".",
     [](const Args& a) { return Variant(StrNum(a[0])); }},
    {"FormatPattern", 2, 2, "FormatPattern(value, pattern)", "Formats a number, date or text by a pattern.",
     [](const Args& a) { return Variant(FormatPattern(a[0], Text(a[1]))); }},
    {"DateFromParts", 3, 3, "DateFromParts(year, month, day)", "A Date, carrying overflowing months and days.",
     [](const Args& a) { return Variant(DateFromParts(Whole(a[0]), Whole(a[1]), Whole(a[2]))); }},
    {"TimeFromParts", 3, 3, "TimeFromParts(hours, minutes, seconds)", "A time of day as a Date fraction.",
     [](const Args& a) { return Variant(TimeFromParts(Whole(a[0]), Whole(a[1]), Whole(a[2]))); }},
    {"IsNumericValue", 1, 1, "IsNumericValue(value)", "Whether value reads as a number under the locale.",
     [](const Args& a) { return Variant(IsNumericValue(a[0])); }},
    {"IsDateValue", 1, 1, "IsDateValue(value)", "Whether value reads as a date.",
     [](const Args& a) { return Variant(IsDateValue(a[0])); }},
    {"ToDateLocale", 1, 1, "ToDateLocale(value)", "A Date from day-first text or a serial.",
     [](const Args& a) { return Variant(ToDateLocale(a[0])); }},
    {"WeekdayOf", 1, 1, "WeekdayOf(date)", "1 = Sunday ... 7 = Saturday.",
     [](const Args& a) { return Variant(WeekdayOf(DateArg(a[0]))); }},
    {"DateText", 1, 1, "DateText(date)", "The default text of a Date (\"25/12/2006\").",
     [](const Args& a) { return Variant(DateText(DateArg(a[0]))); }},
    {"NowDateTime", 0, 0, "NowDateTime()", "The present date and time (pinned by --now).",
     [](const Args&) { return Variant(NowDateTime()); }},
    {"TodayDate", 0, 0, "TodayDate()", "The present date (pinned by --now).",
     [](const Args&) { return Variant(TodayDate()); }},
    // The host's files (the table the component shares).
    {"FreeFile", 0, 0, "FreeFile()", "The lowest free file number (Integer).",
     [](const Args&) { return Variant(CurrentPlatform().fileTable().freeNumber()); }},
    {"EOF", 1, 1, "EOF(n)", "Whether file n is at its end.",
     [](const Args& a) { return Variant(CurrentPlatform().fileTable().atEnd(Whole(a[0]))); }},
    {"LOF", 1, 1, "LOF(n)", "The length of open file n in bytes.",
     [](const Args& a) { return Variant(CurrentPlatform().fileTable().length(Whole(a[0]))); }},
    {"FileLen", 1, 1, "FileLen(path)", "The length of a file in bytes.",
     [](const Args& a) { return Variant(CurrentPlatform().files().fileLength(Text(a[0]))); }},
    {"Dir", 1, 1, "Dir(pattern)", "The name of the first normal file matching a pattern with * and ?, or \"\".",
     [](const Args& a) { return Variant(CurrentPlatform().files().firstMatch(Text(a[0]), false)); }},
    {"ReadText", 1, 1, "ReadText(path)", "The whole file as text, one character per byte in the files' code page.",
     [](const Args& a) {
         FileSystem& files = CurrentPlatform().files();
         return Variant(files.decodeText(files.readFile(Text(a[0]))));
     }},
};

}  // namespace

const std::vector<Builtin>& Builtins() { return kBuiltins; }

const Builtin* FindBuiltin(std::string_view name) {
    const std::string lower = Lower(name);
    for (const Builtin& b : kBuiltins)
        if (Lower(b.name) == lower) return &b;
    return nullptr;
}

}  // namespace kiv::script
