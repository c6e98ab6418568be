#include "system/registry/sqlite_registry.hpp"

#include <sqlite3.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <optional>
#include <system_error>
#include <vector>

#include "frame/code_page.hpp"
#include "frame/strings.hpp"

namespace kiv {

using namespace reg;

namespace {

// Marks our databases, so that a foreign SQLite file is never taken for a
// hive and written over.
constexpr int kApplicationId = 0x4B495652;  // "KIVR"
constexpr int kSchemaVersion = 1;
constexpr long long kTopKey = 1;  // the hive's root key, which is never deleted

// The platform's limits: a key name of 255 characters, 512 levels, a value
// name of 16383 characters.
constexpr std::size_t kMaxKeyName = 255;
constexpr std::size_t kMaxLevels = 512;
constexpr std::size_t kMaxValueName = 16383;

// How long a change waits for another process's change to the same hive.
constexpr int kBusyTimeoutMs = 5000;
constexpr int kRetryMs = 10;

constexpr Long kAllAccess = 0xF003F;
constexpr Long kReadAccess = 0x20019;

const char* const kSchema = R"(
CREATE TABLE keys(
    id INTEGER PRIMARY KEY AUTOINCREMENT,  -- never reused: a stale handle cannot reach a newer key
    parent INTEGER REFERENCES keys(id) ON DELETE CASCADE,
    name BLOB NOT NULL,                    -- as first written, in the code page
    folded TEXT NOT NULL,                  -- upper case, for case-blind lookup and order
    UNIQUE(parent, folded));
CREATE TABLE vals(
    seq INTEGER PRIMARY KEY AUTOINCREMENT, -- creation order, the order of enumeration
    key INTEGER NOT NULL REFERENCES keys(id) ON DELETE CASCADE,
    name BLOB NOT NULL,
    folded TEXT NOT NULL,
    type INTEGER NOT NULL,
    data BLOB NOT NULL,
    UNIQUE(key, folded));
INSERT INTO keys(id, parent, name, folded) VALUES(1, NULL, x'', '');
)";

// The C string the platform's narrow calls would see: cut at the first NUL.
std::string_view CString(std::string_view s) {
    const std::size_t nul = s.find('\0');
    return nul == std::string_view::npos ? s : s.substr(0, nul);
}

std::string Fold(std::string_view name) { return ToUtf8(UCase(FromCp1252(name))); }

// The levels of a key path: "" is the key itself, one trailing "\" is
// allowed, an empty level elsewhere is a bad path.
Long SplitPath(std::string_view path, std::vector<std::string_view>& levels) {
    path = CString(path);
    if (!path.empty() && path.back() == '\\') path.remove_suffix(1);
    levels.clear();
    if (path.empty()) return kSuccess;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = path.find('\\', start);
        const std::string_view level = path.substr(start, end == std::string_view::npos ? path.npos : end - start);
        if (level.empty()) return kBadPathName;
        if (level.size() > kMaxKeyName || levels.size() == kMaxLevels) return kInvalidParameter;
        levels.push_back(level);
        if (end == std::string_view::npos) return kSuccess;
        start = end + 1;
    }
}

std::string ImmutableUri(const std::filesystem::path& path) {
    std::string uri = "file:";
    for (unsigned char c : path.string()) {
        if (std::isalnum(c) || c == '/' || c == '.' || c == '-' || c == '_') {
            uri += static_cast<char>(c);
        } else {
            char hex[4];
            std::snprintf(hex, sizeof hex, "%%%02X", c);
            uri += hex;
        }
    }
    return uri + "?immutable=1";
}

Long CodeOf(int sqliteCode) {
    switch (sqliteCode & 0xFF) {
        case SQLITE_OK: case SQLITE_DONE: case SQLITE_ROW: return kSuccess;
        // Another process held the store for longer than the busy timeout,
        // or the file may not be written: the write is refused.
        case SQLITE_BUSY: case SQLITE_LOCKED: case SQLITE_READONLY: case SQLITE_PERM: case SQLITE_AUTH:
            return kAccessDenied;
        case SQLITE_FULL: return 112;  // disk full
        default: return kBadDatabase;
    }
}

