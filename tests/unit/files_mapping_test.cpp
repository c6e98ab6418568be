// The drive mapping is the boundary of every file operation: whatever the
// text of a path, it stays under its drive's folder. Also the all-or-nothing
// writes and the host's file table, on real files in a temporary folder.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "frame/cl_kiv.hpp"
#include "frame/strings.hpp"
#include "test_support.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;
using testing::ErrorOf;

std::string Slurp(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

class Mapping : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/kiv-map-XXXXXX";
        base_ = mkdtemp(pattern);
        c_ = base_ / "c";
        fs::create_directories(c_ / "Data");
        std::ofstream(c_ / "Data" / "X.INI") << "x";
        settings_.drives['C'] = c_.string();
        settings_.drives['D'] = (base_ / "d").string();
        files_ = MakePosixFileSystem(settings_);
    }
    void TearDown() override { fs::remove_all(base_); }
    fs::path map(const String& p) { return files_->nativePath(p); }

    fs::path base_, c_;
    PlatformSettings settings_;
    std::unique_ptr<FileSystem> files_;
};

TEST_F(Mapping, DriveFolderSlashesAndCaseBlindExistingNames) {
    EXPECT_EQ(map(u"C:\\Data\\X.INI"), c_ / "Data" / "X.INI");
    EXPECT_EQ(map(u"c:\\DATA\\x.ini"), c_ / "Data" / "X.INI");
    EXPECT_EQ(map(u"c:/data/x.ini"), c_ / "Data" / "X.INI");
    // New names as written, also below a new folder.
    EXPECT_EQ(map(u"C:\\data\\New\\f.TXT"), c_ / "Data" / "New" / "f.TXT");
    EXPECT_EQ(map(u"C:"), c_);
    EXPECT_EQ(map(u"\\Data"), c_ / "Data");  // the root of the current drive
    // The exact spelling wins over another that differs in case only.
    fs::create_directory(c_ / "DATA");
    EXPECT_EQ(map(u"C:\\DATA"), c_ / "DATA");
    EXPECT_EQ(map(u"C:\\Data"), c_ / "Data");
}

TEST_F(Mapping, DotDotNeverClimbsAboveTheDrive) {
    EXPECT_EQ(map(u"C:\\..\\..\\etc\\passwd"), c_ / "etc" / "passwd");
    EXPECT_EQ(map(u"C:..\\x"), c_ / "x");
    EXPECT_EQ(map(u"C:\\Data\\..\\..\\x"), c_ / "x");
    EXPECT_EQ(map(u"C:\\Data\\.\\..\\Data\\X.INI"), c_ / "Data" / "X.INI");
    EXPECT_EQ(map(u"\\..\\.."), c_);
    // Whatever the text: an error, or a path inside the drive's folder.
    std::mt19937 random(12);
    const String pieces[] = {u"\\", u"/", u"..", u".", u"a", u"Data", u"...", u" ", u"C:"};
    for (int round = 0; round < 3000; ++round) {
        String path = u"C:";
        const int n = static_cast<int>(random() % 12);
        for (int i = 0; i < n; ++i) path += pieces[random() % std::size(pieces)];
        try {
            const fs::path p = map(path).lexically_normal();
            const auto [end, rest] = std::mismatch(c_.begin(), c_.end(), p.begin(), p.end());
            EXPECT_EQ(end, c_.end()) << ToUtf8(path) << " -> " << p;
        } catch (const RuntimeError&) {
        }
    }
}

TEST_F(Mapping, UnmappedDrivesAndSharesAreNotFound) {
    EXPECT_EQ(ErrorOf([&] { map(u"Q:\\x"); }), kPathNotFound);
    EXPECT_EQ(ErrorOf([&] { map(u"\\\\server\\share\\x"); }), kPathNotFound);
    EXPECT_EQ(ErrorOf([&] { map(u"\\\\"); }), kPathNotFound);  // the two backslashes alone
    EXPECT_EQ(map(u"D:\\x"), base_ / "d" / "x");  // mapped, even before its folder exists
}

