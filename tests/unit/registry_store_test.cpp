// The registry store on SQLite: the platform's semantics, its answers to bad
// handles and bad names, and what it guarantees when a writer is killed, when
// two processes write at once and when a hive's file is damaged.
#include <gtest/gtest.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>

#include "system/registry/sqlite_registry.hpp"

namespace kiv {
namespace {

namespace fs = std::filesystem;
using namespace reg;

constexpr Long kAccess = 0x2003F;

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (fs::temp_directory_path() / "kivreg-XXXXXX").string();
        path = mkdtemp(pattern.data());
    }
    ~TempFolder() {
        std::error_code ec;
        fs::remove_all(path, ec);
    }
    fs::path path;
};

std::string ReadFile(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteFile(const fs::path& p, const std::string& bytes) {
    std::ofstream(p, std::ios::binary | std::ios::trunc) << bytes;
}

class RegistryStoreTest : public ::testing::Test {
protected:
    TempFolder dir;
    SqliteRegistry store{dir.path, "tester"};

    Long create(Long base, std::string_view path) {
        Long h = 0;
        EXPECT_EQ(store.createKey(base, path, h), kSuccess) << path;
        return h;
    }
    std::string read(Long h, std::string_view name, Long* type = nullptr) {
        Long t = -1;
        std::string data;
        std::size_t size = 0;
        if (store.queryValue(h, name, 1 << 21, t, data, size) != kSuccess) return "<none>";
        if (type != nullptr) *type = t;
        return data;
    }
};

TEST_F(RegistryStoreTest, NewStoreHasTheTopKeysOfBothHives) {
    std::string name;
    EXPECT_EQ(store.enumKey(kLocalMachine, 0, name), kSuccess);
    EXPECT_EQ(name, "SOFTWARE");
    EXPECT_EQ(store.enumKey(kCurrentUser, 0, name), kSuccess);
    EXPECT_EQ(name, "Software");
    EXPECT_EQ(store.enumKey(kCurrentUser, 1, name), kNoMoreItems);
    EXPECT_TRUE(fs::exists(dir.path / "HKEY_LOCAL_MACHINE.db"));
    EXPECT_TRUE(fs::exists(dir.path / "HKEY_CURRENT_USER-tester.db"));
}

TEST_F(RegistryStoreTest, KeysAreCaseBlindAndKeepTheirFirstSpelling) {
    const Long a = create(kLocalMachine, "SOFTWARE\\Ditta\\Prog");
    const Long b = create(kLocalMachine, "software\\DITTA\\prog\\");  // one trailing "\" is allowed
    ASSERT_NE(a, b);
    ASSERT_EQ(store.setValue(a, "Colore", kRegSz, std::string("blu\0", 4)), kSuccess);
    EXPECT_EQ(read(b, "COLORE"), std::string("blu\0", 4));
    Long h = 0;
    ASSERT_EQ(store.openKey(kLocalMachine, "SOFTWARE", kAccess, h), kSuccess);
    std::string name;
    EXPECT_EQ(store.enumKey(h, 0, name), kSuccess);
    EXPECT_EQ(name, "Ditta");
    // Letters of the code page fold too.
    create(kLocalMachine, "SOFTWARE\\Citt\xE0");
    Long c = 0;
    EXPECT_EQ(store.openKey(kLocalMachine, "software\\CITT\xC0", kAccess, c), kSuccess);
}

TEST_F(RegistryStoreTest, SubKeysEnumerateCaseBlindValuesInCreationOrder) {
    const Long h = create(kCurrentUser, "Software\\Ord");
    for (const char* k : {"b", "_c", "A", "a2"}) create(h, k);
    std::vector<std::string> names;
    std::string name;
    for (Long i = 0; store.enumKey(h, i, name) == kSuccess; ++i) names.push_back(name);
    // Upper-case order, as the platform sorts: "_" after the letters.
    EXPECT_EQ(names, (std::vector<std::string>{"A", "a2", "b", "_c"}));

    for (const char* v : {"z", "", "m"}) ASSERT_EQ(store.setValue(h, v, kRegSz, v), kSuccess);
    ASSERT_EQ(store.setValue(h, "Z", kRegDword, "1234"), kSuccess);  // rewriting keeps the place
    std::vector<std::string> values;
    Long type = 0;
    std::string data;
    for (Long i = 0; store.enumValue(h, i, name, type, data) == kSuccess; ++i) values.push_back(name + "=" + data);
    EXPECT_EQ(values, (std::vector<std::string>{"z=1234", "=", "m=m"}));
    Long subKeys = 0, count = 0;
    EXPECT_EQ(store.queryInfoKey(h, subKeys, count), kSuccess);
    EXPECT_EQ(subKeys, 4);
    EXPECT_EQ(count, 3);
}

TEST_F(RegistryStoreTest, ValuesKeepTheirTypeAndBytes) {
    const Long h = create(kLocalMachine, "SOFTWARE\\T");
    ASSERT_EQ(store.setValue(h, "n", kRegNone, std::string("\2\0\0\0", 4)), kSuccess);
    ASSERT_EQ(store.setValue(h, "b", kRegBinary, std::string("\0\xFF", 2)), kSuccess);
    Long type = -1;
    EXPECT_EQ(read(h, "n", &type), std::string("\2\0\0\0", 4));
    EXPECT_EQ(type, kRegNone);
    EXPECT_EQ(read(h, "b", &type), std::string("\0\xFF", 2));
    EXPECT_EQ(type, kRegBinary);
    // A buffer one byte short: more data, with the size needed.
    std::string data;
    std::size_t size = 0;
    EXPECT_EQ(store.queryValue(h, "b", 1, type, data, size), kMoreData);
    EXPECT_EQ(size, 2u);
    EXPECT_EQ(store.queryValue(h, "b", 2, type, data, size), kSuccess);
    EXPECT_EQ(store.queryValue(h, "missing", 2, type, data, size), kNotFound);
    EXPECT_EQ(store.deleteValue(h, "B"), kSuccess);
    EXPECT_EQ(store.deleteValue(h, "b"), kNotFound);
}

TEST_F(RegistryStoreTest, BadHandlesAreInvalid) {
    const Long h = create(kLocalMachine, "SOFTWARE\\H");
    EXPECT_EQ(store.closeKey(h), kSuccess);
    EXPECT_EQ(store.closeKey(h), kInvalidHandle);  // closed twice
    Long r = 7;
    EXPECT_EQ(store.openKey(h, "", kAccess, r), kInvalidHandle);
    EXPECT_EQ(r, 0);
    for (Long other : {Long{0}, Long{12345}, Long{4096}, static_cast<Long>(0x80000000u), static_cast<Long>(0x80000003u)}) {
        EXPECT_EQ(store.setValue(other, "x", kRegSz, "x"), kInvalidHandle) << other;
        EXPECT_EQ(store.openKey(other, "SOFTWARE", kAccess, r), kInvalidHandle) << other;
        EXPECT_EQ(store.closeKey(other), kInvalidHandle) << other;
    }
    Long sub = 0, val = 0;
    EXPECT_EQ(store.queryInfoKey(99, sub, val), kInvalidHandle);
}

TEST_F(RegistryStoreTest, DeletingKeys) {
    const Long parent = create(kLocalMachine, "SOFTWARE\\D");
    const Long child = create(parent, "Child");
    create(parent, "Full\\Inner");
    EXPECT_EQ(store.setValue(child, "v", kRegSz, "x"), kSuccess);
    EXPECT_EQ(store.deleteKey(parent, "Full"), kAccessDenied);  // has a sub-key
    EXPECT_EQ(store.deleteKey(parent, "FULL\\INNER"), kSuccess);
    EXPECT_EQ(store.deleteKey(parent, "Full"), kSuccess);
    EXPECT_EQ(store.deleteKey(parent, "Full"), kNotFound);
    EXPECT_EQ(store.deleteKey(parent, "child"), kSuccess);
    // The handle of a deleted key reaches nothing, even after a key of the
    // same name is made again.
    create(parent, "Child");
    EXPECT_EQ(store.setValue(child, "v", kRegSz, "y"), kKeyDeleted);
    EXPECT_EQ(read(child, "v"), "<none>");
    EXPECT_EQ(store.closeKey(child), kSuccess);
}

TEST_F(RegistryStoreTest, BadNamesAreRefusedWithoutHarm) {
    Long r = 0;
    const std::string deep = [] {
        std::string p = "SOFTWARE";
        for (int i = 0; i < 10000; ++i) p += "\\k";
        return p;
    }();
    EXPECT_EQ(store.createKey(kLocalMachine, deep, r), kInvalidParameter);
    EXPECT_EQ(store.openKey(kLocalMachine, deep, kAccess, r), kInvalidParameter);
    const std::string huge = "SOFTWARE\\" + std::string(1 << 20, 'k');
    EXPECT_EQ(store.createKey(kLocalMachine, huge, r), kInvalidParameter);
    // Exactly on the limits: 255 characters, 512 levels.
    EXPECT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\" + std::string(255, 'k'), r), kSuccess);
    EXPECT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\" + std::string(256, 'k'), r), kInvalidParameter);
    std::string levels512 = "SOFTWARE";
    for (int i = 1; i < 512; ++i) levels512 += "\\l";
    EXPECT_EQ(store.createKey(kLocalMachine, levels512, r), kSuccess);
    EXPECT_EQ(store.createKey(kLocalMachine, levels512 + "\\l", r), kInvalidParameter);
    EXPECT_EQ(store.createKey(kLocalMachine, "\\SOFTWARE", r), kBadPathName);
    EXPECT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\\\X", r), kBadPathName);

    // Value names: a NUL ends the name, as in the platform's narrow calls;
    // "\" is an ordinary character of a value name.
    const Long h = create(kLocalMachine, "SOFTWARE\\Names");
    EXPECT_EQ(store.setValue(h, std::string("ab\0cd", 5), kRegSz, "1"), kSuccess);
    EXPECT_EQ(read(h, "ab"), "1");
    EXPECT_EQ(store.setValue(h, "a\\b", kRegSz, "2"), kSuccess);
    EXPECT_EQ(read(h, "a\\b"), "2");
    EXPECT_EQ(store.openKey(h, "a", kAccess, r), kNotFound);
    // A value of 1 MB is kept whole.
    std::string big(1 << 20, 'x');
    big[12345] = '\0';
    EXPECT_EQ(store.setValue(h, "big", kRegBinary, big), kSuccess);
    EXPECT_EQ(read(h, "big"), big);
}

// A damaged or foreign file is reported as a bad database, its hive answers
// nothing, the other hive still works, and the file is left exactly as it was.
TEST(RegistryStoreDamage, DamagedHiveIsReportedAndLeftAlone) {
    TempFolder dir;
    const fs::path file = dir.path / "HKEY_LOCAL_MACHINE.db";
    {
        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        ASSERT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\A", h), kSuccess);
        for (int i = 0; i < 200; ++i) ASSERT_EQ(store.setValue(h, "v" + std::to_string(i), kRegSz, std::string(300, 'x')), kSuccess);
    }
    const std::string good = ReadFile(file);
    ASSERT_GT(good.size(), 8192u);
    std::string pageDamaged = good;
    for (std::size_t k = 4096; k < 3 * 4096; ++k) pageDamaged[k] = static_cast<char>(k * 7);
    std::string tailDamaged = good;  // the last page, which no lookup of the key reaches
    for (std::size_t k = good.size() - 4096; k < good.size(); ++k) tailDamaged[k] = static_cast<char>(k * 7);
    const std::string cases[] = {
        std::string(good.size(), '\x5A'),  // not a database at all
        good.substr(0, good.size() / 2),   // cut in the middle
        pageDamaged,                       // two pages overwritten
        tailDamaged,
    };
    for (const std::string& damaged : cases) {
        WriteFile(file, damaged);
        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        std::string name;
        EXPECT_EQ(store.openKey(kLocalMachine, "SOFTWARE\\A", kAccess, h), kBadDatabase) << &damaged - cases;
        EXPECT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\B", h), kBadDatabase);
        EXPECT_EQ(store.setValue(kLocalMachine, "x", kRegSz, "y"), kBadDatabase);
        EXPECT_EQ(store.enumKey(kLocalMachine, 0, name), kBadDatabase);
        EXPECT_EQ(store.createKey(kCurrentUser, "Software\\Fine", h), kSuccess);
        EXPECT_EQ(ReadFile(file), damaged);
    }
    // Another program's SQLite file in the hive's place is not taken over.
    fs::remove(file);
    std::system(("sqlite3 '" + file.string() + "' 'CREATE TABLE mine(x); INSERT INTO mine VALUES(1);' 2>/dev/null").c_str());
    if (fs::exists(file)) {
        const std::string foreign = ReadFile(file);
        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        EXPECT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\B", h), kBadDatabase);
        EXPECT_EQ(ReadFile(file), foreign);
    }
}

// A hive the process may not write: every open asking for write rights and
// every write is access denied; reading works. Checked in a child process
// that runs as an unprivileged user when the tests run as root.
TEST(RegistryStoreRights, ReadOnlyHiveRefusesWrites) {
    TempFolder dir;
    {
        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        ASSERT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\Ro", h), kSuccess);
        ASSERT_EQ(store.setValue(h, "v", kRegSz, "ok"), kSuccess);
    }
    const fs::path file = dir.path / "HKEY_LOCAL_MACHINE.db";
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    fs::permissions(dir.path, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                  fs::perms::others_read | fs::perms::others_exec);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(90);
        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        int failures = 0;
        failures += store.openKey(kLocalMachine, "SOFTWARE\\Ro", kAccess, h) != kAccessDenied;
        failures += store.openKey(kLocalMachine, "SOFTWARE\\Ro", kQueryValue, h) != kSuccess;
        Long type = 0;
        std::string data;
        std::size_t size = 0;
        failures += store.queryValue(h, "v", 100, type, data, size) != kSuccess || data != "ok";
        failures += store.setValue(h, "v", kRegSz, "no") != kAccessDenied;
        failures += store.setValue(kLocalMachine, "v", kRegSz, "no") != kAccessDenied;
        failures += store.deleteValue(h, "v") != kAccessDenied;
        failures += store.createKey(kLocalMachine, "SOFTWARE\\New", h) != kAccessDenied;
        failures += store.createKey(kLocalMachine, "SOFTWARE\\Ro", h) != kSuccess;  // opens for reading
        failures += store.setValue(h, "v", kRegSz, "no") != kAccessDenied;
        failures += store.deleteKey(kLocalMachine, "SOFTWARE\\Ro") != kAccessDenied;
        _exit(failures);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    SqliteRegistry store(dir.path, "u");
    Long h = 0;
    ASSERT_EQ(store.openKey(kLocalMachine, "SOFTWARE\\Ro", kQueryValue, h), kSuccess);
    Long type = 0;
    std::string data;
    std::size_t size = 0;
    EXPECT_EQ(store.queryValue(h, "v", 100, type, data, size), kSuccess);
    EXPECT_EQ(data, "ok");
}

std::string ValueOf(int round, int i) { return "round " + std::to_string(round) + " value " + std::to_string(i) + std::string(200, '.'); }

// A writer killed at random moments: afterwards the store opens, every value
// whose write returned is there, and every value there is whole.
TEST(RegistryStoreCrash, KilledWriterLosesNothingThatWasWritten) {
    TempFolder dir;
    std::mt19937 random(20260315);
    constexpr int kRounds = 50;
    int cutShort = 0;  // rounds killed in the middle of the 1,000 writes
    for (int round = 0; round < kRounds; ++round) {
        int pipeFds[2];
        ASSERT_EQ(pipe(pipeFds), 0);
        const pid_t child = fork();
        if (child == 0) {
            close(pipeFds[0]);
            SqliteRegistry store(dir.path, "u");
            Long h = 0;
            if (store.createKey(kLocalMachine, "SOFTWARE\\Crash\\R" + std::to_string(round), h) != kSuccess) _exit(1);
            for (int i = 0; i < 1000; ++i) {
                if (store.setValue(h, "v" + std::to_string(i), kRegSz, ValueOf(round, i)) != kSuccess) _exit(2);
                // Acknowledge only after the write returned.
                if (write(pipeFds[1], &i, sizeof i) != sizeof i) _exit(3);
            }
            _exit(0);
        }
        close(pipeFds[1]);
        std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution<int>(0, 30000)(random)));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        int acknowledged = -1, i = 0;
        while (read(pipeFds[0], &i, sizeof i) == sizeof i) acknowledged = i;
        close(pipeFds[0]);
        ASSERT_FALSE(WIFEXITED(status) && WEXITSTATUS(status) != 0) << "writer failed: " << WEXITSTATUS(status);
        cutShort += acknowledged < 999;

        SqliteRegistry store(dir.path, "u");
        Long h = 0;
        const Long open = store.openKey(kLocalMachine, "SOFTWARE\\Crash\\R" + std::to_string(round), kAccess, h);
        if (acknowledged >= 0) {
            ASSERT_EQ(open, kSuccess);
        }
        if (open != kSuccess) continue;
        Long subKeys = 0, values = 0;
        ASSERT_EQ(store.queryInfoKey(h, subKeys, values), kSuccess);
        ASSERT_GE(values, acknowledged + 1);
        ASSERT_LE(values, acknowledged + 2);  // at most the one whose answer the kill cut off
        for (Long k = 0; k < values; ++k) {
            std::string name, data;
            Long type = 0;
            ASSERT_EQ(store.enumValue(h, k, name, type, data), kSuccess);
            ASSERT_EQ(name, "v" + std::to_string(k));
            ASSERT_EQ(data, ValueOf(round, static_cast<int>(k)));
        }
    }
    EXPECT_GE(cutShort, kRounds / 2);
}

