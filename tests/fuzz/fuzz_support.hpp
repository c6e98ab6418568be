// What the fuzz targets share: a sandbox of temporary folders for the drives
// and the registry, a platform that keeps every effect inside it, and the
// way a broken rule stops the run.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv::fuzz {

namespace fs = std::filesystem;

// A rule of the target was broken: the fuzzer records the input as a crash.
[[noreturn]] inline void Fail(const std::string& what) {
    std::fprintf(stderr, "fuzz rule broken: %s\n", what.c_str());
    std::fflush(stderr);
    std::abort();
}

// True when `p`, made absolute, lies in `root`: by its text, as nothing in
// the sandbox is a link (a name past the system's length limit cannot be
// resolved, and must be judged too).
inline bool Inside(const fs::path& root, const fs::path& p) {
    if (p.empty()) return true;  // names no place: the system refuses it itself
    const fs::path whole = fs::absolute(p).lexically_normal();
    const fs::path base = fs::absolute(root).lexically_normal();
    auto b = base.begin(), w = whole.begin();
    for (; b != base.end() && !b->empty(); ++b, ++w)
        if (w == whole.end() || *b != *w) return false;
    return true;
}

// One folder under the system's temporary folder per process, emptied at
// exit: drive C: and D: under it, the registry store, and the current folder
// (relative paths land there).
class Sandbox {
public:
    Sandbox() {
        // In memory where the system has it: the registry's syncs cost nothing there.
        std::string pattern = (fs::is_directory("/dev/shm") ? "/dev/shm" : "/tmp") + std::string("/kiv-fuzz-XXXXXX");
        if (::mkdtemp(pattern.data()) == nullptr) Fail("no temporary folder");
        root_ = pattern;
        fs::create_directories(root_ / "work");
        if (::chdir((root_ / "work").c_str()) != 0) Fail("cannot enter the temporary folder");
        reset();
    }
    ~Sandbox() {
        std::error_code ec;
        fs::remove_all(root_, ec);
    }
    const fs::path& root() const { return root_; }
    fs::path drive(char letter) const { return root_ / std::string(1, letter); }
    fs::path registry() const { return root_ / "registry"; }

    // Everything a call left behind goes; the drives get their fixed folders.
    void reset() {
        std::error_code ec;
        for (const char* name : {"C", "D", "registry", "work"}) {
            const fs::path p = root_ / name;
            if (fs::exists(p) && !fs::is_empty(p)) {
                for (const auto& entry : fs::directory_iterator(p)) fs::remove_all(entry.path(), ec);
            }
            fs::create_directories(p, ec);
        }
        fs::create_directories(drive('C') / "Windows", ec);
        fs::create_directories(drive('C') / "Dati" / "Sub", ec);
    }

    PlatformSettings settings() const {
        PlatformSettings s;
        s.drives['C'] = drive('C').string();
        s.drives['D'] = drive('D').string();
        s.registryFolder = registry().string();
        s.pins = {{"app", "FuzzHost"}, {"winver", "Windows 10 10.0.19045"}, {"winbit", "64"},
                  {"pcname", "FUZZPC"}, {"username", "fuzz"}, {"ip", "10.0.0.1"}};
        return s;
    }

private:
    fs::path root_;
};

// A host that shows nothing and starts nothing, with a fixed clock.
class QuietHost final : public Host {
public:
    int messageBox(MsgIcon, const String&, const String&) override { return 1; }
    void beep() override {}
    Date now() override { return Date{46096.586909722}; }  // 2026-03-15 14:05:09
    String applicationName() override { return u"FuzzHost"; }
    bool startProgram(const String&) override { return false; }
    bool openDocument(const String&) override { return false; }
};

// The system's file system, refusing (75, path/file access error) any path
// that would reach outside the sandbox, so a call can write only there.
class FencedFiles final : public FileSystem {
public:
    FencedFiles(std::unique_ptr<FileSystem> inner, fs::path root) : inner_(std::move(inner)), root_(std::move(root)) {}

    fs::path nativePath(const String& path) override {
        fs::path p = inner_->nativePath(path);
        if (!Inside(root_, p)) Raise(kPathFileAccessError);
        return p;
    }
    std::string encodeText(const String& text) override { return inner_->encodeText(text); }
    String decodeText(std::string_view bytes) override { return inner_->decodeText(bytes); }
    String firstMatch(const String& pattern, bool foldersToo) override {
        fencePattern(pattern);
        return inner_->firstMatch(pattern, foldersToo);
    }
    bool isFolder(const String& path) override { return nativePath(path), inner_->isFolder(path); }
    Long fileLength(const String& path) override { return nativePath(path), inner_->fileLength(path); }
    void makeFolder(const String& path) override { nativePath(path), inner_->makeFolder(path); }
    void removeFolder(const String& path) override { nativePath(path), inner_->removeFolder(path); }
    void deleteFile(const String& path) override { fencePattern(path), inner_->deleteFile(path); }
    std::string readFile(const String& path) override { return nativePath(path), inner_->readFile(path); }
    void replaceFile(const String& path, std::string_view bytes) override {
        nativePath(path), inner_->replaceFile(path, bytes);
    }
    void appendFile(const String& path, std::string_view bytes) override {
        nativePath(path), inner_->appendFile(path, bytes);
    }

private:
    // A pattern's folder part (its name part may hold wildcards).
    void fencePattern(const String& pattern) {
        const std::size_t cut = pattern.find_last_of(u"\\/");
        if (cut != String::npos) nativePath(pattern.substr(0, cut + 1));
        else if (pattern.size() >= 2 && pattern[1] == u':') nativePath(pattern.substr(0, 2));
    }

    std::unique_ptr<FileSystem> inner_;
    fs::path root_;
};

class SandboxPlatform final : public PosixPlatform {
public:
    explicit SandboxPlatform(const Sandbox& sandbox)
        : PosixPlatform(sandbox.settings()), files_(MakePosixFileSystem(settings()), sandbox.root()) {}
    Host& host() override { return host_; }
    FileSystem& files() override { return files_; }

private:
    QuietHost host_;
    FencedFiles files_;
};

}  // namespace kiv::fuzz
