// Run by the build: describes every dispatchable class once, so that two
// members sharing an id or a name (refused by ClassInfo) fail the build
// rather than a host's call. Parameter counts are checked by the compiler.
#include <cstdio>
#include <exception>

#include "frame/dispatch.hpp"

int main() {
    try {
        std::size_t members = 0;
        for (const kiv::ClassInfo* c : kiv::CreatableClasses()) members += c->members.size();
        std::printf("interface: %zu classes, %zu members\n", kiv::CreatableClasses().size(), members);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "interface: %s\n", e.what());
        return 1;
    }
}
