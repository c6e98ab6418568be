// Letter case ignored by Unicode's simple case folding, the same on every
// machine whatever locales it has installed.
#include "frame/ascii.hpp"
#include "frame/case_tables.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"

namespace kiv {

char16_t FoldCase(char16_t c) {
    if (c < 0x80) return AsciiLower(c);
    return SimpleFold(c);
}

bool CaseBlindEqual(const String& a, const String& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i] && FoldCase(a[i]) != FoldCase(b[i])) return false;
    return true;
}

Long CaseBlindFind(const String& text, const String& find, Long start) {
    if (start < 1) Raise(kInvalidCall);
    const std::size_t from = static_cast<std::size_t>(start) - 1;
    if (from > text.size()) return 0;
    if (find.empty()) return start;
    if (find.size() > text.size()) return 0;
    const char16_t first = FoldCase(find[0]);
    for (std::size_t i = from; i + find.size() <= text.size(); ++i) {
        if (FoldCase(text[i]) != first) continue;
        std::size_t k = 1;
        while (k < find.size() && FoldCase(text[i + k]) == FoldCase(find[k])) ++k;
        if (k == find.size()) return static_cast<Long>(i + 1);
    }
    return 0;
}

}  // namespace kiv
