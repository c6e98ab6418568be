// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::Get_CheckCF(const String& /*T_Cf*/) { raise(kNotSupported); }
EnCF_Result Cl_KIV::Is_CFTest(const String& /*T_Cf*/) { raise(kNotSupported); }
Boolean Cl_KIV::Is_CodFisc(const String& /*S_CF*/, Boolean /*StrongAlfa*/) { raise(kNotSupported); }
Boolean Cl_KIV::Is_CFAlfa(const String& /*T_Cf*/) { raise(kNotSupported); }

}  // namespace kiv
