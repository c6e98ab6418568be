// Reads codici fiscali one per line and counts those Is_CFTest accepts as
// personal codes: the C++ half of bench/peer_stdnum.sh.
#include <cstdio>
#include <iostream>
#include <string>

#include "frame/cl_kiv.hpp"

int main() {
    std::ios::sync_with_stdio(false);
    kiv::Cl_KIV kiv;
    std::string line;
    long valid = 0;
    kiv::String code;
    const auto personal = kiv.Is_CFTest(u"RSSMRA80A01H501U");
    while (std::getline(std::cin, line)) {
        code.assign(line.begin(), line.end());
        valid += kiv.Is_CFTest(code) == personal;
    }
    std::printf("%ld\n", valid);
}
