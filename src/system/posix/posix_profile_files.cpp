#include "system/posix/posix_profile_files.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <exception>

#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;

class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }
    void reset(int fd = -1) {
        if (fd_ >= 0) ::close(fd_);
        fd_ = fd;
    }
    // Closes now, reporting whether the last writes reached the file.
    bool close() {
        const int fd = fd_;
        fd_ = -1;
        return ::close(fd) == 0;
    }
    int get() const { return fd_; }

private:
    int fd_;
};

std::optional<std::string> ReadAll(int fd) {
    std::string bytes;
    struct stat st {};
    if (::fstat(fd, &st) == 0 && st.st_size > 0) bytes.reserve(static_cast<std::size_t>(st.st_size));
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return std::nullopt;
        if (n == 0) return bytes;
        bytes.append(buffer, static_cast<std::size_t>(n));
    }
}

bool WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// Opens and locks the file that stands at `name` now. A writer that waited
// may find the file it locked already renamed over or removed by the one
// before it; then it locks the file that took its place.
int OpenLocked(const std::string& name, bool& created, struct stat& held) {
    for (;;) {
        created = false;
        int fd = ::open(name.c_str(), O_RDWR | O_CLOEXEC);
        if (fd < 0 && errno == ENOENT) {
            fd = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (fd < 0 && errno == EEXIST) continue;
            created = fd >= 0;
        }
        if (fd < 0) return -1;
        int locked;
        while ((locked = ::flock(fd, LOCK_EX)) != 0 && errno == EINTR) {
        }
        struct stat now {};
        if (locked == 0 && ::fstat(fd, &held) == 0 && ::stat(name.c_str(), &now) == 0 && held.st_dev == now.st_dev &&
            held.st_ino == now.st_ino)
            return fd;
        ::close(fd);
        if (locked != 0) return -1;
    }
}

// A name as the platform's C-string calls see it: up to its first NUL.
String CText(const String& s) { return s.substr(0, s.find(u'\0')); }

class PosixProfileFiles final : public ProfileFiles {
public:
    explicit PosixProfileFiles(bool flush) : flush_(flush) {}

    String getString(const String& section, const String& key, const String& fallback, Long bufferSize,
                     const String& file) override {
        String result = CText(fallback);
        while (!result.empty() && result.back() == u' ') result.pop_back();
        try {
            if (const auto path = pathOf(file))
                if (const auto bytes = ReadWholeFile(*path)) {
                    FileSystem& files = CurrentPlatform().files();
                    const auto value = ini::Lookup(*bytes, files.encodeText(CText(section)),
                                                   files.encodeText(CText(key)), names());
                    if (value) result = files.decodeText(*value);
                }
        } catch (const std::exception&) {
            // An unmapped drive or a file that cannot be read: the default.
        }
        const std::size_t room = bufferSize > 0 ? static_cast<std::size_t>(bufferSize) - 1 : 0;
        if (result.size() > room) result.resize(room);
        return result;
    }

    Long writeString(const String& section, const std::optional<String>& key, const std::optional<String>& value,
                     const String& file) override {
        try {
            const auto path = pathOf(file);
            if (!path) return 0;
            FileSystem& files = CurrentPlatform().files();
            const std::string s = files.encodeText(CText(section));
            const std::optional<std::string> k = key ? std::optional(files.encodeText(CText(*key))) : std::nullopt;
            const std::optional<std::string> v =
                value ? std::optional(files.encodeText(CText(*value))) : std::nullopt;
            const auto edit = [&](std::string_view text) { return ini::Update(text, s, k, v, names()); };
            return ReplaceLocked(*path, edit, flush_) ? 1 : 0;
        } catch (const std::exception&) {
            return 0;
        }
    }

private:
    // The platform's rule: a name without a folder is a file of the Windows
    // folder; an empty name is no file at all.
    static std::optional<fs::path> pathOf(const String& file) {
        const String name = CText(file);
        if (name.empty()) return std::nullopt;
        const bool folder = name.find_first_of(u"\\/") != String::npos || (name.size() >= 2 && name[1] == u':');
        return CurrentPlatform().files().nativePath(folder ? name : u"C:\\Windows\\" + name);
    }

    static ini::NameMatch names() {
        return ini::NameMatch([](std::string_view bytes) { return CurrentPlatform().files().decodeText(bytes); });
    }

    bool flush_;
};

}  // namespace

std::optional<std::string> ReadWholeFile(const fs::path& path) {
    const Descriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) return std::nullopt;
    return ReadAll(fd.get());
}

fs::path TemporaryBeside(const fs::path& path) {
    return path.parent_path() / ("." + path.filename().string() + ".kivnew");
}

bool ReplaceLocked(const fs::path& path, const std::function<ini::Edit(std::string_view)>& edit, bool flush) {
    // A link stays a link: its target is what gets replaced.
    std::error_code ec;
    fs::path target = path;
    if (fs::is_symlink(path, ec))
        if (fs::path real = fs::weakly_canonical(path, ec); !ec) target = real;
    const std::string name = target.string();

    bool created = false;
    struct stat held {};
    Descriptor file(OpenLocked(name, created, held));
    if (file.get() < 0) return false;
    // The lock is ours, so is the name: a file we made only to lock it goes
    // again when nothing is written.
    const auto fail = [&] {
        if (created) ::unlink(name.c_str());
        return false;
    };
    // The read-only attribute holds for every user, as on Windows.
    if (!S_ISREG(held.st_mode) || (held.st_mode & 0222) == 0) return fail();
    const auto bytes = ReadAll(file.get());
    if (!bytes) return fail();
    const ini::Edit result = edit(*bytes);
    if (result.outcome == ini::Edit::Refused) return fail();
    if (result.outcome == ini::Edit::Unchanged) {
        if (created) ::unlink(name.c_str());
        return true;
    }

    const fs::path temporary = TemporaryBeside(target);
    Descriptor out(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (out.get() < 0) return fail();
    bool written = WriteAll(out.get(), result.text) && ::fchmod(out.get(), held.st_mode & 07777) == 0;
    if (::fchown(out.get(), held.st_uid, held.st_gid) != 0) {
        // Only the owner's own files keep their owner; nothing is lost.
    }
    if (written && flush) written = ::fsync(out.get()) == 0;
    written = out.close() && written;
    if (!written || ::rename(temporary.c_str(), name.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return fail();
    }
    if (flush) {
        // The rename itself reaches the disk with the folder.
        const fs::path folder = target.parent_path().empty() ? fs::path(".") : target.parent_path();
        const Descriptor dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (dir.get() >= 0) ::fsync(dir.get());
    }
    return true;
}

std::unique_ptr<ProfileFiles> MakePosixProfileFiles(const PlatformSettings&, bool flush) {
    return std::make_unique<PosixProfileFiles>(flush);
}

std::unique_ptr<ProfileFiles> MakePosixProfileFiles(const PlatformSettings& settings) {
    return MakePosixProfileFiles(settings, true);
}

}  // namespace kiv
