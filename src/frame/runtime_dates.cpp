// Dates: serials, their parts, day-first text and the host's clock.
#include <cmath>
#include <cstdint>

#include "frame/ascii.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/locale.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

// Proleptic Gregorian dates and day counts: Howard Hinnant's
// days_from_civil and civil_from_days ("chrono-Compatible Low-Level Date
// Algorithms"), counted from 1970-01-01 and shifted to our serials. Years
// are reckoned from 1 March, so that the leap day ends the year; an era is
// 400 years, 146097 days.
constexpr std::int64_t kUnixEpochSerial = 25569;      // 1 January 1970
constexpr std::int64_t kDaysFromMarch0ToUnix = 719468;  // 0000-03-01 to 1970-01-01

// Serial of a day (month 1-12, day 1-31). Any year an int and a carry of
// months can make stays far inside 64 bits.
std::int64_t DayNumber(std::int64_t y, int m, int d) {
    y -= m <= 2;                                                      // years start in March
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;            // floor division
    const std::int64_t yoe = y - era * 400;                           // [0, 399]
    const std::int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;  // [0, 365] for a valid day
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;   // [0, 146096]
    return era * 146097 + doe - kDaysFromMarch0ToUnix + kUnixEpochSerial;
}

// The date of a whole serial.
void CivilFromDay(std::int64_t n, int& year, int& month, int& day) {
    const std::int64_t z = n - kUnixEpochSerial + kDaysFromMarch0ToUnix;  // days from 0000-03-01
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;           // floor division
    const std::int64_t doe = z - era * 146097;                               // [0, 146096]
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;  // [0, 399]
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);        // [0, 365]
    const std::int64_t mp = (5 * doy + 2) / 153;                             // [0, 11], 0 = March
    day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);                    // [1, 31]
    month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);                     // [1, 12]
    year = static_cast<int>(yoe + era * 400 + (month <= 2));
}

int WindowYear(int y) { return y >= 0 && y <= 29 ? y + 2000 : y >= 30 && y <= 99 ? y + 1900 : y; }

// A cursor over date text; numbers remember how many digits they had.
struct Reader {
    const char16_t* p;
    const char16_t* e;

    bool at(char16_t c) const { return p < e && *p == c; }
    bool blanks() {
        const char16_t* s = p;
        while (p < e && (*p == u' ' || *p == u'\t')) ++p;
        return p != s;
    }
    bool number(int& value, int& digits) {
        value = 0;
        digits = 0;
        while (p < e && IsAsciiDigit(*p)) {
            if (digits == 9) return false;  // at most 9 digits: below 10^9, within an int
            value = value * 10 + (*p++ - u'0');
            ++digits;
        }
        return digits > 0;
    }
    // "AM" / "PM", case-blind; 0 none, 1 AM, 2 PM.
    int meridiem() {
        if (e - p < 2 || AsciiLower(p[1]) != u'm') return 0;
        const char16_t c = AsciiLower(*p);
        if (c != u'a' && c != u'p') return 0;
        p += 2;
        return c == u'a' ? 1 : 2;
    }
};

// h:m[:s] with ":" (or "." where allowed), optional AM/PM; the first
// number has been read already.
bool ReadTime(Reader& r, int hours, bool dotAllowed, double& fraction) {
    const char16_t sep = r.at(u':') ? u':' : (dotAllowed && r.at(u'.')) ? u'.' : 0;
    if (sep == 0) return false;
    ++r.p;
    int minutes = 0, seconds = 0, digits = 0;
    if (!r.number(minutes, digits)) return false;
    if (r.at(sep)) {
        ++r.p;
        if (!r.number(seconds, digits)) return false;
    }
    r.blanks();
    const int half = r.meridiem();
    if (half != 0) {
        if (hours > 12) return false;
        if (half == 1 && hours == 12) hours = 0;
        if (half == 2 && hours < 12) hours += 12;
    }
    if (hours > 23 || minutes > 59 || seconds > 59) return false;
    fraction = (hours * 3600 + minutes * 60 + seconds) / 86400.0;
    return true;
}

bool ParseDateText(const String& text, double& serial) {
    Reader r{text.data(), text.data() + text.size()};
    r.blanks();
    while (r.e > r.p && (r.e[-1] == u' ' || r.e[-1] == u'\t')) --r.e;
    int a = 0, b = 0, c = 0, da = 0, db = 0, dc = 0;
    if (!r.number(a, da)) return false;
    if (r.at(u':')) {  // a time alone, on day 0
        double fraction = 0;
        if (!ReadTime(r, a, false, fraction) || r.p != r.e) return false;
        serial = fraction;
        return true;
    }
    if (!(r.at(u'/') || r.at(u'-') || r.at(u'.'))) return false;
    const char16_t sep = *r.p++;
    if (!r.number(b, db)) return false;
    const bool three = r.at(sep);
    if (three) {
        ++r.p;
        if (!r.number(c, dc)) return false;
    }
    double fraction = 0;
    if (r.p != r.e) {
        if (!r.blanks()) return false;
        int h = 0, dh = 0;
        if (!r.number(h, dh) || !ReadTime(r, h, true, fraction) || r.p != r.e) return false;
    }
    int y, m, d;
    if (three && da >= 3) {  // year first
        if (da > 4) return false;
        y = a; m = b; d = c;
    } else {
        if (da > 2) return false;
        if (three) {
            if (dc > 4) return false;
            y = dc <= 2 ? WindowYear(c) : c;
        } else {
            int ny, nm, nd;
            CivilFromDay(static_cast<std::int64_t>(std::trunc(NowDateTime().serial)), ny, nm, nd);
            y = ny;
        }
        d = a; m = b;
        if (!ValidDay(y, m, d) && ValidDay(y, a, b)) { m = a; d = b; }  // month first
    }
    if (y < 100 || y > 9999 || !ValidDay(y, m, d)) return false;
    serial = static_cast<double>(DayNumber(y, m, d)) + fraction;
    return true;
}

