// The DLL's own numbered files on Windows. A VB host's file numbers live in
// the host's runtime and cannot be reached from the DLL: this table holds
// only what the component opens itself (AppeFile, Is_PathWritable), so a
// host's number given to GetStrFile or ejec is a number not open here (52).
// As on POSIX, what is printed is written at the close in one piece.
#include <windows.h>

#include <array>
#include <optional>

#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "system/windows/windows_errors.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

struct OpenFile {
    String path;        // as written, for the writes at close
    String where;       // the full path, to tell one file from another
    FileMode mode;
    std::string bytes;  // Input: the whole file; Output, Append: what was printed
    std::size_t next = 0;  // Input: the next byte to read
    Long lengthBefore = 0;  // Append: the file's length when opened
    HANDLE handle = INVALID_HANDLE_VALUE;  // Binary
    bool pastEnd = false;  // Binary: a read went beyond the last byte
};

String FullPath(const std::filesystem::path& p) {
    wchar_t buffer[32768];
    const DWORD n = GetFullPathNameW(p.c_str(), 32768, buffer, nullptr);
    return n == 0 || n >= 32768 ? String(p.wstring().begin(), p.wstring().end()) : String(buffer, buffer + n);
}

class WindowsFileTable final : public FileTable {
public:
    ~WindowsFileTable() override {
        for (auto& slot : slots_)
            if (slot && slot->handle != INVALID_HANDLE_VALUE) CloseHandle(slot->handle);
    }

    Integer freeNumber() override {
        for (int n = kFirst; n <= kLast; ++n)
            if (!slots_[n]) return static_cast<Integer>(n);
        raise(kTooManyFiles);
    }

    void open(const String& path, FileMode mode, Long number) override {
        if (number < kFirst || number > kLast) raise(kBadFileNameOrNumber);
        if (slots_[number]) raise(kFileAlreadyOpen);
        FileSystem& files = platform().files();
        const std::filesystem::path native = files.nativePath(path);
        OpenFile f{path, FullPath(native), mode, {}, 0, 0, INVALID_HANDLE_VALUE, false};
        // One writer per file; readers may share.
        const bool writes = mode == FileMode::Output || mode == FileMode::Append;
        for (const auto& other : slots_)
            if (other && CaseBlindEqual(other->where, f.where) &&
                (writes || other->mode == FileMode::Output || other->mode == FileMode::Append))
                raise(kFileAlreadyOpen);
        if (files.isFolder(path)) raise(kPathFileAccessError);
        switch (mode) {
            case FileMode::Input:
                f.bytes = files.readFile(path);
                break;
            case FileMode::Output:
            case FileMode::Append: {
                // The file exists from the open on; its content changes only at close.
                const HANDLE h = CreateFileW(native.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                             nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
                if (h == INVALID_HANDLE_VALUE) RaiseLastFileError();
                LARGE_INTEGER size{};
                if (GetFileSizeEx(h, &size)) f.lengthBefore = checkedLong(size.QuadPart);
                CloseHandle(h);
                break;
            }
            case FileMode::Binary:
                f.handle = CreateFileW(native.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
                if (f.handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_ACCESS_DENIED)
                    f.handle = CreateFileW(native.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
                if (f.handle == INVALID_HANDLE_VALUE) RaiseLastFileError();
                break;
        }
        slots_[number] = std::move(f);
    }

    void close(Long number) override {
        OpenFile taken = std::move(entry(number));
        slots_[number].reset();
        finish(taken);
    }

    void closeAll() override {
        std::optional<RuntimeError> first;
        for (auto& slot : slots_) {
            if (!slot) continue;
            OpenFile taken = std::move(*slot);
            slot.reset();
            try {
                finish(taken);
            } catch (const RuntimeError& e) {
                if (!first) first = e;
            }
        }
        if (first) throw *first;
    }

    String lineInput(Long number) override {
        OpenFile& f = entry(number);
        if (f.mode != FileMode::Input) raise(kBadFileMode);
        if (f.next >= f.bytes.size()) raise(kInputPastEndOfFile);
        const std::size_t end = f.bytes.find_first_of("\r\n", f.next);
        const std::size_t stop = end == std::string::npos ? f.bytes.size() : end;
        const String line = platform().files().decodeText(std::string_view(f.bytes).substr(f.next, stop - f.next));
        f.next = stop;
        if (f.next < f.bytes.size() && f.bytes[f.next] == '\r') ++f.next;
        if (f.next < f.bytes.size() && f.bytes[f.next] == '\n' && (f.next == stop || f.next == stop + 1)) ++f.next;
        return line;
    }

    void print(Long number, const String& text, bool lineEnd) override {
        OpenFile& f = entry(number);
        if (f.mode != FileMode::Output && f.mode != FileMode::Append) raise(kBadFileMode);
        f.bytes += platform().files().encodeText(lineEnd ? text + u"\r\n" : text);
    }

    String readByteAt(Long number, Long position) override {
        OpenFile& f = entry(number);
        if (f.mode != FileMode::Binary) raise(kBadFileMode);
        if (position < 1) raise(kBadRecordNumber);
        const auto offset = static_cast<std::uint64_t>(position) - 1;
        OVERLAPPED at{};
        at.Offset = static_cast<DWORD>(offset & 0xFFFFFFFFu);
        at.OffsetHigh = static_cast<DWORD>(offset >> 32);
        char byte = 0;
        DWORD n = 0;
        if (!ReadFile(f.handle, &byte, 1, &n, &at) && GetLastError() != ERROR_HANDLE_EOF) RaiseLastFileError();
        f.pastEnd = n == 0;
        if (n == 0) return String();
        return platform().files().decodeText(std::string_view(&byte, 1));
    }

    Boolean atEnd(Long number) override {
        OpenFile& f = entry(number);
        switch (f.mode) {
            case FileMode::Input: return f.next >= f.bytes.size();
            case FileMode::Binary: return f.pastEnd;
            default: return true;
        }
    }

    Long length(Long number) override {
        OpenFile& f = entry(number);
        switch (f.mode) {
            case FileMode::Input:
            case FileMode::Output: return checkedLong(static_cast<std::int64_t>(f.bytes.size()));
            case FileMode::Append: return checkedLong(f.lengthBefore + static_cast<std::int64_t>(f.bytes.size()));
            case FileMode::Binary: {
                LARGE_INTEGER size{};
                if (!GetFileSizeEx(f.handle, &size)) RaiseLastFileError();
                return checkedLong(size.QuadPart);
            }
        }
        return 0;
    }

private:
    OpenFile& entry(Long number) {
        if (number < kFirst || number > kLast || !slots_[number]) raise(kBadFileNameOrNumber);
        return *slots_[number];
    }

    // Writes what was printed, then lets the file go.
    static void finish(OpenFile& f) {
        if (f.handle != INVALID_HANDLE_VALUE) CloseHandle(f.handle);
        if (f.mode == FileMode::Output) platform().files().replaceFile(f.path, f.bytes);
        if (f.mode == FileMode::Append && !f.bytes.empty()) platform().files().appendFile(f.path, f.bytes);
    }

    std::array<std::optional<OpenFile>, kLast + 1> slots_;
};

}  // namespace

std::unique_ptr<FileTable> makeWindowsFileTable(const PlatformSettings&) { return std::make_unique<WindowsFileTable>(); }

}  // namespace kiv
