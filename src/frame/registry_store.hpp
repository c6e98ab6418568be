// The registry seam: keys opened by handle, typed values, enumeration, with
// the platform's error codes. It has the shape of the platform's narrow
// (code page) registry calls: names and text data are bytes of the system's
// single-byte code page, handles are Longs, every call answers a code.
#pragma once

#include <string>
#include <string_view>

#include "frame/value.hpp"

namespace kiv {

// Spelled apart from the platform's own macros, which a Windows build sees too.
namespace reg {
inline constexpr Long kCurrentUser = static_cast<Long>(0x80000001u);
inline constexpr Long kLocalMachine = static_cast<Long>(0x80000002u);

inline constexpr Long kRegNone = 0;
inline constexpr Long kRegSz = 1;
inline constexpr Long kRegBinary = 3;
inline constexpr Long kRegDword = 4;

// Result codes, as the platform numbers them.
inline constexpr Long kSuccess = 0;
inline constexpr Long kNotFound = 2;
inline constexpr Long kAccessDenied = 5;
inline constexpr Long kInvalidHandle = 6;
inline constexpr Long kInvalidParameter = 87;
inline constexpr Long kBadPathName = 161;
inline constexpr Long kMoreData = 234;
inline constexpr Long kNoMoreItems = 259;
inline constexpr Long kBadDatabase = 1009;  // the hive's store cannot be read
inline constexpr Long kKeyDeleted = 1018;   // the key behind a handle was deleted

// Access rights asked for when a key is opened.
inline constexpr Long kQueryValue = 0x1;
inline constexpr Long kSetValue = 0x2;
inline constexpr Long kCreateSubKey = 0x4;
inline constexpr Long kCreateLink = 0x20;
inline constexpr Long kDeleteRight = 0x10000;
inline constexpr Long kWriteRights = kSetValue | kCreateSubKey | kCreateLink | kDeleteRight;
}  // namespace reg

class RegistryStore {
public:
    virtual ~RegistryStore() = default;

    // Opens subKey ("" = hKey itself) of an open key or a root; the new
    // handle goes into result (0 on failure).
    virtual Long openKey(Long hKey, std::string_view subKey, Long access, Long& result) = 0;
    // Opens subKey, creating every missing level.
    virtual Long createKey(Long hKey, std::string_view subKey, Long& result) = 0;
    virtual Long closeKey(Long hKey) = 0;
    // Deletes a sub-key that has no sub-keys of its own, with its values.
    virtual Long deleteKey(Long hKey, std::string_view subKey) = 0;
    virtual Long deleteValue(Long hKey, std::string_view name) = 0;
    virtual Long setValue(Long hKey, std::string_view name, Long type, std::string_view data) = 0;
    // Reads a value into a buffer of `capacity` bytes: data receives at most
    // that many; size the value's full size (kMoreData when it did not fit).
    virtual Long queryValue(Long hKey, std::string_view name, std::size_t capacity, Long& type, std::string& data,
                            std::size_t& size) = 0;
    virtual Long queryInfoKey(Long hKey, Long& subKeys, Long& values) = 0;
    // Sub-keys in case-blind order of their names, values in creation order;
    // kNoMoreItems past the last.
    virtual Long enumKey(Long hKey, Long index, std::string& name) = 0;
    virtual Long enumValue(Long hKey, Long index, std::string& name, Long& type, std::string& data) = 0;
};

}  // namespace kiv
