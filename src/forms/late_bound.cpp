#include "forms/late_bound.hpp"

#include <initializer_list>

#include "frame/errors.hpp"

namespace kiv {
namespace {

// The values are copied: the host gets temporaries, never our variables.
Variant Invoke(const Object& object, std::string_view name, InvokeKind kind, std::initializer_list<Variant> values) {
    if (!object) Raise(kObjectNotSet);
    std::vector<Variant> copies(values);
    Arguments args;
    for (Variant& v : copies) args.positional.push_back(&v);
    return object->invoke(name, kind, args);
}

}  // namespace

Variant GetMember(const Object& object, std::string_view name) {
    return Invoke(object, name, InvokeKind::PropertyGet, {});
}

Variant GetMember(const Object& object, std::string_view name, const Variant& index) {
    return Invoke(object, name, InvokeKind::PropertyGet, {index});
}

void SetMember(const Object& object, std::string_view name, const Variant& value) {
    Invoke(object, name, InvokeKind::PropertyPut, {value});
}

void SetMember(const Object& object, std::string_view name, const Variant& index, const Variant& value) {
    Invoke(object, name, InvokeKind::PropertyPut, {index, value});
}

void CallMember(const Object& object, std::string_view name) { Invoke(object, name, InvokeKind::Method, {}); }

void CallMember(const Object& object, std::string_view name, const Variant& argument) {
    Invoke(object, name, InvokeKind::Method, {argument});
}

}  // namespace kiv
