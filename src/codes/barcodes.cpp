// Check digits of numeric barcodes: the EAN family and Code 32 (Italian
// pharmaceutical products). The caller passes the full code or "?" in place
// of the check digit and compares the answer with its own last character.
#include "codes/code_text.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// Everything but a trailing "?" must pass the numeric test.
bool Acceptable(const String& code) {
    if (code.empty()) return false;
    if (code.back() != u'?') return IsNumericText(code);
    String body = Left(code, static_cast<Long>(code.size()) - 1);
    return IsNumericText(body);
}

// The value of one character as the runtime reads its text; a sign or a
// blank that the numeric test let through counts 0, and so does a position
// past the end.
Long DigitAt(const String& code, std::size_t position) {
    if (position > code.size()) return 0;
    const char16_t c = code[position - 1];
    if (c >= u'0' && c <= u'9') return c - u'0';
    return static_cast<Long>(ValPrefix(String(1, c)));
}

}  // namespace

Integer Cl_KIV::BCheck_EAN(const String& BCode, En_EANType /*BType*/) {
    if (!Acceptable(BCode)) return -1;

    const std::size_t length = BCode.size();
    Long sum = 0;
    for (std::size_t i = 1; i < length; ++i) {
        // The digit next to the check place always weighs 3.
        const std::size_t fromCheck = length - i;
        sum += DigitAt(BCode, i) * (fromCheck % 2 == 1 ? 3 : 1);
    }
    const Long rest = sum % 10;
    return static_cast<Integer>(Ceil(Variant(rest / 10.0)) * 10 - rest);
}

Integer Cl_KIV::BCheck_Code32(const String& BCode, En_EANType /*BType*/) {
    if (!Acceptable(BCode)) return -1;

    Long odd = 0;
    for (std::size_t i = 1; i <= 7; i += 2) odd += DigitAt(BCode, i);

    Long even = 0;
    for (std::size_t i = 2; i <= 8; i += 2) {
        const Long twice = DigitAt(BCode, i) * 2;
        even += twice / 10 + twice % 10;
    }
    // The sum itself, not its complement to 10.
    return static_cast<Integer>((odd + even) % 10);
}

}  // namespace kiv
