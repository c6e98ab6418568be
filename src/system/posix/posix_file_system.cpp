#include <cctype>

#include "frame/code_page.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

class PosixFileSystem final : public FileSystem {
public:
    explicit PosixFileSystem(const PlatformSettings& settings) : settings_(settings) {}

    std::filesystem::path nativePath(const String& path) override {
        String rest = path;
        std::filesystem::path root;
        const bool drive = path.size() >= 2 && path[1] == u':' && path[0] < 0x80 &&
                           std::isalpha(static_cast<unsigned char>(path[0]));
        if (drive) {
            const auto found = settings_.drives.find(static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
            if (found == settings_.drives.end()) raise(kPathNotFound);
            root = found->second;
            rest = path.substr(2);
        }
        for (char16_t& c : rest)
            if (c == u'\\') c = u'/';
        if (!drive) return std::filesystem::path(ToUtf8(rest));
        while (!rest.empty() && rest[0] == u'/') rest.erase(0, 1);
        return root / ToUtf8(rest);
    }

    std::string encodeText(const String& text) override {
        return settings_.utf8Files ? ToUtf8(text) : ToCp1252(text);
    }
    String decodeText(std::string_view bytes) override {
        return settings_.utf8Files ? FromUtf8(bytes) : FromCp1252(bytes);
    }

private:
    const PlatformSettings& settings_;
};

}  // namespace

std::unique_ptr<FileSystem> makePosixFileSystem(const PlatformSettings& settings) {
    return std::make_unique<PosixFileSystem>(settings);
}

}  // namespace kiv
