// Facts of the machine: system version and bitness, computer and user names,
// network address, system folders.
#pragma once

#include "frame/value.hpp"

namespace kiv {

class Machine {
public:
    virtual ~Machine() = default;
};

}  // namespace kiv
