// Facts of the system the host runs on, read through the machine seam; like
// every system helper they trap every error and answer a neutral result.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::GetWindowsVer() {
    try {
        const SystemVersion v = platform().machine().systemVersion();
        const String servicePack = Trim(StripNuls(Variant(v.servicePack)));
        return servicePack.empty() ? v.name : v.name + u" " + servicePack;
    } catch (const RuntimeError&) {
        return String();
    }
}

Integer Cl_KIV::GetWindowsBit() {
    try {
        return platform().machine().systemBits();
    } catch (const RuntimeError&) {
        return 0;
    }
}

}  // namespace kiv
