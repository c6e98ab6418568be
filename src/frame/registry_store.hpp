// The registry seam: keys opened by handle, typed values, enumeration, with
// the platform's error codes.
#pragma once

#include "frame/value.hpp"

namespace kiv {

class RegistryStore {
public:
    virtual ~RegistryStore() = default;
};

}  // namespace kiv
