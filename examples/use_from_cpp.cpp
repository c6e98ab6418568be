// Calling the component from C++: directly, as members of Cl_KIV, and
// late-bound, by name with Variant arguments, as an automation host does.
#include <iostream>

#include <kiv/kiv.hpp>

int main() {
    kiv::Cl_KIV k;

    // Directly: typed parameters; text is UTF-16 (kiv::String).
    std::cout << "[" << kiv::ToUtf8(k.FmtNum(1234.5, 10, 2, true)) << "]\n";
    // A by-reference parameter takes the caller's variable and changes it.
    kiv::Variant count = kiv::Long{41};
    k.Incr(count);
    std::cout << kiv::ToUtf8(kiv::ToText(count)) << "\n";

    // Late-bound: the member found by name, arguments by position or by
    // name; omitted optional ones take their defaults.
    const kiv::Member* fmtNum = kiv::FindMember("fmtnum");
    kiv::Variant number = 1234.5, width = kiv::Integer{10}, decimals = kiv::Integer{2}, marks = true;
    kiv::Arguments args;
    args.positional = {&number, &width, &decimals};
    args.named = {{"Fl_Mig", &marks}};
    std::cout << kiv::Signature(*fmtNum) << "\n";
    std::cout << "[" << kiv::ToUtf8(kiv::ToText(kiv::Invoke(k, *fmtNum, kiv::InvokeKind::Method, args))) << "]\n";
    // By reference late-bound too: Incr writes back into `count`.
    kiv::Variant step = 0.5;
    kiv::Arguments incr;
    incr.positional = {&count, &step};
    k.invoke("Incr", kiv::InvokeKind::Method, incr);
    std::cout << kiv::ToUtf8(kiv::ToText(count)) << "\n";

    // Run-time errors are exceptions carrying the number a host sees.
    try {
        kiv::Arguments none;
        k.invoke("FmtNumm", kiv::InvokeKind::Method, none);
    } catch (const kiv::RuntimeError& e) {
        std::cout << "Error " << e.number() << ": " << e.description() << "\n";
    }
    return 0;
}
