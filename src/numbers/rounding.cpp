// Not written yet: every member raises until its subject is done.
#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace kiv {

Double Cl_KIV::Arrot(Double /*Num*/, Double /*Approx*/) { raise(kNotSupported); }
Double Cl_KIV::Arrot_Ecc(Double /*Num*/, Double /*Approx*/) { raise(kNotSupported); }
Double Cl_KIV::Arrot_Dif(Double /*Num*/, Double /*Approx*/) { raise(kNotSupported); }
Double Cl_KIV::Arrot_Fis(Double /*Num*/, Double /*Approx*/) { raise(kNotSupported); }
Double Cl_KIV::PrzScontato(Double /*Prz*/, Double /*Sc1*/, Double /*Sc2*/) { raise(kNotSupported); }
Double Cl_KIV::ScorpIVA(Double /*Impo*/, Double /*Perc*/, Integer /*ArroDec*/) { raise(kNotSupported); }
Double Cl_KIV::EstraiIVA(Double /*Tot*/, Double /*Perc*/, Ref<Integer> /*ArroDec*/) { raise(kNotSupported); }
Double Cl_KIV::CalcIVA(Double /*Impo*/, Single /*Perc*/, Integer /*ArroDec*/) { raise(kNotSupported); }

}  // namespace kiv