// Two processes writing under the same key at once lose nothing.
TEST(RegistryStoreConcurrency, TwoWritersLoseNothing) {
    TempFolder dir;
    {
        SqliteRegistry store(dir.path, "u");  // the hive exists before the race
        Long h = 0;
        ASSERT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\Both", h), kSuccess);
    }
    pid_t children[2];
    for (int c = 0; c < 2; ++c) {
        children[c] = fork();
        if (children[c] == 0) {
            SqliteRegistry store(dir.path, "u");
            Long h = 0;
            if (store.openKey(kLocalMachine, "SOFTWARE\\Both", kAccess, h) != kSuccess) _exit(1);
            for (int i = 0; i < 500; ++i)
                if (store.setValue(h, "p" + std::to_string(c) + "_" + std::to_string(i), kRegSz, std::to_string(i)) != kSuccess)
                    _exit(2);
            _exit(0);
        }
    }
    for (pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    SqliteRegistry store(dir.path, "u");
    Long h = 0, subKeys = 0, values = 0;
    ASSERT_EQ(store.openKey(kLocalMachine, "SOFTWARE\\Both", kAccess, h), kSuccess);
    ASSERT_EQ(store.queryInfoKey(h, subKeys, values), kSuccess);
    EXPECT_EQ(values, 1000);
    Long type = 0;
    std::string data;
    std::size_t size = 0;
    for (int c = 0; c < 2; ++c)
        for (int i = 0; i < 500; i += 499) {
            EXPECT_EQ(store.queryValue(h, "p" + std::to_string(c) + "_" + std::to_string(i), 100, type, data, size), kSuccess);
            EXPECT_EQ(data, std::to_string(i));
        }
}

// A second store on a folder whose hives already exist writes to them.
TEST_F(RegistryStoreTest, ExistingHiveOpensForWriting) {
    create(kLocalMachine, "SOFTWARE\\Prima");
    SqliteRegistry again(dir.path, "tester");
    Long h = 0;
    ASSERT_EQ(again.createKey(kLocalMachine, "SOFTWARE\\Seconda", h), kSuccess);
    EXPECT_EQ(again.setValue(h, "v", kRegSz, "w"), kSuccess);
    EXPECT_EQ(read(create(kLocalMachine, "SOFTWARE\\Seconda"), "v"), "w");
}

// A read-only hive is still read when its folder's name holds characters a
// file URI must escape (a blank, "#", "%" before hex digits, a letter of the
// code page).
TEST(RegistryStoreRights, ReadOnlyHiveInAFolderWithAnyName) {
    TempFolder dir;
    const fs::path folder = dir.path / "Dati #2 100%41\xE0";
    {
        SqliteRegistry store(folder, "u");
        Long h = 0;
        ASSERT_EQ(store.createKey(kLocalMachine, "SOFTWARE\\Ro", h), kSuccess);
        ASSERT_EQ(store.setValue(h, "v", kRegSz, "ok"), kSuccess);
    }
    const auto readable = fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                          fs::perms::others_read | fs::perms::others_exec;
    fs::permissions(folder / "HKEY_LOCAL_MACHINE.db", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    fs::permissions(folder, readable);
    fs::permissions(dir.path, readable);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(90);
        SqliteRegistry store(folder, "u");
        Long h = 0, type = 0;
        std::string data;
        std::size_t size = 0;
        if (store.openKey(kLocalMachine, "SOFTWARE\\Ro", kQueryValue, h) != kSuccess) _exit(1);
        _exit(store.queryValue(h, "v", 100, type, data, size) != kSuccess || data != "ok" ? 2 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

// Two stores making the same new hive at once: the one that comes second
// finds the hive made and uses it. Another connection, like a store half-way
// through making the hive, holds the empty file until both have found it
// empty: in WAL mode already, or still in the rollback mode a new file has
// (then switching the file to WAL must wait too, not fail at once).
TEST(RegistryStoreCreation, TwoStoresMakingOneHiveAtOnceBothSucceed) {
    for (const char* mode : {"PRAGMA journal_mode=WAL", "PRAGMA journal_mode=DELETE"}) {
        SCOPED_TRACE(mode);
        TempFolder dir;
        sqlite3* holder = nullptr;
        ASSERT_EQ(sqlite3_open((dir.path / "HKEY_LOCAL_MACHINE.db").c_str(), &holder), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(holder, mode, nullptr, nullptr, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        Long codes[2] = {-1, -1};
        std::thread makers[2];
        for (int i = 0; i < 2; ++i)
            makers[i] = std::thread([&dir, &codes, i] {
                SqliteRegistry store(dir.path, "u");
                Long h = 0;
                codes[i] = store.createKey(kLocalMachine, "SOFTWARE\\P" + std::to_string(i), h);
            });
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(holder);
        for (std::thread& t : makers) t.join();
        EXPECT_EQ(codes[0], kSuccess);
        EXPECT_EQ(codes[1], kSuccess);
        SqliteRegistry store(dir.path, "u");
        Long h = 0, subKeys = 0, values = 0;
        ASSERT_EQ(store.openKey(kLocalMachine, "SOFTWARE", kAccess, h), kSuccess);
        ASSERT_EQ(store.queryInfoKey(h, subKeys, values), kSuccess);
        EXPECT_EQ(subKeys, 2);
    }
}

// A value name may have 16383 characters, not one more.
TEST_F(RegistryStoreTest, ValueNameLimit) {
    const Long h = create(kCurrentUser, "Software\\Lunghi");
    EXPECT_EQ(store.setValue(h, std::string(16383, 'v'), kRegSz, "1"), kSuccess);
    EXPECT_EQ(read(h, std::string(16383, 'V')), "1");
    EXPECT_EQ(store.setValue(h, std::string(16384, 'v'), kRegSz, "2"), kInvalidParameter);
}

// A handle opened without the right to set values deletes none.
TEST_F(RegistryStoreTest, DeletingAValueNeedsTheRightToSet) {
    const Long w = create(kLocalMachine, "SOFTWARE\\Diritti");
    ASSERT_EQ(store.setValue(w, "v", kRegSz, "1"), kSuccess);
    Long r = 0;
    ASSERT_EQ(store.openKey(kLocalMachine, "SOFTWARE\\Diritti", kQueryValue, r), kSuccess);
    EXPECT_EQ(store.deleteValue(r, "v"), kAccessDenied);
    EXPECT_EQ(read(w, "v"), "1");
}

// A reader does not wait for another program's open write, and sees the value
// as it was before it.
TEST_F(RegistryStoreTest, ReaderIsNotHeldByAnOpenWrite) {
    const Long h = create(kLocalMachine, "SOFTWARE\\Attesa");
    ASSERT_EQ(store.setValue(h, "v", kRegSz, "prima"), kSuccess);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open((dir.path / "HKEY_LOCAL_MACHINE.db").c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE; UPDATE vals SET data='dopo';", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(read(h, "v"), "prima");
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
}

// A reader without the right to write the hive, while a writer has it open,
// reads through the writer's log: it sees each value the writer commits.
TEST(RegistryStoreRights, ReadOnlyReaderSeesEachCommittedChange) {
    TempFolder dir;
    SqliteRegistry writer(dir.path, "u");
    Long w = 0;
    ASSERT_EQ(writer.createKey(kLocalMachine, "SOFTWARE\\Vivo", w), kSuccess);
    ASSERT_EQ(writer.setValue(w, "v", kRegSz, "1"), kSuccess);
    fs::permissions(dir.path, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                  fs::perms::others_read | fs::perms::others_exec);
    for (const char* f : {"HKEY_LOCAL_MACHINE.db", "HKEY_LOCAL_MACHINE.db-wal", "HKEY_LOCAL_MACHINE.db-shm"})
        fs::permissions(dir.path / f, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                                          fs::perms::others_read);
    int up[2], down[2];
    ASSERT_EQ(pipe(up), 0);
    ASSERT_EQ(pipe(down), 0);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(90);
        SqliteRegistry store(dir.path, "u");
        const auto value = [&]() {
            Long h = 0, type = 0;
            std::string data;
            std::size_t size = 0;
            if (store.openKey(kLocalMachine, "SOFTWARE\\Vivo", kQueryValue, h) != kSuccess) return std::string("<no key>");
            if (store.queryValue(h, "v", 100, type, data, size) != kSuccess) data = "<none>";
            store.closeKey(h);
            return data;
        };
        int failures = value() != "1";
        char c = 0;
        if (write(up[1], &c, 1) != 1 || read(down[0], &c, 1) != 1) _exit(91);
        failures += value() != "2";
        _exit(failures);
    }
    char c = 0;
    ASSERT_EQ(read(up[0], &c, 1), 1);
    EXPECT_EQ(writer.setValue(w, "v", kRegSz, "2"), kSuccess);
    ASSERT_EQ(write(down[1], &c, 1), 1);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    for (int fd : {up[0], up[1], down[0], down[1]}) close(fd);
}

// A damaged file that carries the hive's mark but holds a single table is
// checked like any other: reported, and not a byte of it changed.
TEST(RegistryStoreDamage, DamagedFileWithOneTableIsLeftAlone) {
    TempFolder dir;
    const fs::path file = dir.path / "HKEY_LOCAL_MACHINE.db";
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "PRAGMA application_id=1263097426; CREATE TABLE t(x);"
                               "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000)"
                               "INSERT INTO t SELECT printf('%0300d', i) FROM n;", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    std::string damaged = ReadFile(file);
    ASSERT_GT(damaged.size(), 4u * 4096);
    for (std::size_t k = 2 * 4096; k < 4 * 4096; ++k) damaged[k] = static_cast<char>(k * 7);
    WriteFile(file, damaged);
    SqliteRegistry store(dir.path, "u");
    Long h = 0;
    EXPECT_EQ(store.openKey(kLocalMachine, "SOFTWARE", kAccess, h), kBadDatabase);
    EXPECT_TRUE(ReadFile(file) == damaged) << "the damaged file was written to";
}

}  // namespace
}  // namespace kiv
