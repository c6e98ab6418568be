// Where the lines a script prints go: straight to standard output, or
// collected per statement so that `kiv check` can compare them.
#pragma once

#include <string>
#include <vector>

namespace kiv::script {

class Output {
public:
    // Collecting: lines are kept in `lines` instead of being written.
    bool collect = false;
    std::vector<std::string> lines;

    void line(const std::string& text);

    // Written before the next line, if one comes (--echo: the statement that printed).
    std::string pending;
};

}  // namespace kiv::script
