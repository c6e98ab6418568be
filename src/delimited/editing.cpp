// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

String Cl_KIV::PutPipeStr(const String& /*Row*/, Integer /*Pos*/, const String& /*NewStr*/, const String& /*Sep*/) { raise(kNotSupported); }
String Cl_KIV::SostPipeStr(const String& /*Row*/, Ref<Integer> /*Pos*/, const String& /*NewStr*/, const String& /*Sep*/) { raise(kNotSupported); }
String Cl_KIV::PipeSost(const String& /*T_Row*/, Integer /*Pos*/, const String& /*NewStr*/, const String& /*Sep*/, Boolean /*NoChangeWidth*/) { raise(kNotSupported); }

}  // namespace kiv
