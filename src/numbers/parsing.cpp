// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

Double Cl_KIV::Str2Num(const Variant& /*S*/) { raise(kNotSupported); }
Double Cl_KIV::ToNumber(const Variant& /*S*/) { raise(kNotSupported); }
Double Cl_KIV::Space2Dbl(const Variant& /*Txt*/) { raise(kNotSupported); }
Double Cl_KIV::Blank20(const String& /*S*/) { raise(kNotSupported); }
String Cl_KIV::InvPunt(const String& /*N*/) { raise(kNotSupported); }
Boolean Cl_KIV::ToBoolean(const Variant& /*T_Val*/) { raise(kNotSupported); }
Long Cl_KIV::Ceil(const Variant& /*N*/) { raise(kNotSupported); }
Long Cl_KIV::UnCeil(const Variant& /*N*/) { raise(kNotSupported); }
Double Cl_KIV::Min(const Variant& /*a*/, const Variant& /*B*/) { raise(kNotSupported); }
Variant Cl_KIV::Minim(const Variant& /*a*/, const Variant& /*B*/) { raise(kNotSupported); }
Variant Cl_KIV::Maxim(const Variant& /*a*/, const Variant& /*B*/) { raise(kNotSupported); }
void Cl_KIV::Incr(Ref<Variant> /*NumVar*/, Double /*QtaIncr*/) { raise(kNotSupported); }
void Cl_KIV::Decr(Ref<Variant> /*NumVar*/, Double /*QtaDecr*/) { raise(kNotSupported); }
Double Cl_KIV::Log10(const Variant& /*X*/) { raise(kNotSupported); }

}  // namespace kiv
