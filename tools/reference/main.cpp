// kiv_reference SOURCE: prints docs/reference.md from the dispatch tables,
// with the subject headings of the interface table's source file SOURCE.
#include <fstream>
#include <iostream>
#include <sstream>

#include "reference.hpp"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: kiv_reference src/frame/interface_table.cpp\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    if (!in) {
        std::cerr << "kiv_reference: cannot read " << argv[1] << "\n";
        return 2;
    }
    std::ostringstream source;
    source << in.rdbuf();
    std::cout << kiv::script::ReferenceMarkdown(kiv::script::SubjectsOfTableSource(source.str()));
    return 0;
}
