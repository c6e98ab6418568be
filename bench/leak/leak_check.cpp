// Leak check of the benchmarked operations: each is called a million times
// (the file and store operations fewer, as stated in the table), and the
// heap in use (malloc's count, so SQLite's allocations too) after the first
// 10% of the calls is compared with the heap after all of them. Growth past
// a few pages fails the run. Also prints the peak resident size at the end.
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/dispatch.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_platform.hpp"
#include "system/posix/posix_profile_files.hpp"

namespace {

using namespace kiv;

std::size_t HeapInUse() {
    const struct mallinfo2 m = mallinfo2();
    return m.uordblks + m.hblkhd;
}

long ResidentKiB() {
    long pages = 0, resident = 0;
    if (std::FILE* f = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(f);
    }
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

struct Check {
    const char* name;
    long calls;
    std::function<void(long)> call;  // the i-th call
};

volatile std::size_t sink;  // keeps the results alive
void Keep(const String& s) { sink = sink + s.size(); }
void Keep(const Variant& v) { sink = sink + static_cast<std::size_t>(v.type()); }
template <class T>
void Keep(const T& v) { sink = sink + static_cast<std::size_t>(v); }

}  // namespace

int main() {
    namespace fs = std::filesystem;
    std::string pattern = (fs::temp_directory_path() / "kiv-leak-XXXXXX").string();
    const fs::path folder = mkdtemp(pattern.data());
    {
        std::ofstream ini(folder / "f.ini", std::ios::binary);
        for (int n = 0; n < 10; ++n) ini << (n == 0 ? "[Section0]\r\n" : "Key" + std::to_string(n) + "=value\r\n");
    }
    PlatformSettings settings = PlatformSettings::fromEnvironment();
    settings.drives['C'] = folder.string();
    settings.registryFolder = folder.string();
    InstallPlatform(std::make_shared<PosixPlatform>(settings));

    int failures = 0;
    {
        Cl_KIV k;
        const Variant amount(1234.5);
        const String record = u"alfa|beta|gamma|delta|epsilon|zeta|eta|theta|iota|kappa";
        const Member* fmtNum = FindMember("FmtNum");
        Variant n(1234.5), lun(Integer{10}), dec(Integer{2});
        Arguments args;
        args.positional = {&n, &lun, &dec};
        const Long hklm = static_cast<Long>(0x80000002u);
        k.SetZRReg(Variant(u"Leak"), Variant(u"Opzioni"), u"Valore", Variant(u"C:\\Archivi"), ZRReg_String);
        const auto profiles = MakePosixProfileFiles(CurrentPlatform().settings(), false);

        const long M = 1'000'000;
        const std::vector<Check> checks = {
            {"FmtNum direct", M, [&](long) { Keep(k.FmtNum(amount, 10, 2)); }},
            {"FmtNum with marks", M, [&](long) { Keep(k.FmtNum(amount, 10, 2, true)); }},
            {"FmtNum late-bound", M, [&](long) { Keep(Invoke(k, *fmtNum, InvokeKind::Method, args)); }},
            {"FmtNum late-bound by name", M, [&](long) { Keep(k.invoke("FmtNum", InvokeKind::Method, args)); }},
            {"ToNumber", M, [&](long) { Keep(k.ToNumber(Variant(u"12,5 kg"))); }},
            {"CalcIVA", M, [&](long) { Keep(k.CalcIVA(10.25, 22.0f)); }},
            {"GetPipeStr", M, [&](long i) { Keep(k.GetPipeStr(record, static_cast<Integer>(1 + i % 10))); }},
            {"PipeCount", M, [&](long) { Keep(k.PipeCount(record)); }},
            {"Is_CFTest", M, [&](long i) { Keep(k.Is_CFTest(i % 2 ? u"RSSMRA80A01H501U" : u"RSSMRA80A01H501X")); }},
            {"Is_PITest", M, [&](long) { Keep(k.Is_PITest(u"01234567897")); }},
            {"BCheck_EAN", M, [&](long) { Keep(k.BCheck_EAN(u"800123456789")); }},
            {"SostChar", M, [&](long) { Keep(k.SostChar(u"Rossi, Mario. 12", u" ,.", u"")); }},
            {"SostWord", M, [&](long) { Keep(k.SostWord(Variant(u"a x b x c"), u"x", u"yy")); }},
            {"Apo_Dup", M, [&](long) { Keep(k.Apo_Dup(u"l'anno dell'altro")); }},
            {"AddSpace", M, [&](long) { Keep(k.AddSpace(u"a b c", 20)); }},
            {"PutPipeStr", M, [&](long i) { Keep(k.PutPipeStr(record, static_cast<Integer>(1 + i % 3), u"NEW")); }},
            {"PipeQuale", M, [&](long) { Keep(k.PipeQuale(record, u"eta")); }},
            {"PipeSost", M, [&](long) { Keep(k.PipeSost(record, 3, u"X")); }},
            {"PipeInStrPos", M, [&](long) { Keep(k.PipeInStrPos(record, u"g")); }},
            {"LOADPrivateString", 200'000, [&](long) { Keep(k.LOADPrivateString(u"Section0", u"Key9", u"", u"C:\\f.ini")); }},
            {"INI write, unflushed", 20'000,
             [&](long i) { Keep(profiles->writeString(u"Section0", u"Key9", i % 2 ? u"one" : u"two", u"C:\\f.ini")); }},
            {"GetRegistryValue", 200'000,
             [&](long) { Keep(k.GetRegistryValue(hklm, u"SOFTWARE\\KORVANE_Lidmar\\Leak\\Opzioni", u"Valore")); }},
            {"SetZRReg", 2'000,
             [&](long i) {
                 Keep(k.SetZRReg(Variant(u"Leak"), Variant(u"Opzioni"), u"Ultimo", Variant(i % 2 ? u"a" : u"b"),
                                 ZRReg_String));
             }},
        };
        std::printf("%-28s %9s %14s %14s %9s %9s %7s\n", "operation", "calls", "heap at 10%", "heap at end", "RSS 10%",
                    "RSS end", "errors");
        for (const Check& c : checks) {
            long errors = 0;  // a run-time error is an answer too, and must not leak either
            const auto run = [&](long from, long to) {
                for (long i = from; i < to; ++i) {
                    try {
                        c.call(i);
                    } catch (const RuntimeError&) {
                        ++errors;
                    }
                }
            };
            const long first = c.calls / 10;
            run(0, first);
            const std::size_t heap0 = HeapInUse();
            const long rss0 = ResidentKiB();
            run(first, c.calls);
            const std::size_t heap1 = HeapInUse();
            const long rss1 = ResidentKiB();
            // A few pages of slack: caches that settle (SQLite's page cache) are not leaks.
            const bool grew = heap1 > heap0 + 16 * 1024;
            failures += grew;
            std::printf("%-28s %9ld %12zu B %12zu B %5ld KiB %5ld KiB %7ld%s\n", c.name, c.calls, heap0, heap1, rss0,
                        rss1, errors, grew ? "  GROWS" : "");
            std::fflush(stdout);
        }
    }
    InstallPlatform(MakeSystemPlatform(PlatformSettings::fromEnvironment()));
    fs::remove_all(folder);
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("peak resident size: %ld KiB\n%s\n", usage.ru_maxrss, failures ? "leak check: FAILED" : "leak check: no growth");
    return failures ? 1 : 0;
}
