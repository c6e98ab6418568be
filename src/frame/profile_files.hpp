// The private-profile (INI) seam: read and write one key of a section of an
// INI file, delete a key or a section.
#pragma once

#include "frame/value.hpp"

namespace kiv {

class ProfileFiles {
public:
    virtual ~ProfileFiles() = default;
};

}  // namespace kiv
