// Reading delimited records field by field: every field of records of 10, 50
// and 200 fields of ten characters, one call per field, and PipeCount on the
// same records.
#include <benchmark/benchmark.h>

#include "frame/cl_kiv.hpp"

namespace {

kiv::String Record(int fields) {
    kiv::String row;
    for (int k = 0; k < fields; ++k) {
        if (k > 0) row += u'|';
        for (int c = 0; c < 10; ++c) row += static_cast<char16_t>(u'A' + (k + c) % 26);
    }
    return row;
}

void BM_GetPipeStr_EveryField(benchmark::State& state) {
    kiv::Cl_KIV kiv;
    const int fields = static_cast<int>(state.range(0));
    const kiv::String row = Record(fields);
    for (auto _ : state) {
        for (int k = 1; k <= fields; ++k) benchmark::DoNotOptimize(kiv.GetPipeStr(row, static_cast<kiv::Integer>(k)));
    }
    state.SetItemsProcessed(state.iterations() * fields);
}
BENCHMARK(BM_GetPipeStr_EveryField)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMicrosecond);

void BM_PipeCount(benchmark::State& state) {
    kiv::Cl_KIV kiv;
    const kiv::String row = Record(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(kiv.PipeCount(row));
}
BENCHMARK(BM_PipeCount)->Arg(10)->Arg(50)->Arg(200)->Unit(benchmark::kMicrosecond);

}  // namespace
