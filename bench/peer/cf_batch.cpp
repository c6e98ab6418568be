// Reads codici fiscali one per line and counts those Is_CFTest accepts as
// personal codes: the C++ half of bench/peer_stdnum.sh. The input is read
// in large blocks and each whole line handed to Is_CFTest as it stands;
// every code is checked by the component itself.
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "frame/cl_kiv.hpp"

int main() {
    kiv::Cl_KIV kiv;
    const auto personal = kiv.Is_CFTest(u"RSSMRA80A01H501U");
    long valid = 0;
    kiv::String code;
    const auto check = [&](const char* first, const char* last) {
        code.assign(first, last);
        valid += kiv.Is_CFTest(code) == personal;
    };

    static char block[1 << 16];
    std::size_t kept = 0;  // the start of a line the last block cut
    for (ssize_t n; (n = read(0, block + kept, sizeof block - kept)) > 0;) {
        const char* p = block;
        const char* end = block + kept + n;
        for (const char* nl; (nl = static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(end - p))));
             p = nl + 1)
            check(p, nl);
        kept = static_cast<std::size_t>(end - p);
        std::memmove(block, p, kept);
    }
    if (kept > 0) check(block, block + kept);  // a last line without its newline
    std::printf("%ld\n", valid);
}
