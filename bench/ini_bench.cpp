// One INI setting read and written, as a host's form does on opening and
// closing: a key near the end of a 1,000-line file and of a 10-line one.
// Writes with the flush to disk (as the component does) and without it, so
// the cost of safety shows. Goals for the 1,000-line file: a read under
// 50 us, a write with flush under 1 ms. The files live in the temporary
// folder, on this machine's disk.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "frame/cl_kiv.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_profile_files.hpp"

namespace {

namespace fs = std::filesystem;
using kiv::String;

// A drive C: in the temporary folder holding a file of `lines` lines:
// sections of 20 lines (a header and 19 keys).
struct Drive {
    explicit Drive(int lines) {
        folder = fs::temp_directory_path() / ("kiv_ini_bench_" + std::to_string(::getpid()));
        fs::create_directories(folder);
        std::ofstream out(folder / ("f" + std::to_string(lines) + ".ini"), std::ios::binary | std::ios::trunc);
        for (int n = 0; n < lines; ++n) {
            if (n % 20 == 0) out << "[Section" << n / 20 << "]\r\n";
            else out << "Key" << n % 20 << "=some value " << n << "\r\n";
        }
        kiv::PlatformSettings settings;
        settings.drives['C'] = folder.string();
        kiv::InstallPlatform(kiv::MakeSystemPlatform(settings));
        const std::string name = "C:\\f" + std::to_string(lines) + ".ini";
        file = String(name.begin(), name.end());
        const std::string s = "Section" + std::to_string((lines - 1) / 20);
        section = String(s.begin(), s.end());
    }
    ~Drive() { fs::remove_all(folder); }

    fs::path folder;
    String file, section;
};

void ReadKey(benchmark::State& state) {
    const Drive drive(static_cast<int>(state.range(0)));
    kiv::Cl_KIV kiv;
    for (auto _ : state) benchmark::DoNotOptimize(kiv.LOADPrivateString(drive.section, u"Key9", u"", drive.file));
}

void WriteKey(benchmark::State& state) {
    const Drive drive(static_cast<int>(state.range(0)));
    const auto seam = kiv::MakePosixProfileFiles(kiv::CurrentPlatform().settings(), state.range(1) != 0);
    bool flip = false;
    for (auto _ : state) {
        // A changed value each time, so every write replaces the file.
        flip = !flip;
        if (seam->writeString(drive.section, String(u"Key9"), String(flip ? u"one" : u"two"), drive.file) != 1)
            state.SkipWithError("write failed");
    }
}

BENCHMARK(ReadKey)->ArgName("lines")->Arg(1000)->Arg(10)->Unit(benchmark::kMicrosecond);
BENCHMARK(WriteKey)->ArgNames({"lines", "flush"})->Args({1000, 1})->Args({1000, 0})->Args({10, 1})->Args({10, 0})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
