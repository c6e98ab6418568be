// Members of the host's forms and controls, reached by name as the host
// publishes them: a missing member is the host's error 438, a control that
// is Nothing is error 91.
#pragma once

#include <string_view>

#include "frame/dispatchable.hpp"

namespace kiv {

// The value of a property (or of a member called without arguments).
Variant GetMember(const Object& object, std::string_view name);
// An indexed property such as List(i).
Variant GetMember(const Object& object, std::string_view name, const Variant& index);
// Sets a property, or an indexed one such as ItemData(i).
void SetMember(const Object& object, std::string_view name, const Variant& value);
void SetMember(const Object& object, std::string_view name, const Variant& index, const Variant& value);
// Calls a method with one argument (AddItem) or none (Clear).
void CallMember(const Object& object, std::string_view name);
void CallMember(const Object& object, std::string_view name, const Variant& argument);

}  // namespace kiv
