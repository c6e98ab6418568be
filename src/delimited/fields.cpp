// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::GetPipeStr(const String& /*T_Row*/, Integer /*Pos*/, const String& /*Sep*/, Boolean /*Trimmed*/) { raise(kNotSupported); }
Double Cl_KIV::GetPipeNumber(const String& /*T_Row*/, Integer /*Pos*/, const String& /*Sep*/) { raise(kNotSupported); }
Long Cl_KIV::PipeBegin(const String& /*T_Row*/, Integer /*Pos*/, const String& /*Sep*/) { raise(kNotSupported); }
Long Cl_KIV::PipeEnd(const String& /*T_Row*/, Integer /*Pos*/, const String& /*Sep*/) { raise(kNotSupported); }
Variant Cl_KIV::PipeDove(const String& /*S_Base*/, Integer /*N_Pos*/, const String& /*Sep*/) { raise(kNotSupported); }
Long Cl_KIV::PipeCount(const String& /*S_Base*/, const String& /*Sep*/) { raise(kNotSupported); }
Long Cl_KIV::PipeQuale(const String& /*S_Base*/, const String& /*S_Cerca*/, const String& /*Sep*/, Boolean /*B_Trim*/) { raise(kNotSupported); }
Long Cl_KIV::PipeInStrPos(const String& /*S_Base*/, const String& /*S_Cerca*/, const String& /*Sep*/, Long /*InStart*/) { raise(kNotSupported); }

}  // namespace kiv
