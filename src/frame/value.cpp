#include "frame/value.hpp"

#include <cmath>

#include "frame/convert.hpp"
#include "frame/errors.hpp"

namespace kiv {

Currency Currency::fromDouble(double value) {
    const double scaled = std::nearbyint(value * 10000.0);
    if (!(scaled >= -9.2233720368547758e18 && scaled < 9.2233720368547758e18)) Raise(kOverflow);
    return Currency{static_cast<std::int64_t>(scaled)};
}

Variant::Variant(Array v) : v_(Boxed<Array>(std::move(v))) {}

VarType Variant::type() const {
    static constexpr VarType kTypes[] = {VarType::Empty, VarType::Null, VarType::Error, VarType::Integer,
                                         VarType::Long, VarType::Single, VarType::Double, VarType::Currency,
                                         VarType::Date, VarType::Boolean, VarType::Byte, VarType::String,
                                         VarType::Object, VarType::Array};
    return kTypes[v_.index()];
}

bool Variant::isMissing() const {
    const ErrorValue* e = as<ErrorValue>();
    return e != nullptr && e->code == kMissingArgument;
}

bool Variant::isNumber() const {
    switch (type()) {
        case VarType::Integer: case VarType::Long: case VarType::Single: case VarType::Double:
        case VarType::Currency: case VarType::Byte: return true;
        default: return false;
    }
}

const Array* Variant::array() const {
    const Boxed<Array>* b = as<Boxed<Array>>();
    return b ? &**b : nullptr;
}

Array* Variant::array() {
    Boxed<Array>* b = as<Boxed<Array>>();
    return b ? &**b : nullptr;
}

Array::Array(VarType element, std::vector<Bound> dims) : element_(element), dims_(std::move(dims)) {
    std::size_t total = 1;
    for (const Bound& b : dims_) {
        if (b.count < 0) Raise(kSubscriptOutOfRange);
        total *= static_cast<std::size_t>(b.count);
    }
    items_.assign(total, element_ == VarType::String ? Variant(String()) : Variant());
}

std::size_t Array::offset(const Long* index, std::size_t n) const {
    if (n != dims_.size()) Raise(kSubscriptOutOfRange);
    std::size_t off = 0;
    for (std::size_t d = 0; d < n; ++d) {  // last index fastest
        const std::int64_t i = static_cast<std::int64_t>(index[d]) - dims_[d].lower;
        if (i < 0 || i >= dims_[d].count) Raise(kSubscriptOutOfRange);
        off = off * static_cast<std::size_t>(dims_[d].count) + static_cast<std::size_t>(i);
    }
    return off;
}

Variant& Array::at(std::initializer_list<Long> index) { return items_[offset(index.begin(), index.size())]; }
const Variant& Array::at(std::initializer_list<Long> index) const {
    return items_[offset(index.begin(), index.size())];
}
Variant& Array::at(const std::vector<Long>& index) { return items_[offset(index.data(), index.size())]; }

void Array::set(const std::vector<Long>& index, Variant value) {
    Variant& slot = at(index);
    if (element_ == VarType::String) {
        if (value.isNull()) Raise(kInvalidUseOfNull);
        slot = Variant(ToText(value));
    } else {
        slot = std::move(value);
    }
}

}  // namespace kiv