TEST_F(Mapping, NamesNoWindowsFileCanHave) {
    EXPECT_EQ(ErrorOf([&] { map(String(u"C:\\a") + u'\0' + u"b"); }), kBadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([&] { map(String(u"/tmp/a") + u'\0'); }), kBadFileNameOrNumber);
    for (const char16_t* bad :
         {u"C:\\a?b", u"C:\\a*", u"C:\\a:b", u"C:\\a\x01", u"C:\\a\x1F", u"C:\\a|b", u"C:\\a\"b", u"C:\\a<b", u"C:\\a>b"})
        EXPECT_EQ(ErrorOf([&] { map(bad); }), kBadFileNameOrNumber) << ToUtf8(bad);
    EXPECT_EQ(map(u"C:\\a b"), c_ / "a b");  // the blank, first of the allowed characters
    // Not a drive letter, though the low byte of U+0143 is "C".
    EXPECT_EQ(ErrorOf([&] { map(u"\u0143:\\x"); }), kBadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([&] { map(u"C:\\" + String(100000, u'a')); }), kBadFileNameOrNumber);
    // 32767 characters in all are the most a path may have.
    EXPECT_EQ(map(u"C:\\" + String(32764, u'a')), c_ / std::string(32764, 'a'));
    EXPECT_EQ(ErrorOf([&] { map(u"C:\\" + String(32765, u'a')); }), kBadFileNameOrNumber);
    // Long but possible for Windows: mapped, and the file system says the rest.
    String deep = u"C:";
    for (int i = 0; i < 3000; ++i) deep += u"\\ab";
    EXPECT_EQ(ErrorOf([&] { files_->readFile(deep); }), kBadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([&] { files_->readFile(u"C:\\" + String(300, u'n')); }), kBadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([&] { files_->replaceFile(u"C:\\" + String(300, u'n'), "x"); }), kBadFileNameOrNumber);
}

TEST_F(Mapping, PosixPathsPassAsTheyStand) {
    EXPECT_EQ(map(u"/tmp/x.txt"), fs::path("/tmp/x.txt"));
    EXPECT_EQ(map(u"../rel/y"), fs::path("../rel/y"));
    EXPECT_EQ(map(u"/tmp/x\\y"), fs::path("/tmp/x/y"));
    EXPECT_EQ(map(u"rel/a:b"), fs::path("rel/a:b"));  // a colon is no Windows name's, but a POSIX one's
    EXPECT_EQ(map(u"sub\\f.txt"), fs::path("sub/f.txt"));
    EXPECT_EQ(map(u"sub\\.."), fs::path("."));  // nothing left of a relative Windows path: here
    EXPECT_EQ(map(u"a\\b"), fs::path("a/b"));     // a backslash second is no share
}

TEST(DefaultDrive, MadeWithItsWindowsFolderOnlyWhenItIsOurs) {
    char pattern[] = "/tmp/kiv-xdg-XXXXXX";
    const fs::path xdg = mkdtemp(pattern);
    const char* old = getenv("XDG_DATA_HOME");
    const std::string saved = old ? old : "";
    setenv("XDG_DATA_HOME", xdg.c_str(), 1);
    PlatformSettings ours;
    ours.drives['C'] = PlatformSettings::defaultDriveC();
    MakePosixFileSystem(ours)->nativePath(u"C:\\x.ini");
    EXPECT_TRUE(fs::is_directory(xdg / "kiv" / "drive-c" / "Windows"));
    EXPECT_TRUE(fs::is_empty(xdg / "kiv" / "drive-c" / "Windows"));
    PlatformSettings given;
    given.drives['C'] = (xdg / "given").string();
    MakePosixFileSystem(given)->nativePath(u"C:\\x.ini");
    EXPECT_FALSE(fs::exists(xdg / "given"));
    if (old) setenv("XDG_DATA_HOME", saved.c_str(), 1);
    else unsetenv("XDG_DATA_HOME");
    fs::remove_all(xdg);
}