class Statement {
public:
    Statement(sqlite3* db, const char* sql) {
        if (sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt_, nullptr) != SQLITE_OK)
            stmt_ = nullptr;
    }
    ~Statement() { sqlite3_finalize(stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    bool ok() const { return stmt_ != nullptr; }

    // Binds the arguments in order and takes the first step.
    template <class... A> int run(const A&... args) {
        sqlite3_reset(stmt_);
        sqlite3_clear_bindings(stmt_);
        int i = 0;
        (bind(++i, args), ...);
        return sqlite3_step(stmt_);
    }
    int next() { return sqlite3_step(stmt_); }
    long long integer(int col) const { return sqlite3_column_int64(stmt_, col); }
    std::string bytes(int col) const {
        const void* p = sqlite3_column_blob(stmt_, col);
        return p == nullptr ? std::string() : std::string(static_cast<const char*>(p), sqlite3_column_bytes(stmt_, col));
    }
    void done() { sqlite3_reset(stmt_); }

private:
    void bind(int i, long long v) { sqlite3_bind_int64(stmt_, i, v); }
    void bind(int i, int v) { sqlite3_bind_int64(stmt_, i, v); }
    void bind(int i, const std::string& v) { sqlite3_bind_text(stmt_, i, v.data(), static_cast<int>(v.size()), SQLITE_STATIC); }
    void bind(int i, std::string_view v) {
        sqlite3_bind_blob(stmt_, i, v.empty() ? "" : v.data(), static_cast<int>(v.size()), SQLITE_STATIC);
    }
    sqlite3_stmt* stmt_ = nullptr;
};

}  // namespace

// One hive: its database connection and the statements the calls use.
class SqliteRegistry::Hive {
public:
    // Opens (or makes) the database at path; code() tells whether it can be used.
    explicit Hive(const std::filesystem::path& path, const char* topKey) {
        std::error_code ec;
        const bool existed = std::filesystem::exists(path, ec);
        if (!existed) std::filesystem::create_directories(path.parent_path(), ec);
        const int flags = SQLITE_OPEN_READWRITE | (existed ? 0 : SQLITE_OPEN_CREATE) | SQLITE_OPEN_NOMUTEX;
        if (sqlite3_open_v2(path.c_str(), &db_, flags, nullptr) != SQLITE_OK) {
            code_ = existed ? kBadDatabase : kAccessDenied;
            return;
        }
        // Another program may be writing the same hive: wait for its
        // transaction to end instead of failing at once.
        sqlite3_busy_timeout(db_, kBusyTimeoutMs);
        readOnly_ = sqlite3_db_readonly(db_, "main") == 1;
        code_ = prepare(topKey);
        if (code_ != kSuccess && readOnly_ && existed) {
            // A reader without the right to make the log's shared-memory file
            // next to the database reads it as a file that does not change;
            // it never writes, so the file cannot be harmed.
            statements_.clear();
            sqlite3_close_v2(db_);
            db_ = nullptr;
            if (sqlite3_open_v2(ImmutableUri(path).c_str(), &db_, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr) ==
                SQLITE_OK)
                code_ = prepare(topKey);
        }
        // A hive that does not exist and cannot be made here is one this
        // user may not write.
        if (code_ == kBadDatabase && !existed) code_ = kAccessDenied;
    }
    ~Hive() {
        statements_.clear();
        sqlite3_close_v2(db_);
    }

    Long code() const { return code_; }
    bool readOnly() const { return readOnly_; }

