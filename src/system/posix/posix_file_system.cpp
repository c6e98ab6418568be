// Files on POSIX through Windows paths. A drive letter stands for a
// configured folder; below it, existing names are found case-blind and ".."
// stops at the drive's root, so no text of a path can reach outside it.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <vector>

#include "frame/code_page.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_errors.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

// Windows refuses longer paths even in their long form.
constexpr std::size_t kLongestPath = 32767;

bool IsSeparator(char16_t c) { return c == u'\\' || c == u'/'; }

bool HasWildcards(const String& s) { return s.find_first_of(u"*?") != String::npos; }

// Characters no Windows file name may hold ("?" and "*" only as patterns).
bool BadNameCharacter(char16_t c) {
    return c < 32 || c == u'*' || c == u'?' || c == u'<' || c == u'>' || c == u'|' || c == u'"';
}

bool Present(const fs::path& p) {
    struct stat st;
    return ::lstat(p.c_str(), &st) == 0;
}

bool Hidden(const std::string& name) { return !name.empty() && name[0] == '.'; }

// "*" any run, "?" one character, letters case-blind; a final ".*" also
// matches a name without a dot, as "x.*" finds "x" on Windows.
bool Matches(const String& pattern, std::size_t p, const String& name, std::size_t n) {
    while (p < pattern.size()) {
        const char16_t c = pattern[p];
        if (c == u'*') {
            for (std::size_t k = n; k <= name.size(); ++k)
                if (Matches(pattern, p + 1, name, k)) return true;
            return false;
        }
        if (n == name.size()) return pattern.compare(p, String::npos, u".*") == 0;
        if (c != u'?' && FoldCase(c) != FoldCase(name[n])) return false;
        ++p;
        ++n;
    }
    return n == name.size();
}

// The folder part of a pattern (up to its last separator, or its drive) and
// the name part.
std::pair<String, String> SplitPattern(const String& pattern) {
    std::size_t cut = pattern.find_last_of(u"\\/");
    if (cut != String::npos) return {pattern.substr(0, cut + 1), pattern.substr(cut + 1)};
    if (pattern.size() >= 2 && pattern[1] == u':') return {pattern.substr(0, 2), pattern.substr(2)};
    return {u"", pattern};
}

class PosixFileSystem final : public FileSystem {
public:
    explicit PosixFileSystem(const PlatformSettings& settings) : settings_(settings) {}

