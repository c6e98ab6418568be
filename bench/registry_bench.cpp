// The settings store as a host uses it: reading a setting that exists (what
// GetZRReg does, without its trace: GetRegistryValue) and saving a text
// setting with SetZRReg, each write committed on its own. Goals: a read
// under 20 microseconds, a write under 2 milliseconds.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>

#include "frame/cl_kiv.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_platform.hpp"

namespace {

using namespace kiv;

// A store of its own in a temporary folder, with a few hundred settings.
class BenchStore {
public:
    BenchStore() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kivbench-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        PlatformSettings s = PlatformSettings::fromEnvironment();
        s.registryFolder = folder_.string();
        InstallPlatform(std::make_shared<PosixPlatform>(s));
        Cl_KIV k;
        for (int i = 0; i < 300; ++i)
            k.SetZRReg(Variant(u"Bench"), Variant(u"Opzioni"), u"Valore" + std::u16string(1, char16_t(u'A' + i % 26)) +
                           FromIndex(i), Variant(u"C:\\Programmi\\Ditta\\Archivi"), ZRReg_String);
    }
    ~BenchStore() {
        InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
        std::filesystem::remove_all(folder_);
    }

private:
    static String FromIndex(int i) {
        String s;
        for (char c : std::to_string(i)) s += static_cast<char16_t>(c);
        return s;
    }
    std::filesystem::path folder_;
};

void BM_ReadSetting(benchmark::State& state) {
    BenchStore store;
    Cl_KIV k;
    const Long hklm = static_cast<Long>(0x80000002u);
    const String key = u"SOFTWARE\\KORVANE_Lidmar\\Bench\\Opzioni";
    for (auto _ : state) benchmark::DoNotOptimize(k.GetRegistryValue(hklm, key, u"ValoreK10"));
}
BENCHMARK(BM_ReadSetting)->Unit(benchmark::kMicrosecond);

void BM_SaveSetting(benchmark::State& state) {
    BenchStore store;
    Cl_KIV k;
    long n = 0;
    for (auto _ : state) {
        const Variant value(String(u"Archivio ") + static_cast<char16_t>(u'0' + n++ % 10));
        benchmark::DoNotOptimize(k.SetZRReg(Variant(u"Bench"), Variant(u"Opzioni"), u"Ultimo", value, ZRReg_String));
    }
}
BENCHMARK(BM_SaveSetting)->Unit(benchmark::kMicrosecond);

}  // namespace
