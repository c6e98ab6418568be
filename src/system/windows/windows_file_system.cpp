// The Win32 file system: a Windows path is a path here, nothing is mapped;
// name matching, case and the errors are the system's own.
#include <windows.h>

#include <cctype>

#include "frame/code_page.hpp"
#include "frame/errors.hpp"
#include "frame/strings.hpp"
#include "system/windows/windows_errors.hpp"
#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

// Windows refuses longer paths even in their long form.
constexpr std::size_t kLongestPath = 32767;

bool HasWildcards(const String& s) { return s.find_first_of(u"*?") != String::npos; }

// The folder part of a pattern (up to its last separator, or its drive).
String FolderOf(const String& pattern) {
    const std::size_t cut = pattern.find_last_of(u"\\/");
    if (cut != String::npos) return pattern.substr(0, cut + 1);
    if (pattern.size() >= 2 && pattern[1] == u':') return pattern.substr(0, 2);
    return String();
}

class Handle {
public:
    explicit Handle(HANDLE h) : h_(h) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (ok()) CloseHandle(h_);
    }
    bool ok() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return h_; }

private:
    HANDLE h_;
};

bool WriteAll(HANDLE h, std::string_view bytes) {
    while (!bytes.empty()) {
        const DWORD chunk = bytes.size() > 0x40000000 ? 0x40000000 : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!WriteFile(h, bytes.data(), chunk, &written, nullptr)) return false;
        if (written == 0) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

class WindowsFileSystem final : public FileSystem {
public:
    explicit WindowsFileSystem(const PlatformSettings& settings) : settings_(settings) {}

    fs::path nativePath(const String& path) override {
        if (path.find(u'\0') != String::npos || path.size() > kLongestPath) Raise(kBadFileNameOrNumber);
        // A drive the machine does not have is a path not found, for every operation alike.
        if (path.size() >= 2 && path[1] == u':' && path[0] < 128 && std::isalpha(static_cast<int>(path[0]))) {
            const wchar_t root[] = {static_cast<wchar_t>(path[0]), L':', L'\\', L'\0'};
            if (GetDriveTypeW(root) == DRIVE_NO_ROOT_DIR) Raise(kPathNotFound);
        }
        return fs::path(wide(path));
    }
    std::string encodeText(const String& text) override {
        return settings_.utf8Files ? ToUtf8(text) : ToCp1252(text);
    }
    String decodeText(std::string_view bytes) override {
        return settings_.utf8Files ? FromUtf8(bytes) : FromCp1252(bytes);
    }

    String firstMatch(const String& pattern, bool foldersToo) override {
        String search = pattern;
        if (search.empty() || search.back() == u'\\' || search.back() == u'/' ||
            (search.size() == 2 && search[1] == u':'))
            search += u"*";
        WIN32_FIND_DATAW found{};
        const HANDLE h = FindFirstFileW(nativePath(search).c_str(), &found);
        if (h == INVALID_HANDLE_VALUE) return String();
        String name;
        do {
            const std::wstring n = found.cFileName;
            if (n == L"." || n == L"..") continue;
            if (found.dwFileAttributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) continue;
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) && !foldersToo) continue;
            name.assign(n.begin(), n.end());
            break;
        } while (FindNextFileW(h, &found));
        FindClose(h);
        return name;
    }

    bool isFolder(const String& path) override {
        const DWORD a = GetFileAttributesW(nativePath(path).c_str());
        return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
    }

    Long fileLength(const String& path) override {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        if (!GetFileAttributesExW(nativePath(path).c_str(), GetFileExInfoStandard, &data)) RaiseLastFileError();
        if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) Raise(kFileNotFound);
        return CheckedLong(static_cast<std::int64_t>((static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) |
                                                     data.nFileSizeLow));
    }

    void makeFolder(const String& path) override {
        if (!CreateDirectoryW(nativePath(path).c_str(), nullptr)) RaiseLastFileError();
    }

    void removeFolder(const String& path) override {
        if (RemoveDirectoryW(nativePath(path).c_str())) return;
        const DWORD e = GetLastError();
        Raise(e == ERROR_FILE_NOT_FOUND || e == ERROR_PATH_NOT_FOUND || e == ERROR_DIRECTORY ? kPathNotFound
                                                                                           : kPathFileAccessError);
    }

    void deleteFile(const String& path) override {
        if (HasWildcards(path.substr(FolderOf(path).size()))) {
            // Every normal file that matches, one after the other.
            const String folder = FolderOf(path);
            String name = firstMatch(path, false);
            if (name.empty()) Raise(kFileNotFound);
            for (; !name.empty(); name = firstMatch(path, false)) deleteFile(folder + name);
            return;
        }
        const std::wstring p = nativePath(path).wstring();
        const DWORD a = GetFileAttributesW(p.c_str());
        if (a == INVALID_FILE_ATTRIBUTES) RaiseLastFileError();
        if (a & FILE_ATTRIBUTE_DIRECTORY) Raise(kFileNotFound);
        if (!DeleteFileW(p.c_str())) RaiseLastFileError();
    }

    std::string readFile(const String& path) override {
        const Handle h(CreateFileW(nativePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!h.ok()) RaiseLastFileError();
        std::string bytes;
        char buffer[65536];
        for (;;) {
            DWORD n = 0;
            if (!ReadFile(h.get(), buffer, sizeof buffer, &n, nullptr)) RaiseLastFileError();
            if (n == 0) break;
            bytes.append(buffer, n);
        }
        return bytes;
    }

    void replaceFile(const String& path, std::string_view bytes) override {
        const std::wstring p = nativePath(path).wstring();
        const DWORD a = GetFileAttributesW(p.c_str());
        if (a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY)) Raise(kPathFileAccessError);
        // Written beside the file and moved over it only once complete.
        std::wstring folder = fs::path(p).parent_path().wstring();
        if (folder.empty()) folder = L".";
        wchar_t temp[MAX_PATH + 1] = {};
        if (!GetTempFileNameW(folder.c_str(), L"kiv", 0, temp)) RaiseLastFileError();
        DWORD failure = 0;
        {
            const Handle h(CreateFileW(temp, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (!h.ok() || !WriteAll(h.get(), bytes) || !FlushFileBuffers(h.get())) failure = GetLastError();
        }
        if (failure == 0 && !MoveFileExW(temp, p.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            failure = GetLastError();
        if (failure != 0) {
            DeleteFileW(temp);
            RaiseFileError(failure);
        }
    }

    void appendFile(const String& path, std::string_view bytes) override {
        const Handle h(CreateFileW(nativePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!h.ok()) RaiseLastFileError();
        LARGE_INTEGER before{}, zero{};
        if (!SetFilePointerEx(h.get(), zero, &before, FILE_END)) RaiseLastFileError();
        if (!WriteAll(h.get(), bytes)) {
            // Half a write is taken back: the file keeps what it held.
            const DWORD e = GetLastError();
            if (SetFilePointerEx(h.get(), before, nullptr, FILE_BEGIN)) SetEndOfFile(h.get());
            RaiseFileError(e);
        }
    }

private:
    static std::wstring wide(const String& s) { return std::wstring(s.begin(), s.end()); }

    const PlatformSettings& settings_;
};

}  // namespace

std::unique_ptr<FileSystem> MakeWindowsFileSystem(const PlatformSettings& settings) {
    return std::make_unique<WindowsFileSystem>(settings);
}

}  // namespace kiv
