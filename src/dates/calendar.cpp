// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::IniMese(const Variant& /*Data*/) { raise(kNotSupported); }
String Cl_KIV::FinMese(const Variant& /*Data*/) { raise(kNotSupported); }
String Cl_KIV::IniAnno(const Variant& /*Data*/) { raise(kNotSupported); }
String Cl_KIV::FinAnno(const Variant& /*Data*/) { raise(kNotSupported); }
Boolean Cl_KIV::IsFineMese(const Variant& /*Giorno*/) { raise(kNotSupported); }
Boolean Cl_KIV::Is_FineMese(Ref<Date> /*Gior*/) { raise(kNotSupported); }
Boolean Cl_KIV::Is_IniMese(Ref<Date> /*Gior*/) { raise(kNotSupported); }
Integer Cl_KIV::GiorniAFineMese(Date /*Oggi*/) { raise(kNotSupported); }
String Cl_KIV::AddMesi(const Variant& /*Data*/, Integer /*N_Mesi*/) { raise(kNotSupported); }
Long Cl_KIV::ContaMesi(Date /*Dat_Ini*/, Date /*Dat_Fin*/) { raise(kNotSupported); }
Long Cl_KIV::Dat_Diff(const String& /*Dat_Prima*/, const String& /*Dat_Dopo*/) { raise(kNotSupported); }
Integer Cl_KIV::DOW(const Variant& /*Data*/) { raise(kNotSupported); }
String Cl_KIV::Date2Lun(const Variant& /*Data*/) { raise(kNotSupported); }
String Cl_KIV::Date2Dom(const Variant& /*Data*/) { raise(kNotSupported); }

}  // namespace kiv