    fs::path nativePath(const String& path) override {
        if (path.find(u'\0') != String::npos || path.size() > kLongestPath) Raise(kBadFileNameOrNumber);
        const bool drive = path.size() >= 2 && path[1] == u':' && path[0] < 0x80 &&
                           std::isalpha(static_cast<unsigned char>(path[0]));
        const bool windows = drive || (path.find(u'\\') != String::npos && path[0] != u'/');
        // A POSIX path passes as it stands, a backslash in it read as a slash.
        if (!windows) {
            String native = path;
            std::replace(native.begin(), native.end(), u'\\', u'/');
            return fs::path(ToUtf8(native));
        }

        String rest = drive ? path.substr(2) : path;
        for (char16_t c : rest)
            if (BadNameCharacter(c) || c == u':') Raise(kBadFileNameOrNumber);
        fs::path root;
        if (drive) {
            root = driveRoot(static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
        } else if (rest.size() >= 2 && IsSeparator(rest[0]) && IsSeparator(rest[1])) {
            Raise(kPathNotFound);  // a network share: no mapping for servers
        } else if (rest[0] == u'\\') {
            root = driveRoot('C');  // the root of the current drive, which is C:
        }
        const bool rooted = !root.empty();

        std::vector<String> parts;
        std::size_t start = 0;
        while (start <= rest.size()) {
            std::size_t end = start;
            while (end < rest.size() && !IsSeparator(rest[end])) ++end;
            String part = rest.substr(start, end - start);
            if (part == u"..") {
                if (!parts.empty() && parts.back() != u"..") parts.pop_back();
                else if (!rooted) parts.push_back(part);  // a relative path may climb; a drive's root may not
            } else if (!part.empty() && part != u".") {
                parts.push_back(std::move(part));
            }
            start = end + 1;
        }
        return LookUp(rooted ? root : fs::path("."), parts, rooted);
    }

    std::string encodeText(const String& text) override {
        return settings_.utf8Files ? ToUtf8(text) : ToCp1252(text);
    }
    String decodeText(std::string_view bytes) override {
        return settings_.utf8Files ? FromUtf8(bytes) : FromCp1252(bytes);
    }

    String firstMatch(const String& pattern, bool foldersToo) override {
        const auto [folderText, written] = SplitPattern(pattern);
        const String namePattern = written.empty() ? String(1, u'*') : written;
        const fs::path folder = folderText.empty() ? fs::path(".") : nativePath(folderText);
        auto acceptable = [&](const fs::path& p, const std::string& name) {
            if (Hidden(name)) return false;
            struct stat st;
            if (::stat(p.c_str(), &st) != 0) return false;
            return S_ISREG(st.st_mode) || (foldersToo && S_ISDIR(st.st_mode));
        };
        if (!HasWildcards(namePattern)) {
            const fs::path p = nativePath(folderText + namePattern);
            const std::string name = p.filename().string();
            return acceptable(p, name) ? FromUtf8(name) : String();
        }
        std::vector<std::string> names;
        std::error_code ec;
        for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
            names.push_back(it->path().filename().string());
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            const String wide = FromUtf8(name);
            if (Matches(namePattern, 0, wide, 0) && acceptable(folder / name, name)) return wide;
        }
        return String();
    }

    bool isFolder(const String& path) override {
        struct stat st;
        return ::stat(nativePath(path).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
    }

    Long fileLength(const String& path) override {
        const fs::path p = nativePath(path);
        struct stat st;
        if (::stat(p.c_str(), &st) != 0) raiseMissing(p, errno);
        if (S_ISDIR(st.st_mode)) Raise(kFileNotFound);
        return CheckedLong(st.st_size);
    }

    void makeFolder(const String& path) override {
        const fs::path p = nativePath(path);
        if (::mkdir(p.c_str(), 0777) != 0) Raise(errno == ENOENT ? kPathNotFound : FileErrorOf(errno));
    }

    void removeFolder(const String& path) override {
        const fs::path p = nativePath(path);
        if (::rmdir(p.c_str()) != 0) Raise(errno == ENOENT || errno == ENOTDIR ? kPathNotFound : kPathFileAccessError);
    }

    void deleteFile(const String& path) override {
        const auto [folderText, namePattern] = SplitPattern(path);
        if (HasWildcards(namePattern)) {
            // Every normal file that matches, one after the other.
            String name = firstMatch(path, false);
            if (name.empty()) Raise(kFileNotFound);
            for (; !name.empty(); name = firstMatch(path, false)) deleteFile(folderText + name);
            return;
        }
        const fs::path p = nativePath(path);
        struct stat st;
        if (::lstat(p.c_str(), &st) != 0) raiseMissing(p, errno);
        if (S_ISDIR(st.st_mode)) Raise(kFileNotFound);
        if (::unlink(p.c_str()) != 0) RaiseFileError(errno);
    }

    std::string readFile(const String& path) override {
        const fs::path p = nativePath(path);
        const int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) raiseMissing(p, errno);
        std::string bytes;
        char buffer[65536];
        for (;;) {
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n < 0 && errno == EINTR) continue;
            if (n < 0) {
                const int e = errno;
                ::close(fd);
                RaiseFileError(e);
            }
            if (n == 0) break;
            bytes.append(buffer, static_cast<std::size_t>(n));
        }
        ::close(fd);
        return bytes;
    }

    void replaceFile(const String& path, std::string_view bytes) override {
        const fs::path p = nativePath(path);
        struct stat st;
        const bool existed = ::stat(p.c_str(), &st) == 0;
        if (existed && S_ISDIR(st.st_mode)) Raise(kPathFileAccessError);
        // Written beside the file and renamed over it only once complete.
        std::string temp = (p.parent_path() / ".kiv-XXXXXX").string();
        const int fd = ::mkstemp(temp.data());
        if (fd < 0) raiseMissing(p, errno);
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, existed ? (st.st_mode & 07777) : (0666 & ~mask));
        const int e = writeAll(fd, bytes) ? (::fsync(fd) == 0 ? 0 : errno) : errno;
        ::close(fd);
        if (e != 0 || ::rename(temp.c_str(), p.c_str()) != 0) {
            const int failure = e != 0 ? e : errno;
            ::unlink(temp.c_str());
            RaiseFileError(failure);
        }
    }

    void appendFile(const String& path, std::string_view bytes) override {
        const fs::path p = nativePath(path);
        const int fd = ::open(p.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0) raiseMissing(p, errno);
        struct stat st;
        const off_t before = ::fstat(fd, &st) == 0 ? st.st_size : -1;
        if (!writeAll(fd, bytes)) {
            // Half a write is taken back: the file keeps what it held.
            const int e = errno;
            if (before >= 0 && ::ftruncate(fd, before) != 0) {}
            ::close(fd);
            RaiseFileError(e);
        }
        ::close(fd);
    }

