// Validating a million tax codes and barcodes, as a batch import of customer
// and product records would: mixed codici fiscali and partite IVA through
// Is_CFTest, partite IVA through Is_PITest, EAN-13 check digits. The goal is
// at least five million Is_CFTest calls a second on one core.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "frame/cl_kiv.hpp"

namespace {

using kiv::String;

constexpr int kCodes = 1'000'000;

class Random {
public:
    std::uint32_t next(std::uint32_t below) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>(state_ >> 33) % below;
    }
    char16_t letter() { return static_cast<char16_t>(u'A' + next(26)); }
    char16_t digit() { return static_cast<char16_t>(u'0' + next(10)); }

private:
    std::uint64_t state_ = 20260315;
};

String PersonalCode(kiv::Cl_KIV& kiv, Random& r) {
    String code;
    for (int k = 0; k < 6; ++k) code += r.letter();
    code += r.digit();
    code += r.digit();
    code += u"ABCDEHLMPRST"[r.next(12)];
    const std::uint32_t day = 1 + r.next(31) + (r.next(2) == 1 ? 40 : 0);
    code += static_cast<char16_t>(u'0' + day / 10);
    code += static_cast<char16_t>(u'0' + day % 10);
    code += r.letter();
    for (int k = 0; k < 3; ++k) code += r.digit();
    return code + kiv.Get_CheckCF(code);
}

String VatNumber(kiv::Cl_KIV& kiv, Random& r) {
    String number;
    for (int k = 0; k < 10; ++k) number += r.digit();
    return number + kiv.Get_CheckPI(number);
}

// Mostly well-formed, as real records are: 6 in 10 personal codes, 3 in 10
// VAT numbers, the rest with a wrong check character or cut short.
const std::vector<String>& MixedCodes() {
    static const std::vector<String> codes = [] {
        kiv::Cl_KIV kiv;
        Random r;
        std::vector<String> built;
        built.reserve(kCodes);
        for (int k = 0; k < kCodes; ++k) {
            const std::uint32_t kind = r.next(10);
            String code = kind < 7 ? PersonalCode(kiv, r) : VatNumber(kiv, r);
            if (kind == 6) code.back() = code.back() == u'0' ? u'1' : u'0';
            if (kind == 9) code.pop_back();
            built.push_back(std::move(code));
        }
        return built;
    }();
    return codes;
}

const std::vector<String>& PersonalCodes() {
    static const std::vector<String> codes = [] {
        kiv::Cl_KIV kiv;
        Random r;
        std::vector<String> built;
        built.reserve(kCodes);
        for (int k = 0; k < kCodes; ++k) built.push_back(PersonalCode(kiv, r));
        return built;
    }();
    return codes;
}

const std::vector<String>& VatNumbers() {
    static const std::vector<String> numbers = [] {
        kiv::Cl_KIV kiv;
        Random r;
        std::vector<String> built;
        built.reserve(kCodes);
        for (int k = 0; k < kCodes; ++k) built.push_back(VatNumber(kiv, r));
        return built;
    }();
    return numbers;
}

const std::vector<String>& Ean13Codes() {
    static const std::vector<String> codes = [] {
        Random r;
        std::vector<String> built;
        built.reserve(kCodes);
        for (int k = 0; k < kCodes; ++k) {
            String code = u"80";
            for (int d = 0; d < 10; ++d) code += r.digit();
            built.push_back(code + u'?');
        }
        return built;
    }();
    return codes;
}

template <class Check>
void OverAll(benchmark::State& state, const std::vector<String>& codes, Check check) {
    kiv::Cl_KIV kiv;
    for (auto _ : state) {
        for (const String& code : codes) benchmark::DoNotOptimize(check(kiv, code));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(codes.size()));
}

void BM_IsCFTest_MillionMixed(benchmark::State& state) {
    OverAll(state, MixedCodes(), [](kiv::Cl_KIV& kiv, const String& code) { return kiv.Is_CFTest(code); });
}
BENCHMARK(BM_IsCFTest_MillionMixed)->Unit(benchmark::kMillisecond);

void BM_IsCFTest_MillionPersonal(benchmark::State& state) {
    OverAll(state, PersonalCodes(), [](kiv::Cl_KIV& kiv, const String& code) { return kiv.Is_CFTest(code); });
}
BENCHMARK(BM_IsCFTest_MillionPersonal)->Unit(benchmark::kMillisecond);

void BM_IsPITest_Million(benchmark::State& state) {
    OverAll(state, VatNumbers(), [](kiv::Cl_KIV& kiv, const String& code) { return kiv.Is_PITest(code); });
}
BENCHMARK(BM_IsPITest_Million)->Unit(benchmark::kMillisecond);

void BM_BCheckEAN13_Million(benchmark::State& state) {
    OverAll(state, Ean13Codes(), [](kiv::Cl_KIV& kiv, const String& code) { return kiv.BCheck_EAN(code); });
}
BENCHMARK(BM_BCheckEAN13_Million)->Unit(benchmark::kMillisecond);

}  // namespace
