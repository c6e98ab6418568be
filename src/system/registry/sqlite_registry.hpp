// The registry kept in SQLite: one database per hive in a folder, the
// platform's semantics (keys case-blind and case-preserving, "\" between
// levels, typed values, enumeration in a stable order, handles as Longs,
// the platform's error codes). Every change is one transaction, so a crash
// or a second process never tears or loses a setting.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

#include "frame/registry_store.hpp"

namespace kiv {

class SqliteRegistry final : public RegistryStore {
public:
    // folder holds HKEY_LOCAL_MACHINE.db and HKEY_CURRENT_USER-<user>.db.
    SqliteRegistry(std::filesystem::path folder, std::string userName);
    ~SqliteRegistry() override;

    Long openKey(Long hKey, std::string_view subKey, Long access, Long& result) override;
    Long createKey(Long hKey, std::string_view subKey, Long& result) override;
    Long closeKey(Long hKey) override;
    Long deleteKey(Long hKey, std::string_view subKey) override;
    Long deleteValue(Long hKey, std::string_view name) override;
    Long setValue(Long hKey, std::string_view name, Long type, std::string_view data) override;
    Long queryValue(Long hKey, std::string_view name, std::size_t capacity, Long& type, std::string& data,
                    std::size_t& size) override;
    Long queryInfoKey(Long hKey, Long& subKeys, Long& values) override;
    Long enumKey(Long hKey, Long index, std::string& name) override;
    Long enumValue(Long hKey, Long index, std::string& name, Long& type, std::string& data) override;

    class Hive;

private:
    struct Key {
        Hive* hive = nullptr;
        long long id = 0;
        Long access = 0;
    };
    // The hive and key of a root or open handle; a code when there is none.
    Long resolve(Long hKey, Key& key);
    Long hive(Long root, Hive*& out);
    Long newHandle(const Key& key);

    std::filesystem::path folder_;
    std::string userName_;
    std::unique_ptr<Hive> machine_, user_;
    std::unordered_map<Long, Key> handles_;
    Long nextHandle_ = 0x100;
};

}  // namespace kiv