TEST_F(Mapping, MatchingSkipsHiddenEntriesAndFolders) {
    std::ofstream(c_ / ".hidden.txt") << "";
    fs::create_directory(c_ / "folder.txt");
    std::ofstream(c_ / "Note.TXT") << "";
    std::ofstream(c_ / "plain") << "";
    EXPECT_EQ(files_->firstMatch(u"C:\\*.txt"), u"Note.TXT");
    EXPECT_EQ(files_->firstMatch(u"c:\\note.txt"), u"Note.TXT");
    EXPECT_EQ(files_->firstMatch(u"C:\\.hidden.txt"), u"");
    EXPECT_EQ(files_->firstMatch(u"C:\\folder.txt"), u"");
    EXPECT_EQ(files_->firstMatch(u"C:\\folder.txt", true), u"folder.txt");
    EXPECT_EQ(files_->firstMatch(u"C:\\plain.*"), u"plain");  // "x.*" finds "x"
    EXPECT_EQ(files_->firstMatch(u"C:\\pl?in"), u"plain");
    EXPECT_EQ(files_->firstMatch(u"C:\\pl?n"), u"");
    EXPECT_EQ(files_->firstMatch(u"C:\\nowhere\\*"), u"");
    EXPECT_EQ(files_->firstMatch(u"c:no*"), u"Note.TXT");  // a drive with no separator: its root
    EXPECT_EQ(files_->firstMatch(u"C:"), u"Note.TXT");     // the drive alone: any file at its root
    const fs::path here = fs::current_path();
    fs::current_path(c_);
    const String relative = files_->firstMatch(u"no*");  // no folder at all: the current one
    fs::current_path(here);
    EXPECT_EQ(relative, u"Note.TXT");
}

// A write that cannot complete (here: beyond the process's file-size limit,
// as a full disk would stop it) leaves the file as it was, an empty one too.
TEST_F(Mapping, FailedWritesLeaveTheOldContent) {
    files_->replaceFile(u"C:\\keep.txt", "old content");
    files_->replaceFile(u"C:\\empty", "");
    signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);
    rlimit small = saved;
    small.rlim_cur = 16;
    setrlimit(RLIMIT_FSIZE, &small);
    const int replaced = ErrorOf([&] { files_->replaceFile(u"C:\\keep.txt", std::string(100, 'n')); });
    const int appended = ErrorOf([&] { files_->appendFile(u"C:\\keep.txt", std::string(100, 'n')); });
    const int toEmpty = ErrorOf([&] { files_->appendFile(u"C:\\empty", std::string(100, 'n')); });
    setrlimit(RLIMIT_FSIZE, &saved);
    signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(replaced, kDiskFull);
    EXPECT_EQ(appended, kDiskFull);
    EXPECT_EQ(toEmpty, kDiskFull);
    EXPECT_EQ(Slurp(c_ / "keep.txt"), "old content");
    EXPECT_EQ(Slurp(c_ / "empty"), "");
    int entries = 0;
    for (auto& e : fs::directory_iterator(c_)) entries += e.path().filename() != "Data";
    EXPECT_EQ(entries, 2);  // no temporary file left behind
    // A folder where the file should be is refused and left alone.
    EXPECT_EQ(ErrorOf([&] { files_->replaceFile(u"C:\\Data", "x"); }), kPathFileAccessError);
    EXPECT_TRUE(fs::is_directory(c_ / "Data"));
}

class Table : public Mapping {
protected:
    void SetUp() override {
        Mapping::SetUp();
        platform_ = std::make_shared<PosixPlatform>(settings_);
        InstallPlatform(platform_);
    }
    void TearDown() override {
        testing::RestoreHost();
        Mapping::TearDown();
    }
    FileTable& table() { return platform_->fileTable(); }
    std::shared_ptr<PosixPlatform> platform_;
};

