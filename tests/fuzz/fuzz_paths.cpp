// The mapping of Windows paths to folders: any text as a path. A path on a
// drive (or rooted on the current one) maps inside that drive's folder and
// nowhere else, whatever its "..", separators, case or odd characters; a
// path that is refused is refused with a file error.
#include <fuzzer/FuzzedDataProvider.h>

#include <cctype>

#include "fuzz_support.hpp"

using namespace kiv;

namespace {

fuzz::Sandbox* sandbox = nullptr;
std::unique_ptr<FileSystem> files;

// Pieces that paths are made of, so that the fuzzer reaches deep ones fast.
const char16_t* const kPieces[] = {u"C:", u"c:", u"D:", u"E:", u"\\", u"/", u"..", u".", u"...", u"Dati", u"dati",
                                   u"SUB", u"Windows", u"x.ini", u" ", u"\\\\", u"~", u":", u"*", u"\u00C8"};

String PathFrom(FuzzedDataProvider& in) {
    String p;
    while (in.remaining_bytes() > 0 && p.size() < 400) {
        const auto b = in.ConsumeIntegral<std::uint8_t>();
        if (b < std::size(kPieces)) p += kPieces[b];
        else if (b < 0xF0) p += static_cast<char16_t>(b);
        else p += in.ConsumeIntegral<char16_t>();
    }
    return p;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static fuzz::Sandbox box;  // emptied and removed at exit
    sandbox = &box;
    static const PlatformSettings settings = sandbox->settings();  // the file system keeps a reference
    files = MakePosixFileSystem(settings);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const String path = PathFrom(in);
    std::filesystem::path native;
    try {
        native = files->nativePath(path);
    } catch (const RuntimeError& e) {
        if (e.number() != kBadFileNameOrNumber && e.number() != kPathNotFound)
            fuzz::Fail("error " + std::to_string(e.number()) + " for " + ToUtf8(path));
        return 0;
    }
    const bool drive = path.size() >= 2 && path[1] == u':' && path[0] < 0x80 && std::isalpha(path[0]);
    const bool rooted = !drive && !path.empty() && path[0] == u'\\';
    if (!drive && !rooted) return 0;  // relative and native paths stand as they are
    const char letter = drive ? static_cast<char>(std::toupper(path[0])) : 'C';
    if (letter != 'C' && letter != 'D') fuzz::Fail("a drive without a folder was mapped: " + ToUtf8(path));
    if (!fuzz::Inside(sandbox->drive(letter), native))
        fuzz::Fail(ToUtf8(path) + " left its drive: " + native.string());
    return 0;
}
