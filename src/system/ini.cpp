// INI settings: typed values kept as text in private-profile files, through
// the platform's two private-profile calls.
#include <exception>
#include <string>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/dispatchable.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

// The read buffer of the readers: a longer value comes back cut to 1023.
constexpr Long kReadBuffer = 1024;

String Decimal(Long n) {
    const std::string digits = std::to_string(n);
    return String(digits.begin(), digits.end());
}

}  // namespace

Long Cl_KIV::SAVEPrivateString(const String& lpParagraf, const String& lpKeyName, const String& lpString,
                               const String& lpFileName) {
    return CurrentPlatform().profiles().writeString(lpParagraf, lpKeyName, lpString, lpFileName);
}

Long Cl_KIV::WritePrivateProfileInt(const String& lpAppName, const String& lpKeyName, const Variant& lpValore,
                                    const String& lpFileName) {
    // Despite the name, a fraction is written whole, in the locale's form.
    const String text = IsNumericValue(lpValore) ? ToText(lpValore) : String(u"0");
    return SAVEPrivateString(lpAppName, lpKeyName, text, lpFileName);
}

Long Cl_KIV::SAVEPrivateInt(const String& lpParagraf, const String& lpKeyName, Long lpNumber,
                            const String& lpFileName) {
    return SAVEPrivateString(lpParagraf, lpKeyName, Decimal(lpNumber), lpFileName);
}

Long Cl_KIV::SAVEPrivateDbl(const String& lpParagraf, const String& lpKeyName, Double lpNumber,
                            const String& lpFileName) {
    return SAVEPrivateString(lpParagraf, lpKeyName, NumberText(lpNumber), lpFileName);
}

Long Cl_KIV::SAVEPrivateDate(const String& lpParagraf, const String& lpKeyName, const String& lpDate,
                             const String& lpFileName) {
    if (!IsDateValue(Variant(lpDate))) return 0;
    return SAVEPrivateString(lpParagraf, lpKeyName, lpDate, lpFileName);
}

Long Cl_KIV::SAVEPrivateChk(const String& lpParagraf, const String& lpKeyName, const Object& Chk_,
                            const String& lpFileName) {
    try {
        if (Chk_) {
            Arguments none;
            const Long state = ToLong(Chk_->invoke("Value", InvokeKind::PropertyGet, none));
            SAVEPrivateInt(lpParagraf, lpKeyName, state, lpFileName);
        }
    } catch (const std::exception&) {
        // A control without a usable Value writes nothing; writers never raise.
    }
    // Its result is never set: 0 whatever the write did.
    return 0;
}

String Cl_KIV::LOADPrivateString(const String& lpParagraf, const String& lpKeyName, const String& lpStd,
                                 const String& lpFileName) {
    return CurrentPlatform().profiles().getString(lpParagraf, lpKeyName, lpStd, kReadBuffer, lpFileName);
}

Long Cl_KIV::LOADPrivateInt(const String& lpParagraf, const String& lpKeyName, Long lpStdNumber,
                            const String& lpFileName) {
    const String text = LOADPrivateString(lpParagraf, lpKeyName, Decimal(lpStdNumber), lpFileName);
    try {
        return ToLong(Variant(text));
    } catch (const std::exception&) {
        return 0;
    }
}

Double Cl_KIV::LOADPrivateDbl(const String& lpParagraf, const String& lpKeyName, Double lpStdNumber,
                              const String& lpFileName) {
    const String text = LOADPrivateString(lpParagraf, lpKeyName, NumberText(lpStdNumber), lpFileName);
    try {
        return ToDoubleLocale(Variant(text));
    } catch (const std::exception&) {
        return 0;
    }
}

Double Cl_KIV::LOADPrivateDate(const String& lpParagraf, const String& lpKeyName, Double lpDate,
                               const String& lpFileName) {
    // The reader of a date serial: dd/mm/yyyy text does not convert and is 0.
    const String text = LOADPrivateString(lpParagraf, lpKeyName, NumberText(lpDate), lpFileName);
    try {
        return ToDoubleLocale(Variant(text));
    } catch (const std::exception&) {
        return 0;
    }
}

Long Cl_KIV::LOADPrivateChk(const String& lpParagraf, const String& lpKeyName, Long /*lpStd*/,
                            const String& lpFileName) {
    // The caller's default is ignored: a missing key is unchecked.
    const String text = Trim(LOADPrivateString(lpParagraf, lpKeyName, u"0", lpFileName));
    try {
        return RoundToLong(RoundHalfEven(ToNumber(Variant(text))));
    } catch (const std::exception&) {
        return 0;
    }
}

}  // namespace kiv