TEST_F(Table, NumbersFromOneTo511) {
    EXPECT_EQ(table().freeNumber(), 1);
    for (Long bad : {0, -1, 512})
        EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\a.txt", FileMode::Output, bad); }), kBadFileNameOrNumber);
    for (Long n = 1; n <= 511; ++n) table().open(u"C:\\f" + FromUtf8(std::to_string(n)), FileMode::Output, n);
    EXPECT_EQ(ErrorOf([&] { table().freeNumber(); }), kTooManyFiles);
    table().close(7);
    EXPECT_EQ(table().freeNumber(), 7);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\g", FileMode::Output, 8); }), kFileAlreadyOpen);
    table().closeAll();
    EXPECT_EQ(table().freeNumber(), 1);
    EXPECT_EQ(ErrorOf([&] { table().close(1); }), kBadFileNameOrNumber);
    EXPECT_EQ(ErrorOf([&] { table().lineInput(512); }), kBadFileNameOrNumber);
}

TEST_F(Table, PrintedTextReachesTheFileWholeAtClose) {
    table().open(u"C:\\out.txt", FileMode::Output, 1);
    table().print(1, u"uno");
    table().print(1, u"d\u00E8", false);
    EXPECT_EQ(table().length(1), 7);
    EXPECT_EQ(Slurp(c_ / "out.txt"), "");  // made at the open, filled at the close
    EXPECT_EQ(ErrorOf([&] { table().open(u"c:\\OUT.txt", FileMode::Input, 2); }), kFileAlreadyOpen);
    table().close(1);
    EXPECT_EQ(Slurp(c_ / "out.txt"), "uno\r\nd\xE8");
    table().open(u"C:\\out.txt", FileMode::Append, 1);
    table().print(1, u"");
    EXPECT_EQ(table().length(1), 9);
    table().close(1);
    EXPECT_EQ(Slurp(c_ / "out.txt"), "uno\r\nd\xE8\r\n");
}

TEST_F(Table, LinesEndAtCrLfOrBoth) {
    files_->replaceFile(u"C:\\in.txt", "a\r\nb\nc\rd\r\n\r\ne");
    table().open(u"C:\\in.txt", FileMode::Input, 3);
    for (const char16_t* expected : {u"a", u"b", u"c", u"d", u"", u"e"}) {
        EXPECT_FALSE(table().atEnd(3));
        EXPECT_EQ(table().lineInput(3), expected);
    }
    EXPECT_TRUE(table().atEnd(3));
    EXPECT_EQ(ErrorOf([&] { table().lineInput(3); }), kInputPastEndOfFile);
    EXPECT_EQ(ErrorOf([&] { table().print(3, u"x"); }), kBadFileMode);
    EXPECT_EQ(ErrorOf([&] { table().readByteAt(3, 1); }), kBadFileMode);
    table().close(3);
}

TEST_F(Table, OpeningErrors) {
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\none.txt", FileMode::Input, 1); }), kFileNotFound);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\none\\x.txt", FileMode::Output, 1); }), kPathNotFound);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\none\\x.txt", FileMode::Input, 1); }), kPathNotFound);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\Data", FileMode::Output, 1); }), kPathFileAccessError);
    EXPECT_EQ(ErrorOf([&] { table().open(u"Q:\\x", FileMode::Output, 1); }), kPathNotFound);
    EXPECT_EQ(table().freeNumber(), 1);  // nothing left half open
}

TEST_F(Table, BinaryReadsBytesByPosition) {
    files_->replaceFile(u"C:\\bin", "ab\x80");
    table().open(u"C:\\bin", FileMode::Binary, 2);
    table().open(u"C:\\bin", FileMode::Binary, 4);  // readers share a file
    EXPECT_EQ(table().readByteAt(2, 3), u"\u20AC");
    EXPECT_EQ(table().readByteAt(4, 1), u"a");
    EXPECT_FALSE(table().atEnd(2));
    EXPECT_EQ(table().readByteAt(2, 4), u"");
    EXPECT_TRUE(table().atEnd(2));
    EXPECT_EQ(ErrorOf([&] { table().readByteAt(2, 0); }), kBadRecordNumber);
    EXPECT_EQ(table().length(2), 3);
    table().closeAll();
}

