// Facts of the machine: system version and bitness, computer and user names,
// network address, system folders. A fact pinned in the platform settings
// (kiv --pin) is answered exactly as pinned.
#pragma once

#include "frame/value.hpp"

namespace kiv {

struct SystemVersion {
    String name;         // "Windows 10 10.0.19045", "Linux 6.1.0-18-amd64"
    String servicePack;  // the platform's service-pack buffer as read, NULs included; "" when none
};

class Machine {
public:
    virtual ~Machine() = default;
    // Each raises a run-time error when the fact cannot be read.
    virtual SystemVersion systemVersion() = 0;
    virtual Integer systemBits() = 0;  // 32 or 64
};

}  // namespace kiv
