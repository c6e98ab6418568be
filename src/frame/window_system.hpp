// The window seam: the few calls into the window system that the form
// helpers make, and the screen's scale.
#pragma once

#include "frame/value.hpp"

namespace kiv {

class WindowSystem {
public:
    virtual ~WindowSystem() = default;
};

}  // namespace kiv
