// A by-reference argument: the caller's own variable, or, when the caller
// passes an expression or omits the argument, a private temporary. Writing
// through it is what makes a change reach the caller.
#pragma once

#include <type_traits>
#include <utility>

namespace kiv {

template <class T>
class Ref {
public:
    Ref(T& variable) : target_(&variable) {}

    template <class U>
        requires(!std::is_same_v<std::remove_cvref_t<U>, Ref> && std::is_constructible_v<T, U &&> &&
                 !(std::is_lvalue_reference_v<U> && std::is_same_v<std::remove_cvref_t<U>, T> &&
                   !std::is_const_v<std::remove_reference_t<U>>))
    Ref(U&& value) : own_(std::forward<U>(value)), target_(&own_) {}

    Ref(const Ref&) = delete;
    Ref& operator=(const Ref&) = delete;

    T& operator*() const { return *target_; }
    T* operator->() const { return target_; }

private:
    T own_{};
    T* target_;
};

}  // namespace kiv