private:
    fs::path driveRoot(char letter) {
        const auto found = settings_.drives.find(letter);
        if (found == settings_.drives.end()) Raise(kPathNotFound);
        const fs::path root = found->second;
        // Only our own default folder is made, with the Windows folder that
        // INI names without a folder land in; a configured one is used as is.
        if (letter == 'C' && !madeDefault_ && found->second == PlatformSettings::defaultDriveC()) {
            madeDefault_ = true;
            std::error_code ec;
            if (!fs::exists(root, ec) && fs::create_directories(root, ec)) fs::create_directory(root / "Windows", ec);
        }
        return root;
    }

    // Each existing component under its own spelling, found case-blind (the
    // exact spelling first); from the first missing one on, as written.
    static fs::path LookUp(fs::path at, const std::vector<String>& parts, bool rooted) {
        bool found = true;
        for (const String& part : parts) {
            const std::string name = ToUtf8(part);
            if (found && part != u".." && !Present(at / name)) {
                std::string spelling;
                std::error_code ec;
                for (fs::directory_iterator it(at, ec), end; !ec && it != end; it.increment(ec)) {
                    const std::string candidate = it->path().filename().string();
                    if (CaseBlindEqual(FromUtf8(candidate), part) && (spelling.empty() || candidate < spelling))
                        spelling = candidate;
                }
                if (!spelling.empty()) {
                    at /= spelling;
                    continue;
                }
                found = false;
            }
            at /= name;
        }
        if (!rooted && at.native().starts_with("./")) return fs::path(at.native().substr(2));
        return at;
    }

    // 76 when the folder itself is missing, else the file's own error.
    [[noreturn]] static void raiseMissing(const fs::path& p, int errnum) {
        if (errnum == ENOENT) {
            struct stat st;
            const fs::path parent = p.has_parent_path() ? p.parent_path() : fs::path(".");
            if (::stat(parent.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) Raise(kPathNotFound);
        }
        RaiseFileError(errnum);
    }

    static bool writeAll(int fd, std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t n = ::write(fd, bytes.data(), bytes.size());
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) {
                if (n == 0) errno = ENOSPC;
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(n));
        }
        return true;
    }

    const PlatformSettings& settings_;
    bool madeDefault_ = false;
};

}  // namespace

std::unique_ptr<FileSystem> MakePosixFileSystem(const PlatformSettings& settings) {
    return std::make_unique<PosixFileSystem>(settings);
}

}  // namespace kiv
