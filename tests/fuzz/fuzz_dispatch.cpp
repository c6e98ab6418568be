// The late-bound call path: an input becomes a member of a published class
// and a list of arguments of every kind (each Variant type, Null, Empty,
// missing, arrays, objects, edge numbers, texts up to 100,000 characters with
// NUL and lone surrogates, named arguments). The call must answer a value or
// a run-time error; anything else stops the run. Files, INI files and the
// registry live in a sandbox emptied after every call.
#include <fuzzer/FuzzedDataProvider.h>

#include <cfloat>
#include <cmath>
#include <deque>
#include <limits>

#include "frame/cl_kiv.hpp"
#include "frame/dispatch.hpp"
#include "fuzz_support.hpp"

using namespace kiv;

namespace {

fuzz::Sandbox* sandbox = nullptr;

constexpr double kDoubles[] = {0.0, -0.0, 0.5, -0.5, 1.5, 2.5, -1.0, 32767.0, 32767.5, -32768.0, -32768.5,
                               2147483647.0, 2147483647.5, -2147483648.5, 4294967296.0, 1e15, 1e20, -1e20,
                               9.2233720368547758e18, 922337203685477.5807, -922337203685477.5808, 1e308,
                               -1e308, DBL_MAX, -DBL_MAX, DBL_MIN, 4.9e-324, 2958465.0, 2958465.99999999,
                               -657434.0, -657435.0, 0.1, 1e-300, HUGE_VAL, -HUGE_VAL, NAN};
constexpr std::int64_t kCurrencies[] = {0, 1, -1, 10000, -10000, 5000, -5000, 15000, std::numeric_limits<std::int64_t>::max(),
                                        std::numeric_limits<std::int64_t>::min(), 9223372036854770000LL};
constexpr Long kLongs[] = {0, 1, -1, 2, 255, 256, 32767, 32768, -32768, -32769, 65535, 100000, 2147483647,
                           -2147483647 - 1};
// Characters that steer the operations: separators, marks, quotes, a NUL,
// accented letters, the euro, lone surrogates and a surrogate pair's halves.
constexpr char16_t kSpecials[] = {0, u'|', u'\\', u':', u'/', u'.', u',', u'\'', u'"', u'-', u' ', u'\t', u'\r', u'\n',
                                  0xE0, 0xC8, 0x20AC, 0xD800, 0xDC00, 0xD83D, 0xDE00, 0xFFFF, 0xFEFF, 0x7F,
                                  u'*', u'?', u'#', u'&', u'%', u'@', u'0', u'9'};

template <class T, std::size_t N> T Pick(FuzzedDataProvider& in, const T (&table)[N]) {
    return table[in.ConsumeIntegralInRange<std::size_t>(0, N - 1)];
}

char16_t Unit(FuzzedDataProvider& in) {
    const auto b = in.ConsumeIntegral<std::uint8_t>();
    if (b < 0x80) return static_cast<char16_t>(b);
    if (b < 0xA0) return kSpecials[b % std::size(kSpecials)];
    if (b < 0xF0) return static_cast<char16_t>(b);  // Latin-1
    return in.ConsumeIntegral<char16_t>();
}

String Text(FuzzedDataProvider& in) {
    const auto shape = in.ConsumeIntegralInRange<int>(0, 3);
    String s;
    if (shape < 3) {
        const auto n = in.ConsumeIntegralInRange<std::size_t>(0, shape == 0 ? 8 : 64);
        for (std::size_t i = 0; i < n && in.remaining_bytes() > 0; ++i) s += Unit(in);
        return s;
    }
    // A long text: a short piece repeated, up to 100,000 characters.
    String piece;
    const auto n = in.ConsumeIntegralInRange<std::size_t>(1, 6);
    for (std::size_t i = 0; i < n; ++i) piece += Unit(in);
    const auto length = in.ConsumeIntegralInRange<std::size_t>(0, 100000);
    while (s.size() < length) s += piece;
    s.resize(length);
    return s;
}

Object NewObject(FuzzedDataProvider& in) {
    switch (in.ConsumeIntegralInRange<int>(0, 2)) {
        case 0: return nullptr;  // Nothing
        case 1: return ColKivClass().create();
        default: return ClKivClass().create();
    }
}

Variant Value(FuzzedDataProvider& in, int depth);

Variant NewArray(FuzzedDataProvider& in, int depth) {
    const bool strings = in.ConsumeBool();
    std::vector<Bound> dims;
    const int rank = in.ConsumeIntegralInRange<int>(1, 2);
    for (int d = 0; d < rank; ++d) {
        const Long lower = in.ConsumeBool() ? in.ConsumeIntegralInRange<Long>(-2, 2) : Pick(in, kLongs);
        const Long count = in.ConsumeIntegralInRange<Long>(0, 5);
        // An automation array's upper bound is a Long too.
        if (static_cast<std::int64_t>(lower) + count - 1 > std::numeric_limits<Long>::max()) return Variant();
        dims.push_back({lower, count});
    }
    Array a(strings ? VarType::String : VarType::Variant, dims);
    std::vector<Long> index(dims.size());
    for (std::size_t k = 0; k < a.items().size(); ++k) {
        std::size_t rest = k;
        for (std::size_t d = dims.size(); d-- > 0;) {
            index[d] = dims[d].lower + static_cast<Long>(rest % static_cast<std::size_t>(dims[d].count));
            rest /= static_cast<std::size_t>(dims[d].count);
        }
        try {
            a.set(index, strings ? Variant(Text(in)) : Value(in, depth + 1));
        } catch (const RuntimeError&) {
        }
    }
    return Variant(std::move(a));
}

Variant Value(FuzzedDataProvider& in, int depth) {
    switch (in.ConsumeIntegralInRange<int>(0, 16)) {
        case 0: return Variant();
        case 1: return Variant::null();
        case 2: return Variant::missing();
        case 3: return Variant(ErrorValue{in.ConsumeIntegral<std::int32_t>()});
        case 4: return Variant(in.ConsumeIntegral<Integer>());
        case 5: return Variant(in.ConsumeBool() ? Pick(in, kLongs) : in.ConsumeIntegral<Long>());
        case 6: return Variant(static_cast<Single>(in.ConsumeBool() ? Pick(in, kDoubles) : in.ConsumeFloatingPoint<float>()));
        case 7: return Variant(in.ConsumeBool() ? Pick(in, kDoubles) : in.ConsumeFloatingPoint<double>());
        case 8: return Variant(Currency{in.ConsumeBool() ? Pick(in, kCurrencies) : in.ConsumeIntegral<std::int64_t>()});
        case 9: return Variant(Date{in.ConsumeBool() ? Pick(in, kDoubles) : in.ConsumeFloatingPoint<double>()});
        case 10: return Variant(in.ConsumeBool());
        case 11: return Variant(in.ConsumeIntegral<Byte>());
        case 12: return Variant(NewObject(in));
        case 13: return depth < 2 ? NewArray(in, depth) : Variant();
        default: return Variant(Text(in));
    }
}

const Member& PickMember(FuzzedDataProvider& in, const ClassInfo& cls) {
    return cls.members[in.ConsumeIntegralInRange<std::size_t>(0, cls.members.size() - 1)];
}

// The call of one input; the sandbox's contents are the call's own.
void Call(FuzzedDataProvider& in) {
    const bool collection = in.ConsumeIntegralInRange<int>(0, 9) == 0;
    const ClassInfo& cls = collection ? ColKivClass() : ClKivClass();
    Object object = cls.create();
    // A Collection with a few items, so its members have something to find.
    for (int n = collection ? in.ConsumeIntegralInRange<int>(0, 3) : 0; n > 0; --n) {
        Variant item = Value(in, 1), key = in.ConsumeBool() ? Variant(Text(in)) : Variant::missing();
        Arguments add{{&item, &key}, {}, {}};
        try {
            object->invoke("Add", InvokeKind::Method, add);
        } catch (const RuntimeError&) {
        }
    }
    const Member& member = PickMember(in, cls);
    std::string name = member.name;
    if (in.ConsumeIntegralInRange<int>(0, 15) == 0) {
        for (char& c : name) c = static_cast<char>(in.ConsumeBool() ? std::toupper(c) : std::tolower(c));
    }
    InvokeKind kind = InvokeKind::Method;
    if (in.ConsumeIntegralInRange<int>(0, 7) == 0)
        kind = static_cast<InvokeKind>(in.ConsumeIntegralInRange<int>(0, 3));

    // The arguments live here, as a caller's variables would.
    std::deque<Variant> values;
    Arguments args;
    const std::size_t count = in.ConsumeIntegralInRange<std::size_t>(0, member.params.size() + 1);
    for (std::size_t i = 0; i < count; ++i) {
        values.push_back(Value(in, 0));
        Variant* v = &values.back();
        const int how = in.ConsumeIntegralInRange<int>(0, 15);
        if (how == 0 && i < member.params.size()) args.named.emplace_back(member.params[i].name, v);
        else if (how == 1) args.named.emplace_back(in.ConsumeBool() ? "x" : "", v);
        else if (how == 2) args.namedById.emplace_back(in.ConsumeIntegralInRange<std::int32_t>(-1, 17), v);
        else args.positional.push_back(v);
    }
    // KIV_FUZZ_TRACE=1 shows each call's member and outcome, for replays.
    static const bool trace = std::getenv("KIV_FUZZ_TRACE") != nullptr;
    try {
        Variant result = object->invoke(name, kind, args);
        if (trace) std::fprintf(stderr, "%s(%zu args): a value\n", name.c_str(), count);
    } catch (const RuntimeError& e) {
        if (trace) std::fprintf(stderr, "%s(%zu args): error %d\n", name.c_str(), count, e.number());
        if (e.number() <= 0 || e.number() > 65535) fuzz::Fail(member.name + ": error number " + std::to_string(e.number()));
        if (e.description().empty()) fuzz::Fail(member.name + ": error " + std::to_string(e.number()) + " without text");
    } catch (const std::exception& e) {
        fuzz::Fail(member.name + ": " + e.what());
    } catch (...) {
        fuzz::Fail(member.name + ": an exception that is not a run-time error");
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static fuzz::Sandbox box;  // emptied and removed at exit
    sandbox = &box;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InstallPlatform(std::make_shared<fuzz::SandboxPlatform>(*sandbox));
    {
        FuzzedDataProvider in(data, size);
        Call(in);
    }
    // The platform (open files, registry handles) goes before its folders.
    InstallPlatform(std::make_shared<fuzz::SandboxPlatform>(*sandbox));
    sandbox->reset();
    return 0;
}
