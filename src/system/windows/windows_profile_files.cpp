// INI files on Windows: kernel32's private-profile calls with their own
// rules (a name without a folder is in the Windows folder, the system's
// locking and caching). Texts go through the narrow calls in code page 1252,
// as a host's own declarations of them pass them.
#include <windows.h>

#include <string>

#include "frame/code_page.hpp"
#include "system/ini/ini_engine.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

class WindowsProfileFiles final : public ProfileFiles {
public:
    String getString(const String& section, const String& key, const String& fallback, Long bufferSize,
                     const String& file) override {
        if (bufferSize <= 0) return String();
        std::string buffer(static_cast<std::size_t>(bufferSize), '\0');
        const DWORD n = GetPrivateProfileStringA(ToCp1252(section).c_str(), ToCp1252(key).c_str(),
                                                 ToCp1252(fallback).c_str(), buffer.data(),
                                                 static_cast<DWORD>(bufferSize), ToCp1252(file).c_str());
        buffer.resize(n);
        return FromCp1252(buffer);
    }

    Long writeString(const String& section, const std::optional<String>& key, const std::optional<String>& value,
                     const String& file) override {
        const std::string k = key ? ToCp1252(*key) : std::string();
        const std::string v = value ? ToCp1252(*value) : std::string();
        // kernel32 would write a line end into the file, starting a section or key of its own.
        if (!ini::Writable(ToCp1252(section), key ? std::optional<std::string_view>(k) : std::nullopt,
                           value ? std::optional<std::string_view>(v) : std::nullopt))
            return 0;
        return WritePrivateProfileStringA(ToCp1252(section).c_str(), key ? k.c_str() : nullptr,
                                          value ? v.c_str() : nullptr, ToCp1252(file).c_str())
                   ? 1
                   : 0;
    }
};

}  // namespace

std::unique_ptr<ProfileFiles> MakeWindowsProfileFiles(const PlatformSettings&) {
    return std::make_unique<WindowsProfileFiles>();
}

}  // namespace kiv
