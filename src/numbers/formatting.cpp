// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::FmtNum(const Variant& /*N*/, Integer /*Lun*/, Integer /*Dec*/, Ref<Boolean> /*Fl_Mig*/, const String& /*Fill_Num*/, Integer /*MaxEndingZeros*/) { raise(kNotSupported); }
String Cl_KIV::FmtNumOld(const Variant& /*N*/, Integer /*Lun*/, Integer /*Dec*/, Ref<Boolean> /*Fl_Mig*/, const String& /*Fill_Num*/) { raise(kNotSupported); }
String Cl_KIV::NoVirg(const Variant& /*N*/, Integer /*Lun*/, Integer /*Dec*/) { raise(kNotSupported); }
String Cl_KIV::FmtTag(const String& /*Txt*/, Ref<Variant> /*Lun*/, const String& /*Tag*/, Boolean /*Trimmed*/) { raise(kNotSupported); }
String Cl_KIV::FmtZero(const Variant& /*T_Tag*/) { raise(kNotSupported); }
String Cl_KIV::Perc2Str(Ref<Variant> /*Perc*/, Ref<Integer> /*LStr*/, Ref<String> /*SStr*/) { raise(kNotSupported); }

}  // namespace kiv