    // The child of parent named name, or nothing.
    Long child(long long parent, std::string_view name, long long& id) {
        const int rc = findChild_->run(parent, Fold(name));
        id = rc == SQLITE_ROW ? findChild_->integer(0) : 0;
        findChild_->done();
        return rc == SQLITE_ROW ? kSuccess : rc == SQLITE_DONE ? kNotFound : CodeOf(rc);
    }
    Long exists(long long id) {
        const int rc = keyExists_->run(id);
        keyExists_->done();
        return rc == SQLITE_ROW ? kSuccess : rc == SQLITE_DONE ? kKeyDeleted : CodeOf(rc);
    }
    // Walks the levels from base, in one read transaction: one snapshot, and
    // one round of locking instead of one per level.
    Long walk(long long base, const std::vector<std::string_view>& levels, long long& id) {
        const bool own = sqlite3_get_autocommit(db_) != 0;
        if (own && !exec("BEGIN")) return kBadDatabase;
        Long code = base == kTopKey ? kSuccess : exists(base);
        id = base;
        for (std::size_t k = 0; code == kSuccess && k < levels.size(); ++k) code = child(id, levels[k], id);
        if (own) exec("COMMIT");
        return code;
    }
    // Walks the levels from base, making the missing ones, in one transaction.
    Long make(long long base, const std::vector<std::string_view>& levels, long long& id) {
        return write([&]() -> Long {
            if (Long code = exists(base); code != kSuccess) return code;
            id = base;
            for (std::string_view level : levels) {
                long long next = 0;
                Long code = child(id, level, next);
                if (code == kNotFound) {
                    const int rc = insertKey_->run(id, level, Fold(level));
                    insertKey_->done();
                    if (rc != SQLITE_DONE) return CodeOf(rc);
                    next = sqlite3_last_insert_rowid(db_);
                } else if (code != kSuccess) {
                    return code;
                }
                id = next;
            }
            return kSuccess;
        });
    }
    Long removeKey(long long parent, std::string_view name) {
        return write([&]() -> Long {
            long long id = 0;
            if (Long code = child(parent, name, id); code != kSuccess) return code;
            const int has = firstChild_->run(id, 0);
            firstChild_->done();
            if (has == SQLITE_ROW) return kAccessDenied;  // the platform refuses a key with sub-keys
            if (has != SQLITE_DONE) return CodeOf(has);
            return step(*deleteKey_, id);
        });
    }
    Long setValue(long long key, std::string_view name, Long type, std::string_view data) {
        return write([&]() -> Long {
            if (Long code = exists(key); code != kSuccess) return code;
            return step(*upsertValue_, key, name, Fold(name), static_cast<long long>(type), data);
        });
    }
    Long removeValue(long long key, std::string_view name) {
        return write([&]() -> Long {
            if (Long code = exists(key); code != kSuccess) return code;
            Long code = step(*deleteValue_, key, Fold(name));
            return code == kSuccess && sqlite3_changes(db_) == 0 ? kNotFound : code;
        });
    }
    Long value(long long key, std::string_view name, Long& type, std::string& data) {
        int rc = findValue_->run(key, Fold(name));
        if (rc == SQLITE_ROW) {
            type = static_cast<Long>(findValue_->integer(0));
            data = findValue_->bytes(1);
        }
        findValue_->done();
        if (rc == SQLITE_DONE) return exists(key) == kSuccess ? kNotFound : kKeyDeleted;
        return rc == SQLITE_ROW ? kSuccess : CodeOf(rc);
    }
    Long counts(long long key, Long& subKeys, Long& values) {
        if (Long code = exists(key); code != kSuccess) return code;
        int rc = countChildren_->run(key);
        subKeys = static_cast<Long>(countChildren_->integer(0));
        countChildren_->done();
        if (rc != SQLITE_ROW) return CodeOf(rc);
        rc = countValues_->run(key);
        values = static_cast<Long>(countValues_->integer(0));
        countValues_->done();
        return CodeOf(rc);
    }
    Long childAt(long long key, Long index, std::string& name) {
        if (Long code = exists(key); code != kSuccess) return code;
        const int rc = firstChild_->run(key, static_cast<long long>(index));
        if (rc == SQLITE_ROW) name = firstChild_->bytes(1);
        firstChild_->done();
        return rc == SQLITE_ROW ? kSuccess : rc == SQLITE_DONE ? kNoMoreItems : CodeOf(rc);
    }
    Long valueAt(long long key, Long index, std::string& name, Long& type, std::string& data) {
        if (Long code = exists(key); code != kSuccess) return code;
        const int rc = valueAt_->run(key, static_cast<long long>(index));
        if (rc == SQLITE_ROW) {
            name = valueAt_->bytes(0);
            type = static_cast<Long>(valueAt_->integer(1));
            data = valueAt_->bytes(2);
        }
        valueAt_->done();
        return rc == SQLITE_ROW ? kSuccess : rc == SQLITE_DONE ? kNoMoreItems : CodeOf(rc);
    }

private:
    Long prepare(const char* topKey) {
        // Read before anything is written: a damaged or foreign file is
        // reported and left exactly as it is.
        long long tables = 0, appId = 0;
        if (!scalar("SELECT count(*) FROM sqlite_schema", tables) || !scalar("PRAGMA application_id", appId))
            return kBadDatabase;
        if (tables != 0 && appId != kApplicationId) return kBadDatabase;
        if (tables != 0) {
            sqlite3_stmt* check = nullptr;
            bool healthy = sqlite3_prepare_v2(db_, "PRAGMA quick_check", -1, &check, nullptr) == SQLITE_OK &&
                           sqlite3_step(check) == SQLITE_ROW &&
                           std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(check, 0))) == "ok";
            sqlite3_finalize(check);
            if (!healthy) return kBadDatabase;
        }
        if (!readOnly_) {
            // Write-ahead log: readers never wait for a writer and never see
            // half a change, and a killed writer leaves the last committed
            // state. Normal sync: with the log, a killed process loses nothing committed and
            // a power cut at worst the last changes, never the file's consistency;
            // a full sync per change would cost milliseconds on every save.
            // Foreign keys: deleting a key takes its values with it.
            if (!execWaiting("PRAGMA journal_mode=WAL") || !exec("PRAGMA synchronous=NORMAL")) return kBadDatabase;
        }
        if (!exec("PRAGMA foreign_keys=ON")) return kBadDatabase;
        if (tables == 0) {
            if (readOnly_) return kAccessDenied;
            // A new hive: the schema and the top key in one transaction, so
            // two processes making it at once end with one.
            if (!exec("BEGIN IMMEDIATE")) return kAccessDenied;
            long long again = 0;
            bool ok = scalar("SELECT count(*) FROM sqlite_schema", again);
            if (ok && again == 0) {
                ok = exec(kSchema) && exec(("PRAGMA application_id=" + std::to_string(kApplicationId)).c_str()) &&
                     exec(("PRAGMA user_version=" + std::to_string(kSchemaVersion)).c_str()) &&
                     exec((std::string("INSERT INTO keys(parent, name, folded) VALUES(1, '") + topKey + "', '" +
                           ToUtf8(UCase(FromCp1252(topKey))) + "')").c_str());
            }
            if (!ok || !exec("COMMIT")) {
                exec("ROLLBACK");
                return kBadDatabase;
            }
        }
        findChild_ = make("SELECT id FROM keys WHERE parent=? AND folded=?");
        keyExists_ = make("SELECT 1 FROM keys WHERE id=?");
        insertKey_ = make("INSERT INTO keys(parent, name, folded) VALUES(?, ?, ?)");
        deleteKey_ = make("DELETE FROM keys WHERE id=?");
        firstChild_ = make("SELECT id, name FROM keys WHERE parent=? ORDER BY folded LIMIT 1 OFFSET ?");
        countChildren_ = make("SELECT count(*) FROM keys WHERE parent=?");
        countValues_ = make("SELECT count(*) FROM vals WHERE key=?");
        findValue_ = make("SELECT type, data FROM vals WHERE key=? AND folded=?");
        valueAt_ = make("SELECT name, type, data FROM vals WHERE key=? ORDER BY seq LIMIT 1 OFFSET ?");
        // A value written again keeps its place in the order of creation.
        upsertValue_ = make(
            "INSERT INTO vals(key, name, folded, type, data) VALUES(?, ?, ?, ?, ?) "
            "ON CONFLICT(key, folded) DO UPDATE SET type=excluded.type, data=excluded.data");
        deleteValue_ = make("DELETE FROM vals WHERE key=? AND folded=?");
        for (auto& s : statements_)
            if (!s->ok()) return kBadDatabase;
        return kSuccess;
    }

    Statement* make(const char* sql) {
        statements_.push_back(std::make_unique<Statement>(db_, sql));
        return statements_.back().get();
    }
    bool exec(const char* sql) { return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }
    // Changing the journal mode answers SQLITE_BUSY at once, without the busy
    // handler, while another process holds the file (two processes making one
    // hive): it waits here as any other statement would.
    bool execWaiting(const char* sql) {
        for (int waited = 0;; waited += kRetryMs) {
            const int rc = sqlite3_exec(db_, sql, nullptr, nullptr, nullptr);
            if (rc != SQLITE_BUSY || waited >= kBusyTimeoutMs) return rc == SQLITE_OK;
            sqlite3_sleep(kRetryMs);
        }
    }
    bool scalar(const char* sql, long long& out) {
        sqlite3_stmt* s = nullptr;
        bool ok = sqlite3_prepare_v2(db_, sql, -1, &s, nullptr) == SQLITE_OK && sqlite3_step(s) == SQLITE_ROW;
        if (ok) out = sqlite3_column_int64(s, 0);
        sqlite3_finalize(s);
        return ok;
    }
    template <class... A> Long step(Statement& s, const A&... args) {
        const int rc = s.run(args...);
        s.done();
        return rc == SQLITE_DONE ? kSuccess : CodeOf(rc);
    }
    // One change, one transaction: taken for writing at once (so two writers
    // queue on the busy timeout instead of deadlocking), committed only when
    // every step succeeded.
    template <class F> Long write(F&& change) {
        if (readOnly_) return kAccessDenied;
        const int begin = sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        if (begin != SQLITE_OK) return CodeOf(begin);
        Long code = change();
        if (code == kSuccess) {
            const int commit = sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
            if (commit == SQLITE_OK) return kSuccess;
            code = CodeOf(commit);
        }
        exec("ROLLBACK");
        return code;
    }

    sqlite3* db_ = nullptr;
    Long code_ = kSuccess;
    bool readOnly_ = false;
    std::vector<std::unique_ptr<Statement>> statements_;
    Statement *findChild_ = nullptr, *keyExists_ = nullptr, *insertKey_ = nullptr, *deleteKey_ = nullptr,
              *firstChild_ = nullptr, *countChildren_ = nullptr, *countValues_ = nullptr, *findValue_ = nullptr,
              *valueAt_ = nullptr, *upsertValue_ = nullptr, *deleteValue_ = nullptr;
};

