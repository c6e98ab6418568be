// The class's private check routine for several barcode symbologies. No
// operation of the interface calls it; it is kept with the barcode code.
#pragma once

#include "frame/value.hpp"

namespace kiv::codes {

enum SymbologyType : int {
    kSymEan8 = 4,
    kSymEan13 = 5,
    kSymIsbn10 = 6,
    kSymCode39 = 7,
    kSymCodabar = 8,
    kSymNumericMod10 = 9,
};

struct SymbologyCheck {
    bool valid = false;        // the check character verified, or was written
    bool placeholder = false;  // the code held "?" for the check character
};

// Verifies `code`, or, when it holds the "?" placeholder, writes the computed
// check character in its place. A type number outside 4..9 is accepted as it
// stands.
SymbologyCheck CheckSymbology(String& code, int type);

}  // namespace kiv::codes
