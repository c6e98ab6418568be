// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::Num2Mes(Integer /*NuMes*/) { raise(kNotSupported); }
Integer Cl_KIV::Mese2Num(const String& /*p_Mese*/) { raise(kNotSupported); }
String Cl_KIV::Date2WikDay(const Variant& /*v_Data*/) { raise(kNotSupported); }
String Cl_KIV::HeadPrtDate(const String& /*Hed*/, Long /*NPage*/) { raise(kNotSupported); }

}  // namespace kiv