constexpr std::int64_t kFirstDay = -657434;  // 1 January 100
constexpr std::int64_t kLastDay = 2958465;   // 31 December 9999

// The day a serial shows and the second of that day; false for a serial too
// far out to have a day in the range (so huge values are never converted).
bool DayAndSecond(double serial, std::int64_t& day, std::int64_t& second) {
    if (!(std::fabs(serial) < 1e7)) return false;  // NaN too
    const double whole = std::trunc(serial);
    day = static_cast<std::int64_t>(whole);
    second = std::llround(std::fabs(serial - whole) * 86400.0);
    if (second >= 86400) {  // 23:59:59.7 is the next day's midnight
        second -= 86400;
        ++day;
    }
    return day >= kFirstDay && day <= kLastDay;
}

void AppendTwo(String& out, int v) {
    out += static_cast<char16_t>(u'0' + v / 10);
    out += static_cast<char16_t>(u'0' + v % 10);
}

void AppendNumber(String& out, int v) {
    if (v >= 10) AppendNumber(out, v / 10);
    out += static_cast<char16_t>(u'0' + v % 10);
}

}  // namespace

int DaysInMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

bool ValidDay(int year, int month, int day) {
    return month >= 1 && month <= 12 && day >= 1 && day <= DaysInMonth(year, month);
}

bool InDateRange(double serial) {
    std::int64_t day = 0, second = 0;
    return DayAndSecond(serial, day, second);
}

Date DateFromSerial(double serial) {
    if (!InDateRange(serial)) Raise(kOverflow);
    return Date{serial};
}

Date DateFromParts(int year, int month, int day) {
    // The window first, then months carry into years (0 is December before).
    const std::int64_t m0 = static_cast<std::int64_t>(month) - 1;
    const std::int64_t carry = m0 >= 0 ? m0 / 12 : -((11 - m0) / 12);  // floor(m0 / 12)
    const std::int64_t y = WindowYear(year) + carry;
    const int m = static_cast<int>(m0 - carry * 12) + 1;  // [1, 12]
    const double serial = static_cast<double>(DayNumber(y, m, 1) + day - 1);
    if (!InDateRange(serial)) Raise(kInvalidCall);
    return Date{serial};
}

Date TimeFromParts(int hours, int minutes, int seconds) {
    const std::int64_t total = std::int64_t{hours} * 3600 + std::int64_t{minutes} * 60 + seconds;
    const double serial = static_cast<double>(total) / 86400.0;
    if (!InDateRange(serial)) Raise(kInvalidCall);
    return Date{serial};
}

DateParts SplitDate(Date date) {
    std::int64_t day = 0, secs = 0;
    if (!DayAndSecond(date.serial, day, secs)) Raise(kOverflow);
    DateParts parts{};
    CivilFromDay(day, parts.year, parts.month, parts.day);
    parts.hour = static_cast<int>(secs / 3600);
    parts.minute = static_cast<int>(secs / 60 % 60);
    parts.second = static_cast<int>(secs % 60);
    return parts;
}

Date ToDateLocale(const Variant& value) {
    switch (value.type()) {
        case VarType::Date: return DateFromSerial(value.as<Date>()->serial);  // a host may pass any serial
        case VarType::Empty: return Date{0};
        case VarType::Null: Raise(kInvalidUseOfNull);
        case VarType::String: {
            double serial = 0;
            if (!ParseDateText(*value.as<String>(), serial)) Raise(kTypeMismatch);
            return DateFromSerial(serial);
        }
        case VarType::Integer: case VarType::Long: case VarType::Single: case VarType::Double:
        case VarType::Currency: case VarType::Byte: case VarType::Boolean: {
            return DateFromSerial(ToDoubleLocale(value));
        }
        default: Raise(kTypeMismatch);
    }
}

Boolean IsDateValue(const Variant& value) {
    if (value.isDate()) return true;
    if (value.isNumber()) return InDateRange(ToDoubleLocale(value));
    if (const String* s = value.as<String>()) {
        double serial = 0;
        return ParseDateText(*s, serial);
    }
    return false;
}

Integer WeekdayOf(Date date) {
    if (!InDateRange(date.serial)) Raise(kOverflow);
    const auto day = static_cast<std::int64_t>(std::trunc(date.serial));
    return static_cast<Integer>(((day + 6) % 7 + 7) % 7 + 1);  // day 0 was a Saturday
}

String DateText(Date date) {
    const DateParts p = SplitDate(date);
    const bool dayZero = p.year == 1899 && p.month == 12 && p.day == 30;
    const bool hasTime = p.hour != 0 || p.minute != 0 || p.second != 0;
    String out;
    out.reserve(20);
    if (!dayZero) {
        const char16_t sep = CurrentLocale().dateSeparator;
        AppendTwo(out, p.day);
        out += sep;
        AppendTwo(out, p.month);
        out += sep;
        if (p.year < 1000) out += u'0';
        AppendNumber(out, p.year);
        if (!hasTime) return out;
        out += u' ';
    }
    const char16_t sep = CurrentLocale().timeSeparator;
    AppendNumber(out, p.hour);
    out += sep;
    AppendTwo(out, p.minute);
    out += sep;
    AppendTwo(out, p.second);
    return out;
}

Date NowDateTime() { return CurrentPlatform().host().now(); }

Date TodayDate() { return Date{std::trunc(NowDateTime().serial)}; }

}  // namespace kiv
