// The DLL's own numbered files on Windows: the system's part of them. A VB
// host's file numbers live in the host's runtime and cannot be reached from
// the DLL: this table holds only what the component opens itself
// (AppeFile, Is_PathWritable), so a host's number given to GetStrFile or
// ejec is a number not open here (52).
#include <windows.h>

#include "frame/runtime.hpp"
#include "system/numbered_files.hpp"
#include "system/windows/windows_errors.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

class WindowsBinaryFile final : public BinaryFile {
public:
    explicit WindowsBinaryFile(HANDLE handle) : handle_(handle) {}
    ~WindowsBinaryFile() override { CloseHandle(handle_); }

    bool readAt(std::uint64_t offset, char& byte) override {
        OVERLAPPED at{};
        at.Offset = static_cast<DWORD>(offset & 0xFFFFFFFFu);
        at.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD n = 0;
        if (!ReadFile(handle_, &byte, 1, &n, &at) && GetLastError() != ERROR_HANDLE_EOF) RaiseLastFileError();
        return n == 1;
    }
    std::int64_t size() override {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(handle_, &size)) RaiseLastFileError();
        return size.QuadPart;
    }

private:
    HANDLE handle_;
};

class WindowsFileTable final : public NumberedFiles {
protected:
    // The full path, case folded: the file system does not tell case.
    String identity(const fs::path& native) override {
        wchar_t buffer[32768];
        const DWORD n = GetFullPathNameW(native.c_str(), 32768, buffer, nullptr);
        const std::wstring full = n == 0 || n >= 32768 ? native.wstring() : std::wstring(buffer, n);
        String where(full.begin(), full.end());
        for (char16_t& c : where) c = FoldCase(c);
        return where;
    }

    std::int64_t touch(const fs::path& native) override {
        const HANDLE h = CreateFileW(native.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h == INVALID_HANDLE_VALUE) RaiseLastFileError();
        LARGE_INTEGER size{};
        const std::int64_t length = GetFileSizeEx(h, &size) ? size.QuadPart : 0;
        CloseHandle(h);
        return length;
    }

    std::unique_ptr<BinaryFile> openBinary(const fs::path& native) override {
        HANDLE h = CreateFileW(native.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                               nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED)
            h = CreateFileW(native.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h == INVALID_HANDLE_VALUE) RaiseLastFileError();
        return std::make_unique<WindowsBinaryFile>(h);
    }
};

}  // namespace

std::unique_ptr<FileTable> MakeWindowsFileTable(const PlatformSettings&) { return std::make_unique<WindowsFileTable>(); }

}  // namespace kiv
