#include "forms/late_bound.hpp"

#include "frame/errors.hpp"

namespace kiv {

Variant GetMember(const Object& object, std::string_view name) {
    if (!object) raise(kObjectNotSet);
    Arguments none;
    return object->invoke(name, InvokeKind::PropertyGet, none);
}

}  // namespace kiv
