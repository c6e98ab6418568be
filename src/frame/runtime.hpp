// The runtime services every operation leans on, under their own names.
// Pure functions under the locale of locale.hpp; the clock comes from the host.
#pragma once

#include "frame/value.hpp"

namespace kiv {

// --- Number parsing (runtime_number_parsing.cpp)

// Leading number of a text, "." as decimal point, "&H"/"&O" prefixes; never
// fails on text without a number (0).
Double ValPrefix(const String& text);

// A number under the locale ("1.234,5"), a Boolean (-1/0), Empty (0), a Date
// (its serial). Type mismatch for other text, Invalid use of Null for Null.
Double ToDoubleLocale(const Variant& value);

Boolean IsNumericValue(const Variant& value);
// The text case of IsNumericValue, for a String at hand (no Variant made).
Boolean IsNumericText(const String& text);

// --- Rounding (runtime_rounding.cpp)

// Halves to the even neighbour, decided on the binary value (0.285 -> 0.28).
// Negative decimals are an invalid argument.
Double RoundHalfEven(Double value, int decimals = 0);
// Keeps the type of its argument; Null gives Null.
Variant RoundHalfEven(const Variant& value, int decimals = 0);
// Rounding into the 16- and 32-bit types, Overflow outside their range.
Integer RoundToInteger(Double value);
Long RoundToLong(Double value);

// Int and Fix: keep the argument's type; Null gives Null.
Double IntFloor(Double value);
Variant IntFloor(const Variant& value);
Double IntTrunc(Double value);
Variant IntTrunc(const Variant& value);

// --- Number text (runtime_number_text.cpp)

// The decimal digits of a number rounded to `significant` significant
// digits: value = digits[0].digits[1..] x 10^exponent, trailing zeros
// dropped (zero is "0" with exponent 0). The base of StrNum, NumberText and
// the number patterns.
struct DecimalDigits {
    char digits[24];
    int count;
    int exponent;
    bool negative;
};
DecimalDigits ToDecimalDigits(Double value, int significant);
DecimalDigits ToDecimalDigits(Single value);  // 7 significant digits

// Invariant text of a number with a leading blank or "-": " 5", "-.5".
String StrNum(const Variant& number);

// --- Patterns (format_pattern.cpp)

// Formats a number, a date or a text by one of the library's patterns.
String FormatPattern(const Variant& value, const String& pattern);

// A number with a fixed count of decimals and no grouping, right-aligned in
// `width` places: the bytes of the pattern "0.00" followed by `width` "@",
// in one step for the columns of amounts that are formatted by the million.
String FormatFixedRight(const DecimalDigits& number, int decPlaces, std::size_t width);

// --- Dates (runtime_dates.cpp)

// Date serials count days from 30 December 1899 (serial 0); the runtime's
// dates run from 1 January 100 to 31 December 9999 inclusive: a serial is in
// range when the day it shows (its whole part, the time rounded to the
// second, 23:59:59.7 being the next midnight) is one of them. So
// -657434.5 (1 January 100, 12:00) is in range and 2958465.99999999 is not.
bool InDateRange(double serial);
// The days of a month (1-12) of the proleptic Gregorian calendar, and
// whether a day, month and year name a day of it.
int DaysInMonth(int year, int month);
bool ValidDay(int year, int month, int day);
// The one place where a Date is made from a computed serial: Overflow
// outside the range.
Date DateFromSerial(double serial);

// Builds dates with carrying and the two-digit-year window; Invalid
// procedure call outside the years 100 to 9999.
Date DateFromParts(int year, int month, int day);
Date TimeFromParts(int hours, int minutes, int seconds);

Boolean IsDateValue(const Variant& value);
// Day-first text ("25/12/2006", "25-12-06", "25.12.2006 10:30"), a number as
// a serial; Type mismatch for anything else.
Date ToDateLocale(const Variant& value);

// 1 = Sunday ... 7 = Saturday.
Integer WeekdayOf(Date date);
// Default text of a Date: "25/12/2006", "25/12/2006 8.05.09", "8.05.09".
String DateText(Date date);

// The host's clock.
Date NowDateTime();
Date TodayDate();

// Parts of a date serial (the whole part is the day, the fraction counted
// forward also for days before the epoch); Overflow outside the range.
struct DateParts {
    int year, month, day, hour, minute, second;
};
DateParts SplitDate(Date date);

// --- Case-blind comparison (case_folding.cpp)

// Letter case ignored by Unicode's simple case folding, never by the
// machine's installed locales.
char16_t FoldCase(char16_t c);
bool CaseBlindEqual(const String& a, const String& b);
// 1-based position of `find` in `text` from `start`, 0 when absent.
Long CaseBlindFind(const String& text, const String& find, Long start = 1);

}  // namespace kiv
