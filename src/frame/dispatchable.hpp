// Objects reached by member name: what an automation client sees of
// Cl_KIV and of any other object a script holds.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/value.hpp"

namespace kiv {

enum class InvokeKind { Method, PropertyGet, PropertyPut, PropertyPutRef };

// Arguments of a late-bound call. Each points at the caller's variable (so a
// by-reference parameter can write to it) or at a temporary; an omitted
// argument is a Variant holding the missing-argument marker.
// Named arguments come by parameter name (scripts) or by parameter index, the
// id an automation client got for the name.
struct Arguments {
    std::vector<Variant*> positional;
    std::vector<std::pair<std::string, Variant*>> named;
    std::vector<std::pair<std::int32_t, Variant*>> namedById;
};

class ClassInfo;

class Dispatchable {
public:
    virtual ~Dispatchable() = default;
    // The class's name; by default the one of its description.
    virtual std::string typeName() const;
    // The members of the class as published; nullptr for an object that
    // answers calls by itself (a host's stand-in control).
    virtual const ClassInfo* description() const { return nullptr; }
    // Calls a member by name, case-blind. Raises RuntimeError. By default
    // through the description.
    virtual Variant invoke(std::string_view member, InvokeKind kind, Arguments& args);
    // Calls a member by its id (0 the default member, -4 the enumerator).
    virtual Variant invokeById(std::int32_t id, InvokeKind kind, Arguments& args);
};

}  // namespace kiv