TEST_F(Table, LogNameComesFromTheHostsName) {
    struct Named : testing::PinnedHost {
        using PinnedHost::PinnedHost;
        String applicationName() override { return u"my app.v2"; }
    };
    auto named = std::make_shared<Named>(Date{DateFromParts(2026, 11, 15).serial + TimeFromParts(8, 48, 3).serial});
    struct WithHost : PosixPlatform {
        WithHost(PlatformSettings s, std::shared_ptr<Host> h) : PosixPlatform(std::move(s)), h_(std::move(h)) {}
        Host& host() override { return *h_; }
        std::shared_ptr<Host> h_;
    };
    InstallPlatform(std::make_shared<WithHost>(settings_, named));
    Cl_KIV kiv;
    kiv.Dbg_Log(Variant(u"\u00A7Start"));
    // An hour of one digit: the date text is 18 characters, padded to 20.
    EXPECT_EQ(Slurp(c_ / "my_app_v2_Dbg.LOG"), "** 15/11/2026 8.48.03  : Start\r\n");
}

}  // namespace
}  // namespace kiv

namespace kiv {
namespace {

// The folder goes to the desktop's opener as one argument, mapped, with no
// shell between: blanks, quotes and dollars in it reach the program untouched.
TEST_F(Table, ExplorerOpensTheMappedFolderWithoutAShell) {
    const fs::path bin = base_ / "bin";
    fs::create_directory(bin);
    {
        std::ofstream script(bin / "xdg-open");
        script << "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > \"$(dirname \"$0\")/seen.tmp\"\n"
                  "mv \"$(dirname \"$0\")/seen.tmp\" \"$(dirname \"$0\")/seen\"\n";
    }
    fs::permissions(bin / "xdg-open", fs::perms::owner_all);
    const char* old = getenv("PATH");
    const std::string saved = old ? old : "";
    setenv("PATH", (bin.string() + ":/usr/bin:/bin").c_str(), 1);
    std::unique_ptr<Host> host = MakePosixHost(settings_);
    const bool started = host->startProgram(u"EXPLORER /e, /root,  c:\\data\\a b'; $x");
    const bool other = host->startProgram(u"NOTEPAD.EXE C:\\x.txt");
    for (int i = 0; i < 200 && !fs::exists(bin / "seen"); ++i) usleep(10000);
    setenv("PATH", "/nonexistent", 1);
    const bool withoutOpener = host->startProgram(u"EXPLORER  C:\\Data");
    setenv("PATH", saved.c_str(), 1);
    EXPECT_TRUE(started);
    EXPECT_FALSE(other);
    EXPECT_FALSE(withoutOpener);
    EXPECT_EQ(Slurp(bin / "seen"), "1|" + (c_ / "Data" / "a b'; $x").string());
}

}  // namespace
}  // namespace kiv

