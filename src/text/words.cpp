// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

Long Cl_KIV::ParseWord(const Variant& /*S0*/, Ref<VariantArray> /*Wd*/, Ref<VariantArray> /*Pos*/) { raise(kNotSupported); }
String Cl_KIV::AddSpace(const Variant& /*S0*/, const Variant& /*Spac*/) { raise(kNotSupported); }
String Cl_KIV::AddStop(const Variant& /*S0*/) { raise(kNotSupported); }
String Cl_KIV::Giustif(const Variant& /*S0*/, const Variant& /*Wide0*/, Boolean /*AlsoStop*/) { raise(kNotSupported); }
void Cl_KIV::SplitRows(const String& /*S_Long*/, Ref<StringArray> /*S_Rows*/, Integer /*R_Long*/, Integer /*N_Rows*/, Boolean /*ConserveWord*/) { raise(kNotSupported); }

}  // namespace kiv
