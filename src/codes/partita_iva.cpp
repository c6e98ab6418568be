// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::Get_CheckPI(const String& /*T_PI*/) { raise(kNotSupported); }
EnPI_Result Cl_KIV::Is_PITest(const String& /*T_PI*/) { raise(kNotSupported); }

}  // namespace kiv