SqliteRegistry::SqliteRegistry(std::filesystem::path folder, std::string userName)
    : folder_(std::move(folder)), userName_(std::move(userName)) {}

SqliteRegistry::~SqliteRegistry() = default;

// A hive is opened at its first use; one that cannot be used is tried again
// at the next call, so a repaired file is picked up without a restart.
Long SqliteRegistry::hive(Long root, Hive*& out) {
    std::unique_ptr<Hive>& slot = root == kLocalMachine ? machine_ : user_;
    if (!slot || slot->code() != kSuccess) {
        // Each user has a hive of their own, even in a shared folder.
        const bool machine = root == kLocalMachine;
        const std::string file = machine ? "HKEY_LOCAL_MACHINE.db" : "HKEY_CURRENT_USER-" + userName_ + ".db";
        slot.reset();
        slot = std::make_unique<Hive>(folder_ / file, machine ? "SOFTWARE" : "Software");
    }
    out = slot.get();
    return slot->code();
}

Long SqliteRegistry::resolve(Long hKey, Key& key) {
    if (hKey == kLocalMachine || hKey == kCurrentUser) {
        if (Long code = hive(hKey, key.hive); code != kSuccess) return code;
        key.id = kTopKey;
        key.access = key.hive->readOnly() ? kReadAccess : kAllAccess;
        return kSuccess;
    }
    const auto it = handles_.find(hKey);
    if (it == handles_.end()) return kInvalidHandle;
    key = it->second;
    return kSuccess;
}

