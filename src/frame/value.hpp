// The value model: the automation types under their own names.
#pragma once

#include <compare>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kiv {

using String = std::u16string;  // UTF-16 code units, as the automation text type
using Integer = std::int16_t;
using Long = std::int32_t;
using Single = float;
using Double = double;
using Byte = std::uint8_t;
using Boolean = bool;  // shows as -1 wherever a Boolean becomes a number

// Days from 30 December 1899; the fraction is the time of day.
struct Date {
    double serial = 0;
    friend bool operator==(Date, Date) = default;
};

// Fixed point with four decimals, as the automation Currency type.
struct Currency {
    std::int64_t scaled = 0;  // value x 10000
    static Currency fromDouble(double value);  // raises Overflow out of range
    double toDouble() const { return static_cast<double>(scaled) / 10000.0; }
    friend bool operator==(Currency, Currency) = default;
};

struct EmptyValue {
    friend bool operator==(EmptyValue, EmptyValue) = default;
};
struct NullValue {
    friend bool operator==(NullValue, NullValue) = default;
};
// An error-valued Variant; the missing-argument marker is one of them.
struct ErrorValue {
    std::int32_t code = 0;
    friend bool operator==(ErrorValue, ErrorValue) = default;
};
inline constexpr std::int32_t kMissingArgument = static_cast<std::int32_t>(0x80020004u);

// The automation type codes, used for arrays and the interface description.
enum class VarType : int {
    Empty = 0, Null = 1, Integer = 2, Long = 3, Single = 4, Double = 5, Currency = 6,
    Date = 7, String = 8, Object = 9, Error = 10, Boolean = 11, Variant = 12, Byte = 17,
    Array = 8192,
};

class Dispatchable;
// A counted reference to something reached by member name; null is Nothing.
using Object = std::shared_ptr<Dispatchable>;

class Array;
class Variant;

// Owns a heap value and copies it deeply: arrays have value semantics.
template <class T>
class Boxed {
public:
    explicit Boxed(T value) : p_(std::make_unique<T>(std::move(value))) {}
    Boxed(const Boxed& o) : p_(std::make_unique<T>(*o.p_)) {}
    Boxed(Boxed&&) noexcept = default;
    Boxed& operator=(const Boxed& o) { p_ = std::make_unique<T>(*o.p_); return *this; }
    Boxed& operator=(Boxed&&) noexcept = default;
    T& operator*() const { return *p_; }
    T* operator->() const { return p_.get(); }
    friend bool operator==(const Boxed& a, const Boxed& b) { return *a.p_ == *b.p_; }

private:
    std::unique_ptr<T> p_;
};

class Variant {
public:
    using Storage = std::variant<EmptyValue, NullValue, ErrorValue, Integer, Long, Single, Double, Currency,
                                 Date, Boolean, Byte, String, Object, Boxed<Array>>;

    Variant() = default;
    Variant(EmptyValue) {}
    Variant(NullValue v) : v_(v) {}
    Variant(ErrorValue v) : v_(v) {}
    Variant(Integer v) : v_(v) {}
    Variant(Long v) : v_(v) {}
    Variant(Single v) : v_(v) {}
    Variant(Double v) : v_(v) {}
    Variant(Currency v) : v_(v) {}
    Variant(Date v) : v_(v) {}
    Variant(Boolean v) : v_(v) {}
    Variant(Byte v) : v_(v) {}
    Variant(String v) : v_(std::move(v)) {}
    Variant(const char16_t* v) : v_(String(v)) {}
    Variant(Object v) : v_(std::move(v)) {}
    Variant(Array v);

    static Variant null() { return Variant(NullValue{}); }
    static Variant missing() { return Variant(ErrorValue{kMissingArgument}); }

    VarType type() const;  // Array for any array
    bool isEmpty() const { return std::holds_alternative<EmptyValue>(v_); }
    bool isNull() const { return std::holds_alternative<NullValue>(v_); }
    bool isError() const { return std::holds_alternative<ErrorValue>(v_); }
    bool isMissing() const;
    bool isString() const { return std::holds_alternative<String>(v_); }
    bool isObject() const { return std::holds_alternative<Object>(v_); }
    bool isArray() const { return std::holds_alternative<Boxed<Array>>(v_); }
    bool isDate() const { return std::holds_alternative<Date>(v_); }
    bool isBoolean() const { return std::holds_alternative<Boolean>(v_); }
    // Integer, Long, Single, Double, Currency or Byte.
    bool isNumber() const;

    template <class T> const T* as() const { return std::get_if<T>(&v_); }
    template <class T> T* as() { return std::get_if<T>(&v_); }
    const Array* array() const;
    Array* array();

    const Storage& storage() const { return v_; }

    // Identity: same type and same value (used to tell whether a by-reference
    // argument was changed).
    friend bool operator==(const Variant& a, const Variant& b) { return a.v_ == b.v_; }

private:
    Storage v_;
};

struct Bound {
    Long lower = 0;
    Long count = 0;
    friend bool operator==(Bound, Bound) = default;
};

// A fixed array of one or two dimensions with lower bounds; its element type
// is Variant or a fixed type (a String array holds only Strings).
class Array {
public:
    Array(VarType element, std::vector<Bound> dims);
    VarType element() const { return element_; }
    const std::vector<Bound>& dims() const { return dims_; }
    Long lower(int dim = 0) const { return dims_.at(dim).lower; }
    Long upper(int dim = 0) const { return dims_.at(dim).lower + dims_.at(dim).count - 1; }
    // Element access by indices; Subscript out of range outside the bounds.
    Variant& at(std::initializer_list<Long> index);
    const Variant& at(std::initializer_list<Long> index) const;
    Variant& at(const std::vector<Long>& index);
    // Stores a value, converted to the element type for typed arrays.
    void set(const std::vector<Long>& index, Variant value);
    const std::vector<Variant>& items() const { return items_; }
    friend bool operator==(const Array&, const Array&) = default;

private:
    std::size_t offset(const Long* index, std::size_t n) const;
    VarType element_;
    std::vector<Bound> dims_;
    std::vector<Variant> items_;
};

// Array parameters of operations: the element type is part of the declaration.
template <VarType E>
class TypedArray : public Array {
public:
    static constexpr VarType kElement = E;
    TypedArray() : Array(E, {{0, 0}}) {}
    TypedArray(Long lower, Long upper) : Array(E, {{lower, upper - lower + 1}}) {}
    explicit TypedArray(Array a) : Array(std::move(a)) {}
};
using VariantArray = TypedArray<VarType::Variant>;
using StringArray = TypedArray<VarType::String>;

}  // namespace kiv
