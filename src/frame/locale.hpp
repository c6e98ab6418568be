// The regional settings the conversions use. Italian values are the
// defaults; every conversion reads them from here.
#pragma once

#include "frame/value.hpp"

namespace kiv {

struct Locale {
    char16_t decimal = u',';
    char16_t grouping = u'.';
    char16_t dateSeparator = u'/';
    char16_t timeSeparator = u'.';
    String currencySymbol = u"\u20AC";
    String trueText = u"True";
    String falseText = u"False";
};

const Locale& CurrentLocale();

}  // namespace kiv