Long SqliteRegistry::newHandle(const Key& key) {
    while (handles_.contains(nextHandle_) || nextHandle_ <= 0) nextHandle_ = nextHandle_ <= 0 ? 0x100 : nextHandle_ + 4;
    const Long h = nextHandle_;
    nextHandle_ += 4;
    handles_[h] = key;
    return h;
}

Long SqliteRegistry::openKey(Long hKey, std::string_view subKey, Long access, Long& result) {
    result = 0;
    Key base;
    if (Long code = resolve(hKey, base); code != kSuccess) return code;
    std::vector<std::string_view> levels;
    if (Long code = SplitPath(subKey, levels); code != kSuccess) return code;
    if ((access & kWriteRights) != 0 && base.hive->readOnly()) return kAccessDenied;
    Key key{base.hive, 0, access};
    if (Long code = base.hive->walk(base.id, levels, key.id); code != kSuccess) return code;
    result = newHandle(key);
    return kSuccess;
}

Long SqliteRegistry::createKey(Long hKey, std::string_view subKey, Long& result) {
    result = 0;
    Key base;
    if (Long code = resolve(hKey, base); code != kSuccess) return code;
    std::vector<std::string_view> levels;
    if (Long code = SplitPath(subKey, levels); code != kSuccess) return code;
    Key key{base.hive, 0, kAllAccess};
    if (base.hive->readOnly()) {
        // As for a user without rights: an existing key opens for reading,
        // a missing one cannot be made.
        key.access = kReadAccess;
        if (Long code = base.hive->walk(base.id, levels, key.id); code != kSuccess)
            return code == kNotFound ? kAccessDenied : code;
    } else if (Long code = base.hive->make(base.id, levels, key.id); code != kSuccess) {
        return code;
    }
    result = newHandle(key);
    return kSuccess;
}

