// The registry store's key paths: a run of opens, creates, deletes and value
// writes on paths made of any bytes ("\" runs, empty levels, NULs, names at
// and past the length limit, case variants), on roots, open handles and
// handles that were never made. Every call answers one of the platform's
// codes; a key created opens again by the same path in any case; a deleted
// one does not; a value written reads back as it was written.
#include <fuzzer/FuzzedDataProvider.h>

#include <set>

#include "fuzz_support.hpp"
#include "system/registry/sqlite_registry.hpp"

using namespace kiv;

namespace {

fuzz::Sandbox* sandbox = nullptr;

const std::set<Long> kCodes = {reg::kSuccess,         reg::kNotFound,     reg::kAccessDenied, reg::kInvalidHandle,
                               reg::kInvalidParameter, reg::kBadPathName, reg::kMoreData,     reg::kNoMoreItems,
                               reg::kBadDatabase,      reg::kKeyDeleted};

const char* const kPieces[] = {"\\", "Software", "SOFTWARE", "Kiv", "kiv", "a", "\xE8", "\xC8", " ", ".", ".."};

std::string KeyPath(FuzzedDataProvider& in) {
    std::string p;
    for (int n = in.ConsumeIntegralInRange<int>(0, 8); n > 0; --n) {
        const auto b = in.ConsumeIntegral<std::uint8_t>();
        if (b < std::size(kPieces)) p += kPieces[b];
        else if (b < 16) p += std::string(b == 15 ? 256 : 255, 'n');  // the longest name, and one more
        else if (b < 20) p += '\0';
        else p += static_cast<char>(b);
    }
    return p;
}

std::string AsciiUpper(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return s;
}

Long Checked(Long code, const char* call) {
    if (!kCodes.count(code)) fuzz::Fail(std::string(call) + " answered " + std::to_string(code));
    return code;
}

void Run(FuzzedDataProvider& in, RegistryStore& store) {
    std::vector<Long> handles = {reg::kCurrentUser, reg::kLocalMachine, 0, 0x7FFFFFFF};
    auto handle = [&] { return handles[in.ConsumeIntegralInRange<std::size_t>(0, handles.size() - 1)]; };
    for (int step = 0; step < 24 && in.remaining_bytes() > 0; ++step) {
        const Long h = handle();
        const std::string path = KeyPath(in);
        Long opened = 0;
        switch (in.ConsumeIntegralInRange<int>(0, 6)) {
            case 0:
                if (Checked(store.createKey(h, path, opened), "createKey") == reg::kSuccess) {
                    handles.push_back(opened);
                    Long again = 0;
                    const Long code = Checked(store.openKey(h, AsciiUpper(path), reg::kQueryValue, again), "openKey");
                    if (code != reg::kSuccess) fuzz::Fail("a created key does not open again: " + std::to_string(code));
                    store.closeKey(again);
                }
                break;
            case 1:
                if (Checked(store.openKey(h, path, in.ConsumeIntegral<Long>(), opened), "openKey") == reg::kSuccess)
                    handles.push_back(opened);
                break;
            case 2:
                if (Checked(store.deleteKey(h, path), "deleteKey") == reg::kSuccess) {
                    Long gone = 0;
                    if (store.openKey(h, path, reg::kQueryValue, gone) == reg::kSuccess)
                        fuzz::Fail("a deleted key opens again");
                }
                break;
            case 3: Checked(store.closeKey(h), "closeKey"); break;
            case 4: {
                const std::string data = in.ConsumeRandomLengthString(64);
                if (Checked(store.setValue(h, path, reg::kRegBinary, data), "setValue") == reg::kSuccess) {
                    Long type = 0;
                    std::string back;
                    std::size_t size = 0;
                    const Long code = Checked(store.queryValue(h, path, 1 << 16, type, back, size), "queryValue");
                    if (code != reg::kSuccess || type != reg::kRegBinary || back != data)
                        fuzz::Fail("a value written does not read back: " + std::to_string(code));
                }
                break;
            }
            case 5: Checked(store.deleteValue(h, path), "deleteValue"); break;
            default: {
                Long subKeys = 0, values = 0;
                std::string name, data;
                Long type = 0;
                Checked(store.queryInfoKey(h, subKeys, values), "queryInfoKey");
                const Long index = in.ConsumeIntegralInRange<Long>(-1, 3);
                Checked(store.enumKey(h, index, name), "enumKey");
                Checked(store.enumValue(h, index, name, type, data), "enumValue");
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static fuzz::Sandbox box;  // emptied and removed at exit
    sandbox = &box;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    {
        SqliteRegistry store(sandbox->registry(), "fuzz");
        Run(in, store);
    }
    sandbox->reset();
    return 0;
}