namespace kiv {
namespace {

// A host started without standard input gets descriptor 0 for the next file
// it opens: a file like any other.
TEST_F(Table, OpensOnDescriptorZero) {
    files_->replaceFile(u"C:\\bin", "z");
    const int standardInput = dup(0);
    close(0);
    const int output = ErrorOf([&] {
        table().open(u"C:\\zero.txt", FileMode::Output, 1);
        table().close(1);
    });
    const int append = ErrorOf([&] {
        table().open(u"C:\\bin", FileMode::Append, 3);
        table().print(3, u"y", false);
        table().close(3);
    });
    const int input = ErrorOf([&] { table().open(u"C:\\bin", FileMode::Input, 4); });
    const int binary = ErrorOf([&] { table().open(u"C:\\bin", FileMode::Binary, 2); });
    const String read = binary == 0 ? table().readByteAt(2, 2) : String();
    const String line = input == 0 ? table().lineInput(4) : String();
    const int closed = ErrorOf([&] { table().closeAll(); });
    dup2(standardInput, 0);
    close(standardInput);
    EXPECT_EQ(output, 0);
    EXPECT_EQ(append, 0);
    EXPECT_EQ(binary, 0);
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(input, 0);
    EXPECT_EQ(read, u"y");
    EXPECT_EQ(line, u"zy");
}

// A replaced file keeps its permissions, down to the others' right to run it.
TEST_F(Mapping, ReplacingKeepsThePermissions) {
    files_->replaceFile(u"C:\\run", "old");
    fs::permissions(c_ / "run", fs::perms(0751));
    files_->replaceFile(u"C:\\run", "new");
    EXPECT_EQ(fs::status(c_ / "run").permissions(), fs::perms(0751));
    EXPECT_EQ(Slurp(c_ / "run"), "new");
}

// New files get read and write for all, new folders everything, less what the
// umask takes.
TEST_F(Table, NewFilesAndFoldersTakeTheUmask) {
    const mode_t saved = umask(022);
    table().open(u"C:\\o", FileMode::Output, 1);
    table().open(u"C:\\a", FileMode::Append, 2);
    table().open(u"C:\\b", FileMode::Binary, 3);
    table().closeAll();
    files_->replaceFile(u"C:\\r", "x");
    files_->appendFile(u"C:\\p", "x");
    files_->makeFolder(u"C:\\d");
    umask(saved);
    EXPECT_EQ(fs::status(c_ / "d").permissions(), fs::perms(0755));
    for (const char* name : {"o", "a", "b", "r", "p"})
        EXPECT_EQ(fs::status(c_ / name).permissions(), fs::perms(0644)) << name;
}

// A pattern deletes every normal file that it matches; matching none is an error.
TEST_F(Mapping, DeletingByPattern) {
    std::ofstream(c_ / "a.tmp") << "";
    std::ofstream(c_ / "B.TMP") << "";
    std::ofstream(c_ / "keep.txt") << "";
    files_->deleteFile(u"C:\\*.tmp");
    EXPECT_FALSE(fs::exists(c_ / "a.tmp"));
    EXPECT_FALSE(fs::exists(c_ / "B.TMP"));
    EXPECT_TRUE(fs::exists(c_ / "keep.txt"));
    EXPECT_EQ(ErrorOf([&] { files_->deleteFile(u"C:\\*.tmp"); }), kFileNotFound);
}

// Readers share a file; a writer shares it with nobody, whoever came first.
TEST_F(Table, AReaderKeepsWritersOut) {
    files_->replaceFile(u"C:\\in", "x");
    table().open(u"C:\\in", FileMode::Input, 1);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\in", FileMode::Output, 2); }), kFileAlreadyOpen);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\in", FileMode::Append, 2); }), kFileAlreadyOpen);
    EXPECT_EQ(ErrorOf([&] { table().open(u"C:\\in", FileMode::Binary, 2); }), 0);
    table().closeAll();
}

// Number 511 is handed out when every number before it is taken.
TEST_F(Table, TheLastFreeNumberIs511) {
    files_->replaceFile(u"C:\\in", "x");
    for (Long n = 1; n <= 510; ++n) table().open(u"C:\\in", FileMode::Input, n);
    EXPECT_EQ(table().freeNumber(), 511);
    table().closeAll();
}

// A file that may only be read opens to read: here one that the kernel lets
// nobody write, whatever the user.
TEST_F(Table, AReadOnlyFileOpensToRead) {
    table().open(u"/proc/sys/kernel/ostype", FileMode::Binary, 1);
    EXPECT_EQ(table().readByteAt(1, 1), u"L");
    table().close(1);
}

// Closing them all closes every file even when one fails, and tells the first failure.
TEST_F(Table, ClosingAllTellsAFailure) {
    table().open(u"C:\\gone", FileMode::Output, 1);
    table().open(u"C:\\fine", FileMode::Output, 2);
    table().print(2, u"ok");
    fs::remove(c_ / "gone");
    fs::create_directory(c_ / "gone");  // where the file should be written
    EXPECT_EQ(ErrorOf([&] { table().closeAll(); }), kPathFileAccessError);
    EXPECT_EQ(Slurp(c_ / "fine"), "ok\r\n");
    EXPECT_EQ(table().freeNumber(), 1);
}

// A running program cannot be written: opening it for binary access is
// refused as a file in use is on Windows, not quietly opened to read only.
TEST_F(Table, ARunningProgramIsAFileInUse) {
    EXPECT_EQ(ErrorOf([&] { table().open(u"/proc/self/exe", FileMode::Binary, 1); }), kPathFileAccessError);
    EXPECT_EQ(table().freeNumber(), 1);
}

}  // namespace
}  // namespace kiv
