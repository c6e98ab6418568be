// The registry on Windows: advapi32's narrow calls as they stand. Handles
// travel as Longs: the roots are sign-extended constants and the handles the
// system gives are 32-bit values on 64-bit Windows too.
#include <windows.h>

#include <cstdint>
#include <string>

#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

HKEY Key(Long h) { return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(h)); }
Long Handle(HKEY h) { return static_cast<Long>(reinterpret_cast<std::intptr_t>(h)); }
std::string Text(std::string_view s) { return std::string(s); }

class WindowsRegistryStore final : public RegistryStore {
public:
    Long openKey(Long hKey, std::string_view subKey, Long access, Long& result) override {
        HKEY h = nullptr;
        const LONG r = RegOpenKeyExA(Key(hKey), Text(subKey).c_str(), 0, static_cast<REGSAM>(access), &h);
        result = r == ERROR_SUCCESS ? Handle(h) : 0;
        return r;
    }
    Long createKey(Long hKey, std::string_view subKey, Long& result) override {
        HKEY h = nullptr;
        const LONG r = RegCreateKeyExA(Key(hKey), Text(subKey).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                       KEY_ALL_ACCESS, nullptr, &h, nullptr);
        result = r == ERROR_SUCCESS ? Handle(h) : 0;
        return r;
    }
    Long closeKey(Long hKey) override { return RegCloseKey(Key(hKey)); }
    Long deleteKey(Long hKey, std::string_view subKey) override { return RegDeleteKeyA(Key(hKey), Text(subKey).c_str()); }
    Long deleteValue(Long hKey, std::string_view name) override { return RegDeleteValueA(Key(hKey), Text(name).c_str()); }
    Long setValue(Long hKey, std::string_view name, Long type, std::string_view data) override {
        return RegSetValueExA(Key(hKey), Text(name).c_str(), 0, static_cast<DWORD>(type),
                              reinterpret_cast<const BYTE*>(data.data()), static_cast<DWORD>(data.size()));
    }
    Long queryValue(Long hKey, std::string_view name, std::size_t capacity, Long& type, std::string& data,
                    std::size_t& size) override {
        data.assign(capacity, '\0');
        DWORD t = 0, n = static_cast<DWORD>(capacity);
        const LONG r = RegQueryValueExA(Key(hKey), Text(name).c_str(), nullptr, &t, reinterpret_cast<BYTE*>(data.data()), &n);
        type = static_cast<Long>(t);
        size = n;
        data.resize(r == ERROR_SUCCESS ? n : 0);
        return r;
    }
    Long queryInfoKey(Long hKey, Long& subKeys, Long& values) override {
        DWORD k = 0, v = 0;
        const LONG r = RegQueryInfoKeyA(Key(hKey), nullptr, nullptr, nullptr, &k, nullptr, nullptr, &v, nullptr,
                                        nullptr, nullptr, nullptr);
        subKeys = r == ERROR_SUCCESS ? static_cast<Long>(k) : 0;
        values = r == ERROR_SUCCESS ? static_cast<Long>(v) : 0;
        return r;
    }
    Long enumKey(Long hKey, Long index, std::string& name) override {
        char buffer[256];  // the longest key name and its zero
        DWORD n = sizeof buffer;
        const LONG r = RegEnumKeyExA(Key(hKey), static_cast<DWORD>(index), buffer, &n, nullptr, nullptr, nullptr, nullptr);
        name.assign(buffer, r == ERROR_SUCCESS ? n : 0);
        return r;
    }
    Long enumValue(Long hKey, Long index, std::string& name, Long& type, std::string& data) override {
        // Buffers as large as the key's largest name and data.
        DWORD longestName = 0, longestData = 0;
        LONG r = RegQueryInfoKeyA(Key(hKey), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  &longestName, &longestData, nullptr, nullptr);
        if (r != ERROR_SUCCESS) return r;
        name.assign(longestName + 1, '\0');
        data.assign(longestData, '\0');
        DWORD n = longestName + 1, size = longestData, t = 0;
        r = RegEnumValueA(Key(hKey), static_cast<DWORD>(index), name.data(), &n, nullptr, &t,
                          reinterpret_cast<BYTE*>(data.data()), &size);
        name.resize(r == ERROR_SUCCESS ? n : 0);
        data.resize(r == ERROR_SUCCESS ? size : 0);
        type = static_cast<Long>(t);
        return r;
    }
};

}  // namespace

std::unique_ptr<RegistryStore> makeWindowsRegistryStore(const PlatformSettings&) {
    return std::make_unique<WindowsRegistryStore>();
}

}  // namespace kiv
