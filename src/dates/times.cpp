// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::Min2hh(Ref<Long> /*tt*/, Integer /*Lun*/) { raise(kNotSupported); }
Long Cl_KIV::Hh2Min(Date /*Hh*/, Integer /*Lun*/) { raise(kNotSupported); }
Long Cl_KIV::Hh2Sec(const String& /*P_Hh*/) { raise(kNotSupported); }

}  // namespace kiv
