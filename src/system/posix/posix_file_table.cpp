// The host's numbered files on POSIX: the system's part of them.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "system/numbered_files.hpp"
#include "system/posix/posix_errors.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RaiseOpenError(int errnum) {
    if (errnum == ENOENT) Raise(kPathNotFound);  // with O_CREAT only the folder can be missing
    RaiseFileError(errnum);
}

class PosixBinaryFile final : public BinaryFile {
public:
    explicit PosixBinaryFile(int fd) : fd_(fd) {}
    ~PosixBinaryFile() override { ::close(fd_); }

    bool readAt(std::uint64_t offset, char& byte) override {
        ssize_t n;
        do n = ::pread(fd_, &byte, 1, static_cast<off_t>(offset));
        while (n < 0 && errno == EINTR);
        if (n < 0) RaiseFileError(errno);
        return n == 1;
    }
    std::int64_t size() override {
        struct stat st;
        if (::fstat(fd_, &st) != 0) RaiseFileError(errno);
        return st.st_size;
    }

private:
    int fd_;
};

class PosixFileTable final : public NumberedFiles {
protected:
    String identity(const fs::path& native) override {
        std::error_code ec;
        const fs::path where = fs::weakly_canonical(native, ec);
        if (ec) RaiseFileError(ec.value());  // a name too long for the system, a loop of links
        const std::string text = where.string();
        return String(text.begin(), text.end());  // compared, never shown: bytes as units
    }

    std::int64_t touch(const fs::path& native) override {
        const int fd = ::open(native.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0) RaiseOpenError(errno);
        struct stat st;
        const std::int64_t length = ::fstat(fd, &st) == 0 ? st.st_size : 0;
        ::close(fd);
        return length;
    }

    std::unique_ptr<BinaryFile> openBinary(const fs::path& native) override {
        int fd = ::open(native.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0 && (errno == EACCES || errno == EROFS)) fd = ::open(native.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) RaiseOpenError(errno);
        return std::make_unique<PosixBinaryFile>(fd);
    }
};

}  // namespace

std::unique_ptr<FileTable> MakePosixFileTable(const PlatformSettings&) { return std::make_unique<PosixFileTable>(); }

}  // namespace kiv