Long SqliteRegistry::closeKey(Long hKey) {
    if (hKey == kLocalMachine || hKey == kCurrentUser) return kSuccess;
    return handles_.erase(hKey) == 1 ? kSuccess : kInvalidHandle;
}

Long SqliteRegistry::deleteKey(Long hKey, std::string_view subKey) {
    Key base;
    if (Long code = resolve(hKey, base); code != kSuccess) return code;
    std::vector<std::string_view> levels;
    if (Long code = SplitPath(subKey, levels); code != kSuccess) return code;
    if (levels.empty()) return kAccessDenied;  // a key cannot delete itself through this call
    if (base.hive->readOnly()) return kAccessDenied;
    long long parent = 0;
    const std::vector<std::string_view> above(levels.begin(), levels.end() - 1);
    if (Long code = base.hive->walk(base.id, above, parent); code != kSuccess) return code;
    return base.hive->removeKey(parent, levels.back());
}

Long SqliteRegistry::deleteValue(Long hKey, std::string_view name) {
    Key key;
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    if ((key.access & kSetValue) == 0 || key.hive->readOnly()) return kAccessDenied;
    return key.hive->removeValue(key.id, CString(name));
}

Long SqliteRegistry::setValue(Long hKey, std::string_view name, Long type, std::string_view data) {
    Key key;
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    name = CString(name);
    if (name.size() > kMaxValueName) return kInvalidParameter;
    if ((key.access & kSetValue) == 0 || key.hive->readOnly()) return kAccessDenied;
    return key.hive->setValue(key.id, name, type, data);
}

Long SqliteRegistry::queryValue(Long hKey, std::string_view name, std::size_t capacity, Long& type,
                                std::string& data, std::size_t& size) {
    Key key;
    data.clear();
    size = 0;
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    std::string stored;
    if (Long code = key.hive->value(key.id, CString(name), type, stored); code != kSuccess) return code;
    size = stored.size();
    if (stored.size() > capacity) return kMoreData;
    data = std::move(stored);
    return kSuccess;
}

Long SqliteRegistry::queryInfoKey(Long hKey, Long& subKeys, Long& values) {
    Key key;
    subKeys = values = 0;
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    return key.hive->counts(key.id, subKeys, values);
}

Long SqliteRegistry::enumKey(Long hKey, Long index, std::string& name) {
    Key key;
    name.clear();
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    if (index < 0) return kNoMoreItems;
    return key.hive->childAt(key.id, index, name);
}

Long SqliteRegistry::enumValue(Long hKey, Long index, std::string& name, Long& type, std::string& data) {
    Key key;
    name.clear();
    data.clear();
    if (Long code = resolve(hKey, key); code != kSuccess) return code;
    if (index < 0) return kNoMoreItems;
    return key.hive->valueAt(key.id, index, name, type, data);
}

}  // namespace kiv
