// SostChar sits on the path of the codice fiscale checks: a few million
// calls a second with a short set of characters to remove.
#include <benchmark/benchmark.h>

#include "frame/cl_kiv.hpp"

namespace {

void SostCharCodiceFiscale(benchmark::State& state) {
    kiv::Cl_KIV kiv;
    const kiv::String text = u"rss mra-80.a01 h501/u";
    const kiv::String set = u" .-/,";
    const kiv::String none;
    for (auto _ : state) benchmark::DoNotOptimize(kiv.SostChar(text, set, none));
}
BENCHMARK(SostCharCodiceFiscale);

void SostCharAccented(benchmark::State& state) {
    kiv::Cl_KIV kiv;
    const kiv::String text = u"PERCHÈ CITTÀ PIÙ";
    const kiv::String set = u"àèéìòù";
    const kiv::String repl = u"aeeiou";
    for (auto _ : state) benchmark::DoNotOptimize(kiv.SostChar(text, set, repl));
}
BENCHMARK(SostCharAccented);

}  // namespace
