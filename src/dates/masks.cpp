// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::FormattaData(const Variant& /*sData*/) { raise(kNotSupported); }
String Cl_KIV::FmtData(Integer /*dd*/, Integer /*mm*/, Integer /*yy*/) { raise(kNotSupported); }
String Cl_KIV::Cal2Dat(Integer /*d*/, Integer /*M*/, Integer /*Y*/) { raise(kNotSupported); }
String Cl_KIV::Date2Mask(const Variant& /*Data*/) { raise(kNotSupported); }
Double Cl_KIV::Date20(Ref<Variant> /*S*/) { raise(kNotSupported); }
String Cl_KIV::Zero2Date(const Variant& /*Zz*/) { raise(kNotSupported); }
String Cl_KIV::Zero2DateBl(const Variant& /*Zz*/) { raise(kNotSupported); }
Long Cl_KIV::Msk2Date(const String& /*Msk*/) { raise(kNotSupported); }
Long Cl_KIV::Msk2Dat(const String& /*Msk*/) { raise(kNotSupported); }
String Cl_KIV::Msk2Str(const String& /*Msk*/) { raise(kNotSupported); }
Date Cl_KIV::Msk2VarDate(const String& /*Msk_0*/) { raise(kNotSupported); }
Integer Cl_KIV::Msk2Day(const String& /*Msk*/) { raise(kNotSupported); }
Integer Cl_KIV::Msk2Mon(const String& /*Msk*/) { raise(kNotSupported); }
Integer Cl_KIV::Msk2Yea(const String& /*Msk*/) { raise(kNotSupported); }
String Cl_KIV::GbDate(const String& /*sData*/) { raise(kNotSupported); }
String Cl_KIV::Date2Sort(const Variant& /*Data*/, const String& /*Sep*/) { raise(kNotSupported); }
String Cl_KIV::Dat2Str(Date /*Dat_*/) { raise(kNotSupported); }
String Cl_KIV::Dat2ANSI(Date /*Dat_*/) { raise(kNotSupported); }
String Cl_KIV::Dat2ANSIFull(Date /*Dat_*/) { raise(kNotSupported); }
Date Cl_KIV::ToDate(const String& /*cData*/, Date /*Defau*/) { raise(kNotSupported); }

String Cl_KIV::NormalizeDateText(Ref<Variant> /*X*/) { raise(kNotSupported); }

}  // namespace kiv
