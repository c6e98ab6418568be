// Characters collected on the stack, moving to the heap only past N: the
// texts of numbers and patterns on the hot paths stay short.
#pragma once

#include <cstddef>
#include <string>

namespace kiv {

template <class C, std::size_t N>
class SmallBuffer {
public:
    void push(C c) {
        if (n_ < N) small_[n_] = c;
        else {
            if (big_.empty()) big_.assign(small_, n_);
            big_ += c;
        }
        ++n_;
    }
    void push(const C* s, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) push(s[i]);
    }
    const C* data() const { return n_ <= N ? small_ : big_.data(); }
    std::size_t size() const { return n_; }
    std::basic_string<C> str() const { return std::basic_string<C>(data(), n_); }
    // Blanks in front up to `width` characters, in one allocation.
    std::basic_string<C> rightAligned(std::size_t width) const {
        if (n_ >= width) return str();
        std::basic_string<C> out(width, C(' '));
        std::char_traits<C>::copy(out.data() + (width - n_), data(), n_);
        return out;
    }

private:
    C small_[N];
    std::basic_string<C> big_;
    std::size_t n_ = 0;
};

}  // namespace kiv
