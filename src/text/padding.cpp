// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

void Cl_KIV::AllineaDxSpazi(Ref<String> /*Record*/, const String& /*fill*/) { raise(kNotSupported); }
String Cl_KIV::AllineaDxZeri(Integer /*LenCod*/, const String& /*fill*/) { raise(kNotSupported); }
void Cl_KIV::AllineaSinZeri(Ref<String> /*stringa*/, Integer /*Pos*/) { raise(kNotSupported); }
String Cl_KIV::PoniADes(const String& /*S*/, Integer /*N*/) { raise(kNotSupported); }
String Cl_KIV::PoniASin(const String& /*S*/, Integer /*N*/) { raise(kNotSupported); }
String Cl_KIV::Allunga(const String& /*S*/, Integer /*B*/, const String& /*C*/) { raise(kNotSupported); }
String Cl_KIV::MettiADes(Ref<Variant> /*S*/, Integer /*N*/, const String& /*Filler*/) { raise(kNotSupported); }
String Cl_KIV::MettiASin(Ref<Variant> /*S*/, Integer /*N*/, const String& /*Filler*/) { raise(kNotSupported); }
String Cl_KIV::MettiInCentro(Ref<Variant> /*S*/, Integer /*N*/, const String& /*Filler*/, Boolean /*NoTrim*/) { raise(kNotSupported); }
String Cl_KIV::Cntr(const String& /*S*/, Integer /*N*/) { raise(kNotSupported); }
String Cl_KIV::Repl(Integer /*Volte*/, const String& /*Frase*/) { raise(kNotSupported); }
String Cl_KIV::StrInsert(const String& /*S_Long*/, const String& /*S_Short*/, Integer /*C_Pos*/, Boolean /*B_Trim*/) { raise(kNotSupported); }
String Cl_KIV::STR_Trunc(const String& /*S*/, Integer /*NCharToCut*/) { raise(kNotSupported); }

}  // namespace kiv
