// Amounts rounded to a step, cascaded discounts and Italian VAT.
#include <cmath>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

// A Double result beyond the type's range is the overflow error, never an
// infinity handed to the host.
Double Checked(Double value) {
    if (!std::isfinite(value)) Raise(kOverflow);
    return value;
}

// The shared frame: the floor multiple of Approx, plus one step when the
// fraction of a step left over passes the operation's test.
template <class StepUp>
Double RoundToStep(Double Num, Double Approx, StepUp stepUp) {
    if (Approx == 0) return Num;
    const Double q = Checked(Num / Approx);
    const Double I = IntFloor(q);
    const Double f = q - I;
    const Double u = stepUp(f) ? 1 : 0;
    return Checked(I * Approx + u * Approx);
}

// Amount / (Perc + 100): a VAT rate of -100 is a division by zero.
Double PerHundredOfGross(Double amount, Double Perc) {
    const Double divisor = Perc + 100;
    if (divisor == 0) Raise(kDivisionByZero);
    return Checked(Checked(amount / divisor) * 100);
}

}  // namespace

Double Cl_KIV::Arrot(Double Num, Double Approx) {
    // A half goes down, towards the lower multiple, also for negatives.
    return RoundToStep(Num, Approx, [](Double f) { return f > 0.5; });
}

Double Cl_KIV::Arrot_Ecc(Double Num, Double Approx) {
    return RoundToStep(Num, Approx, [](Double f) { return f > 0; });
}

Double Cl_KIV::Arrot_Dif(Double Num, Double Approx) {
    // The floor multiple, except for a tiny negative: its fraction (1 less a tiny
    // amount) rounds to 1 in Doubles, and then the step is taken.
    return RoundToStep(Num, Approx, [](Double f) { return f == 1; });
}

Double Cl_KIV::Arrot_Fis(Double Num, Double Approx) {
    // A millionth of a step of tolerance, so that 2.4999999 is a half.
    return RoundToStep(Num, Approx, [](Double f) { return f + 0.000001 >= 0.5; });
}

Double Cl_KIV::PrzScontato(Double Prz, Double Sc1, Double Sc2) {
    Double R = Prz;
    if (Sc1 != 0) R = Checked(Checked(100 - Sc1) * R) / 100;
    if (Sc2 != 0) R = Checked(Checked(100 - Sc2) * R) / 100;
    return R;
}

Double Cl_KIV::ScorpIVA(Double Impo, Double Perc, Integer ArroDec) {
    Integer d = ArroDec;
    const bool excess = d < 0;  // a negative count asks for the excess rule
    if (excess) d = CheckedInteger(-static_cast<std::int64_t>(d));
    Double net = RoundHalfEven(PerHundredOfGross(Impo, Perc), d);
    if (excess) {
        // The net plus its VAT must never fall short of the gross.
        const Double gross = RoundHalfEven(Checked((Perc + 100) * net) / 100, d);
        if (gross < Impo) net = net + std::pow(10.0, -d);
    }
    return net;
}

Double Cl_KIV::EstraiIVA(Double Tot, Double Perc, Ref<Integer> ArroDec) {
    const Double net = PerHundredOfGross(Tot, Perc);
    if (*ArroDec < 0) *ArroDec = 0;
    return RoundHalfEven(Tot - net, *ArroDec);
}

Double Cl_KIV::CalcIVA(Double Impo, Single Perc, Integer ArroDec) {
    const Double V = Checked(static_cast<Double>(Perc) * Impo) / 100;
    Double R = RoundHalfEven(V, ArroDec);
    if (R < V) {
        // Halves up on the decimal digits: look at the digit of V's text just
        // after R's text. When R's text lost trailing zeros this is not the
        // first dropped digit; that is how amounts were always computed.
        const String v = NumberText(V);
        const String r = NumberText(R);
        const String c = Mid(v, static_cast<Long>(r.size()) + 1, 1);
        if (!c.empty() && c >= u"5") R = R + 1 / std::pow(10.0, ArroDec);
    }
    return RoundHalfEven(R, ArroDec);
}

}  // namespace kiv
