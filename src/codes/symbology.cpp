#include "codes/symbology.hpp"

#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv::codes {

namespace {

constexpr char16_t kCode39Set[] = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%";
constexpr char16_t kCodabarSet[] = u"0123456789-$:/.+abcdtm*e";

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
char16_t DigitChar(int value) { return static_cast<char16_t>(u'0' + value); }

// Every character before the last is a decimal digit, and the last one is a
// digit or the placeholder (or, where allowed, the extra character).
bool DigitsWithCheck(const String& code, char16_t extra = u'?') {
    if (code.empty()) return false;
    for (std::size_t i = 0; i + 1 < code.size(); ++i) {
        if (!IsDigit(code[i])) return false;
    }
    const char16_t last = FoldCase(code.back());
    return IsDigit(last) || last == u'?' || last == FoldCase(extra);
}

// Weights 3 and 1 from the right, the digit before the check place weighing 3.
SymbologyCheck CheckEan(String& code, std::size_t length) {
    if (code.size() == length - 1) code += u'?';
    if (code.size() != length || !DigitsWithCheck(code)) return {};
    int sum = 0;
    for (std::size_t i = 0; i + 1 < length; ++i) sum += (code[i] - u'0') * ((length - 1 - i) % 2 == 1 ? 3 : 1);
    const char16_t check = DigitChar((10 - sum % 10) % 10);
    if (code.back() == u'?') {
        code.back() = check;
        return {true, true};
    }
    return {code.back() == check, false};
}

SymbologyCheck CheckIsbn10(String& code) {
    if (code.size() == 9) code += u'?';
    if (code.size() != 10 || !DigitsWithCheck(code, u'X')) return {};
    int sum = 0;
    for (int i = 1; i <= 9; ++i) sum += (code[i - 1] - u'0') * (11 - i);
    if (code.back() == u'?') {
        const int check = 11 - sum % 11;
        // 11 is written by its last digit, as "1".
        code.back() = check == 10 ? u'X' : DigitChar(check % 10);
        return {true, true};
    }
    sum += IsDigit(code.back()) ? code.back() - u'0' : 10;
    return {sum % 11 == 0, false};
}

SymbologyCheck CheckCode39(String& code) {
    if (code.empty()) return {};
    const std::size_t n = code.size();
    Long sum = 0;
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const Long place = CaseBlindFind(kCode39Set, String(1, code[i]));
        if (place == 0) return {};
        sum += place - 1;
    }
    const char16_t check = kCode39Set[sum % 43];
    if (code.back() == u'?') {
        code.back() = check;
        return {true, true};
    }
    return {FoldCase(code.back()) == FoldCase(check), false};
}

SymbologyCheck CheckCodabar(String& code) {
    if (code.empty()) return {};
    const String lowered = LCase(code);
    const std::size_t n = lowered.size();
    const bool placeholder = lowered.back() == u'?';
    // Start and stop letters of both sets count alike.
    auto valueAt = [&lowered](std::size_t i) -> Long {
        const Long place = InStr(kCodabarSet, String(1, lowered[i]));
        if (place == 0) return -1;
        return place - 1 > 19 ? place - 5 : place - 1;
    };
    Long sum = 0;
    for (std::size_t i = 0; i < n; ++i) {
        if (i + 2 == n) continue;  // the check character stands before the stop character
        if (placeholder && i + 1 == n) continue;
        const Long value = valueAt(i);
        if (value < 0) return {};
        sum += value;
    }
    const Long check = 16 - sum % 16;
    if (placeholder) {
        code.back() = kCodabarSet[check];
        return {true, true};
    }
    if (n < 2) return {};
    return {valueAt(n - 2) == check, false};
}

// From the last-but-one digit leftwards the weights run 1, 3, 1, 3, ...
SymbologyCheck CheckNumericMod10(String& code) {
    if (!DigitsWithCheck(code)) return {};
    const std::size_t n = code.size();
    int sum = 0;
    for (std::size_t i = 0; i + 1 < n; ++i) sum += (code[i] - u'0') * ((n - 2 - i) % 2 == 0 ? 1 : 3);
    const int check = 10 - sum % 10;
    if (code.back() == u'?') {
        code.back() = DigitChar(check % 10);
        return {true, true};
    }
    // Compared as numbers: a check of 10 never matches a single digit.
    return {check == code.back() - u'0', false};
}

}  // namespace

SymbologyCheck CheckSymbology(String& code, int type) {
    switch (type) {
    case kSymEan8: return CheckEan(code, 8);
    case kSymEan13: return CheckEan(code, 13);
    case kSymIsbn10: return CheckIsbn10(code);
    case kSymCode39: return CheckCode39(code);
    case kSymCodabar: return CheckCodabar(code);
    case kSymNumericMod10: return CheckNumericMod10(code);
    default: return {true, !code.empty() && code.back() == u'?'};
    }
}

}  // namespace kiv::codes
