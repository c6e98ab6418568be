// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::SostChar(const String& /*S*/, const String& /*C1*/, const String& /*C2*/) { raise(kNotSupported); }
Variant Cl_KIV::SostWord(const Variant& /*Str_0*/, const String& /*Str_Find*/, const String& /*Str_Repl*/, Integer /*StartOccur*/, Integer /*MaxOccur*/) { raise(kNotSupported); }
String Cl_KIV::SostLoChar(const String& /*S*/, const String& /*Nuovo*/) { raise(kNotSupported); }
String Cl_KIV::SostHiChar(const String& /*S*/, const String& /*Nuovo*/) { raise(kNotSupported); }
String Cl_KIV::Apo_No(const String& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Yes(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Fix(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::Apo_Dup(const Variant& /*S*/) { raise(kNotSupported); }
String Cl_KIV::NoChar(const String& /*S*/, const String& /*Caz*/) { raise(kNotSupported); }
String Cl_KIV::NoPunt(const String& /*S*/) { raise(kNotSupported); }
String Cl_KIV::NoTrail(Ref<String> /*a*/) { raise(kNotSupported); }
String Cl_KIV::CompSpac(const Variant& /*a*/) { raise(kNotSupported); }
String Cl_KIV::FixAmper(const String& /*Si*/) { raise(kNotSupported); }
String Cl_KIV::Capital(const String& /*S*/, Boolean /*SingleWords*/) { raise(kNotSupported); }
Integer Cl_KIV::UpAscii(Integer /*a*/) { raise(kNotSupported); }
Integer Cl_KIV::LoAscii(Integer /*a*/) { raise(kNotSupported); }
String Cl_KIV::SoloCifre(const String& /*T_Str*/) { raise(kNotSupported); }
String Cl_KIV::Lettere(const String& /*S_0*/) { raise(kNotSupported); }
String Cl_KIV::Numeri(const String& /*S_0*/) { raise(kNotSupported); }
String Cl_KIV::LastWord(const String& /*Lin*/) { raise(kNotSupported); }
String Cl_KIV::InvStr(const Variant& /*S*/) { raise(kNotSupported); }

}  // namespace kiv
