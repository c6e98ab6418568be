// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

Integer Cl_KIV::BCheck_EAN(const String& /*BCode*/, En_EANType /*BType*/) { raise(kNotSupported); }
Integer Cl_KIV::BCheck_Code32(const String& /*BCode*/, En_EANType /*BType*/) { raise(kNotSupported); }

}  // namespace kiv
