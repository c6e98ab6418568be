// Number formatting, parsing and VAT: FmtNum called directly and late-bound
// through the dispatch table, against a baseline that produces the same text
// with std::to_chars and hand padding.
#include <benchmark/benchmark.h>

#include <charconv>

#include "frame/cl_kiv.hpp"
#include "frame/dispatch.hpp"

namespace {

using kiv::Integer;
using kiv::String;
using kiv::Variant;

// The amount and layout every FmtNum benchmark formats: "   1234,50".
constexpr double kAmount = 1234.5;
constexpr Integer kWidth = 10;
constexpr Integer kDecimals = 2;

void BM_Baseline_ToChars(benchmark::State& state) {
    double x = kAmount;
    benchmark::DoNotOptimize(x);
    for (auto _ : state) {
        char digits[64];
        const auto end = std::to_chars(digits, digits + sizeof digits, x, std::chars_format::fixed, kDecimals).ptr;
        const auto n = static_cast<std::size_t>(end - digits);
        String out(n < static_cast<std::size_t>(kWidth) ? kWidth - n : 0, u' ');
        for (const char* p = digits; p != end; ++p) out += *p == '.' ? u',' : static_cast<char16_t>(*p);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(BM_Baseline_ToChars);

void BM_FmtNum_Direct(benchmark::State& state) {
    kiv::Cl_KIV obj;
    const Variant n(kAmount);
    for (auto _ : state) benchmark::DoNotOptimize(obj.FmtNum(n, kWidth, kDecimals));
}
BENCHMARK(BM_FmtNum_Direct);

void BM_FmtNum_DirectWithMarks(benchmark::State& state) {
    kiv::Cl_KIV obj;
    const Variant n(kAmount);
    for (auto _ : state) {
        kiv::Boolean marks = true;
        benchmark::DoNotOptimize(obj.FmtNum(n, kWidth, kDecimals, marks));
    }
}
BENCHMARK(BM_FmtNum_DirectWithMarks);

void BM_FmtNum_LateBoundByMember(benchmark::State& state) {
    kiv::Cl_KIV obj;
    const kiv::Member* m = kiv::FindMember("FmtNum");
    Variant n(kAmount), lun(kWidth), dec(kDecimals);
    kiv::Arguments args;
    args.positional = {&n, &lun, &dec};
    for (auto _ : state) benchmark::DoNotOptimize(kiv::Invoke(obj, *m, kiv::InvokeKind::Method, args));
}
BENCHMARK(BM_FmtNum_LateBoundByMember);

void BM_FmtNum_LateBoundByName(benchmark::State& state) {
    kiv::Cl_KIV obj;
    Variant n(kAmount), lun(kWidth), dec(kDecimals);
    kiv::Arguments args;
    args.positional = {&n, &lun, &dec};
    for (auto _ : state) benchmark::DoNotOptimize(obj.invoke("FmtNum", kiv::InvokeKind::Method, args));
}
BENCHMARK(BM_FmtNum_LateBoundByName);

void BM_ToNumber_NumericText(benchmark::State& state) {
    kiv::Cl_KIV obj;
    const Variant s(String(u"1.234,56"));
    for (auto _ : state) benchmark::DoNotOptimize(obj.ToNumber(s));
}
BENCHMARK(BM_ToNumber_NumericText);

void BM_ToNumber_TextWithUnit(benchmark::State& state) {
    kiv::Cl_KIV obj;
    const Variant s(String(u"12,5 kg"));
    for (auto _ : state) benchmark::DoNotOptimize(obj.ToNumber(s));
}
BENCHMARK(BM_ToNumber_TextWithUnit);

void BM_CalcIVA(benchmark::State& state) {
    kiv::Cl_KIV obj;
    double impo = 10.25;
    benchmark::DoNotOptimize(impo);
    for (auto _ : state) benchmark::DoNotOptimize(obj.CalcIVA(impo, 22.0f));
}
BENCHMARK(BM_CalcIVA);

}  // namespace
