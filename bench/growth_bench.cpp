// Growth with the size of the text, from 1,000 to 1,000,000 characters, of
// the operations whose steps once rescanned or rebuilt the whole text per
// step. Each table ends with the fitted complexity; the goal is linear
// (or n log n) growth and under a second at a million characters.
#include <benchmark/benchmark.h>

#include "frame/cl_kiv.hpp"
#include "frame/errors.hpp"

namespace {

using kiv::Cl_KIV;
using kiv::String;
using kiv::Variant;

constexpr std::int64_t kFrom = 1000;
constexpr std::int64_t kTo = 1000000;

// A call whose run-time error is part of the case.
template <class F> void Attempt(F f) {
    try {
        benchmark::DoNotOptimize(f());
    } catch (const kiv::RuntimeError&) {
    }
}

String Repeat(std::int64_t n, char16_t c) { return String(static_cast<std::size_t>(n), c); }

void BM_SostWord_EveryCharacter(benchmark::State& state) {
    Cl_KIV kiv;
    const Variant text(Repeat(state.range(0), u'x'));
    for (auto _ : state) benchmark::DoNotOptimize(kiv.SostWord(text, u"x", u"yy"));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SostWord_EveryCharacter)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_Apo_Dup_AllApostrophes(benchmark::State& state) {
    Cl_KIV kiv;
    const Variant text(Repeat(state.range(0), u'\''));
    for (auto _ : state) benchmark::DoNotOptimize(kiv.Apo_Dup(text));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Apo_Dup_AllApostrophes)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_AddSpace_Blanks(benchmark::State& state) {
    Cl_KIV kiv;
    const Variant text(String(u"a b"));
    const Variant blanks(static_cast<kiv::Long>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(kiv.AddSpace(text, blanks));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_AddSpace_Blanks)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_AddSpace_HundredWords(benchmark::State& state) {
    Cl_KIV kiv;
    String words;
    for (int k = 0; k < 100; ++k) words += k == 0 ? u"w" : u" w";
    const Variant text(words);
    const Variant blanks(static_cast<kiv::Long>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(kiv.AddSpace(text, blanks));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_AddSpace_HundredWords)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PutPipeStr_NoSeparator(benchmark::State& state) {
    Cl_KIV kiv;
    const String row = Repeat(state.range(0), u'a') + u"ab";
    for (auto _ : state) Attempt([&] { return kiv.PutPipeStr(row, 30000, u"NEW", u"ab"); });  // no field 30,000: error 5
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_PutPipeStr_NoSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

// Field 30,000 through 30,000 searches; the separator as long as half the record and found at every place: the
// worst case of a search that compares from each start.
void BM_PutPipeStr_LongSeparator(benchmark::State& state) {
    Cl_KIV kiv;
    const String row = Repeat(state.range(0), u'a');
    const String sep = Repeat(state.range(0) / 2, u'a');
    for (auto _ : state) Attempt([&] { return kiv.PutPipeStr(row, 30000, u"NEW", sep); });
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_PutPipeStr_LongSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

// A record without the separator: every field loop runs to the Overflow of
// field 32,767.
template <class Op> void FieldLoop(benchmark::State& state, const String& sep, Op op) {
    Cl_KIV kiv;
    const String row = Repeat(state.range(0), u'a');
    for (auto _ : state) Attempt([&] { return op(kiv, row, sep); });
    state.SetComplexityN(state.range(0));
}

// A record of fields of 30 characters, every field read: 32,000 of them at 1 MB.
void BM_Pipe2Rows_ManyFields(benchmark::State& state) {
    Cl_KIV kiv;
    String row;
    while (row.size() < static_cast<std::size_t>(state.range(0))) row += String(30, u'x') + u"|";
    for (auto _ : state) Attempt([&] { return kiv.Pipe2Rows(row); });
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_Pipe2Rows_ManyFields)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PipeCount_TwoCharacterSeparator(benchmark::State& state) {
    FieldLoop(state, u"ab", [](Cl_KIV& k, const String& r, const String& s) { return k.PipeCount(r, s); });
}
BENCHMARK(BM_PipeCount_TwoCharacterSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PipeCount_RecordLongSeparator(benchmark::State& state) {
    FieldLoop(state, String(static_cast<std::size_t>(state.range(0)), u'a') + u"b",
              [](Cl_KIV& k, const String& r, const String& s) { return k.PipeCount(r, s); });
}
BENCHMARK(BM_PipeCount_RecordLongSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PipeQuale_TwoCharacterSeparator(benchmark::State& state) {
    FieldLoop(state, u"ab", [](Cl_KIV& k, const String& r, const String& s) { return k.PipeQuale(r, u"zz", s); });
}
BENCHMARK(BM_PipeQuale_TwoCharacterSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PipeSost_TwoCharacterSeparator(benchmark::State& state) {
    FieldLoop(state, u"ab", [](Cl_KIV& k, const String& r, const String& s) { return k.PipeSost(r, 3, u"X", s); });
}
BENCHMARK(BM_PipeSost_TwoCharacterSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

void BM_PipeInStrPos_TwoCharacterSeparator(benchmark::State& state) {
    FieldLoop(state, u"ab", [](Cl_KIV& k, const String& r, const String& s) { return k.PipeInStrPos(r, u"a", s); });
}
BENCHMARK(BM_PipeInStrPos_TwoCharacterSeparator)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

// One-character separators on records of many fields.
void BM_PipeCount_ManyFields(benchmark::State& state) {
    Cl_KIV kiv;
    String row;
    while (row.size() < static_cast<std::size_t>(state.range(0))) row += u"abcdefghi|";
    for (auto _ : state) Attempt([&] { return kiv.PipeCount(row, u"|"); });
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_PipeCount_ManyFields)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

// A set as long as the text, of characters beyond ASCII: each one is looked up.
void BM_SostChar_LongSet(benchmark::State& state) {
    Cl_KIV kiv;
    const String text = Repeat(state.range(0), u'\u00e9');
    const String set = Repeat(state.range(0), u'\u00e8') + u"\u00e9";
    for (auto _ : state) Attempt([&] { return kiv.SostChar(text, set, u"x"); });
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_SostChar_LongSet)->RangeMultiplier(10)->Range(kFrom, kTo)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
