#include "frame/cl_kiv.hpp"

#include "frame/convert.hpp"
#include "frame/dispatch.hpp"
#include "frame/errors.hpp"

namespace kiv {

Cl_KIV::Cl_KIV() {
    // Entry 0 serves characters that are no hexadecimal digit; entry k holds
    // the four binary digits of k - 1.
    nibbles_[0] = u"0000";
    for (int k = 1; k <= 16; ++k) {
        const int v = k - 1;
        for (int bit = 3; bit >= 0; --bit) nibbles_[k] += (v >> bit) & 1 ? u'1' : u'0';
    }
}

const String& Cl_KIV::Nibble(int index) const {
    if (index < 0 || index > 16) Raise(kSubscriptOutOfRange);
    return nibbles_[index];
}

String Cl_KIV::StripNuls(const Variant& Text) {
    const String t = ToText(Text);
    String out;
    for (std::size_t i = 0; i < t.size(); ++i) {
        if (t[i] == u'\0') ++i;  // the character after a NUL goes too
        else out += t[i];
    }
    return out;
}

}  // namespace kiv
