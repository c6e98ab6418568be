// Objects reached by member name: what an automation client sees of
// Cl_KIV and of any other object a script holds.
#pragma once

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
struct Arguments {
    std::vector<Variant*> positional;
    std::vector<std::pair<std::string, Variant*>> named;
};

class Dispatchable {
public:
    virtual ~Dispatchable() = default;
    virtual std::string typeName() const = 0;
    // Calls a member by name, case-blind. Raises RuntimeError.
    virtual Variant invoke(std::string_view member, InvokeKind kind, Arguments& args) = 0;
};

}  // namespace kiv
