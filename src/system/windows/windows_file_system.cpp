// The Win32 file system: a Windows path is a path here, nothing is mapped.
#include "frame/code_page.hpp"
#include "frame/strings.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

class WindowsFileSystem final : public FileSystem {
public:
    explicit WindowsFileSystem(const PlatformSettings& settings) : settings_(settings) {}

    std::filesystem::path nativePath(const String& path) override {
        return std::filesystem::path(std::wstring(path.begin(), path.end()));
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

std::unique_ptr<FileSystem> makeWindowsFileSystem(const PlatformSettings& settings) {
    return std::make_unique<WindowsFileSystem>(settings);
}

}  // namespace kiv
