// The host's numbered files on POSIX. What is printed to a file is kept
// until the file is closed and then written in one piece (a new content
// replaces the old by rename, an append is taken back if it cannot be
// completed), so a failure or a crash never leaves a torn file.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "system/posix/posix_errors.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

struct OpenFile {
    String path;        // as the host wrote it, for the writes at close
    std::string where;  // the mapped path, to tell one file from another
    FileMode mode;
    std::string bytes;  // Input: the whole file; Output, Append: what was printed
    std::size_t next = 0;  // Input: the next byte to read
    Long lengthBefore = 0;  // Append: the file's length when opened
    int fd = -1;        // Binary
    bool pastEnd = false;  // Binary: a read went beyond the last byte
};

class PosixFileTable final : public FileTable {
public:
    Integer freeNumber() override {
        for (int n = kFirst; n <= kLast; ++n)
            if (!slots_[n]) return static_cast<Integer>(n);
        Raise(kTooManyFiles);
    }

    void open(const String& path, FileMode mode, Long number) override {
        if (number < kFirst || number > kLast) Raise(kBadFileNameOrNumber);
        if (slots_[number]) Raise(kFileAlreadyOpen);
        FileSystem& files = CurrentPlatform().files();
        const fs::path native = files.nativePath(path);
        std::error_code ec;
        const fs::path where = fs::weakly_canonical(native, ec);
        if (ec) RaiseFileError(ec.value());  // a name too long for the system, a loop of links
        OpenFile f{path, where.string(), mode, {}, 0, 0, -1, false};
        // One writer per file; readers may share.
        const bool writes = mode == FileMode::Output || mode == FileMode::Append;
        for (const auto& other : slots_)
            if (other && other->where == f.where && (writes || other->mode == FileMode::Output ||
                                                     other->mode == FileMode::Append))
                Raise(kFileAlreadyOpen);
        if (files.isFolder(path)) Raise(kPathFileAccessError);
        switch (mode) {
            case FileMode::Input:
                f.bytes = files.readFile(path);
                break;
            case FileMode::Output:
            case FileMode::Append: {
                // The file exists from the open on, as the host expects; its
                // content changes only at close.
                const int fd = ::open(native.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
                if (fd < 0) raiseOpenError(errno);
                struct stat st;
                if (::fstat(fd, &st) == 0) f.lengthBefore = CheckedLong(st.st_size);
                ::close(fd);
                break;
            }
            case FileMode::Binary:
                f.fd = ::open(native.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
                if (f.fd < 0 && (errno == EACCES || errno == EROFS)) f.fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
                if (f.fd < 0) raiseOpenError(errno);
                break;
        }
        slots_[number] = std::move(f);
    }

    void close(Long number) override {
        OpenFile& f = entry(number);
        OpenFile taken = std::move(f);
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
        if (f.mode != FileMode::Input) Raise(kBadFileMode);
        if (f.next >= f.bytes.size()) Raise(kInputPastEndOfFile);
        const std::size_t end = f.bytes.find_first_of("\r\n", f.next);
        const std::size_t stop = end == std::string::npos ? f.bytes.size() : end;
        const String line = CurrentPlatform().files().decodeText(std::string_view(f.bytes).substr(f.next, stop - f.next));
        f.next = stop;
        if (f.next < f.bytes.size() && f.bytes[f.next] == '\r') ++f.next;
        if (f.next < f.bytes.size() && f.bytes[f.next] == '\n' && (f.next == stop || f.next == stop + 1)) ++f.next;
        return line;
    }

    void print(Long number, const String& text, bool lineEnd) override {
        OpenFile& f = entry(number);
        if (f.mode != FileMode::Output && f.mode != FileMode::Append) Raise(kBadFileMode);
        f.bytes += CurrentPlatform().files().encodeText(lineEnd ? text + u"\r\n" : text);
    }

    String readByteAt(Long number, Long position) override {
        OpenFile& f = entry(number);
        if (f.mode != FileMode::Binary) Raise(kBadFileMode);
        if (position < 1) Raise(kBadRecordNumber);
        char byte = 0;
        ssize_t n;
        do n = ::pread(f.fd, &byte, 1, static_cast<off_t>(position) - 1);
        while (n < 0 && errno == EINTR);
        if (n < 0) RaiseFileError(errno);
        f.pastEnd = n == 0;
        if (n == 0) return String();
        return CurrentPlatform().files().decodeText(std::string_view(&byte, 1));
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
            case FileMode::Input: return CheckedLong(static_cast<std::int64_t>(f.bytes.size()));
            case FileMode::Output: return CheckedLong(static_cast<std::int64_t>(f.bytes.size()));
            case FileMode::Append: return CheckedLong(f.lengthBefore + static_cast<std::int64_t>(f.bytes.size()));
            case FileMode::Binary: {
                struct stat st;
                if (::fstat(f.fd, &st) != 0) RaiseFileError(errno);
                return CheckedLong(st.st_size);
            }
        }
        return 0;
    }

private:
    OpenFile& entry(Long number) {
        if (number < kFirst || number > kLast || !slots_[number]) Raise(kBadFileNameOrNumber);
        return *slots_[number];
    }

    // Writes what was printed, then lets the file go.
    static void finish(OpenFile& f) {
        if (f.fd >= 0) ::close(f.fd);
        if (f.mode == FileMode::Output) CurrentPlatform().files().replaceFile(f.path, f.bytes);
        if (f.mode == FileMode::Append && !f.bytes.empty()) CurrentPlatform().files().appendFile(f.path, f.bytes);
    }

    [[noreturn]] static void raiseOpenError(int errnum) {
        if (errnum == ENOENT) Raise(kPathNotFound);  // with O_CREAT only the folder can be missing
        RaiseFileError(errnum);
    }

    std::array<std::optional<OpenFile>, kLast + 1> slots_;
};

}  // namespace

std::unique_ptr<FileTable> MakePosixFileTable(const PlatformSettings&) { return std::make_unique<PosixFileTable>(); }

}  // namespace kiv
