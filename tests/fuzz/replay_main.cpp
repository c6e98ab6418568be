// A main for the fuzz targets without libFuzzer: runs the target once on
// every file of the folders (or files) it is given, so that the seed corpus
// and its regression cases run in every test build, sanitizers included.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i) {
        if (std::filesystem::is_directory(argv[i])) {
            for (const auto& e : std::filesystem::directory_iterator(argv[i]))
                if (e.is_regular_file()) inputs.push_back(std::filesystem::absolute(e.path()));
        } else {
            inputs.emplace_back(std::filesystem::absolute(argv[i]));
        }
    }
    // Read before the target's start, which may change the current folder.
    if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
    for (const auto& input : inputs) {
        std::ifstream in(input, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    return inputs.empty() ? 1 : 0;
}
