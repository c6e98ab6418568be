// Registry access: thin wrappers over the platform's registry calls on key
// handles, the readers of one value by root, key and name, and the library's
// own settings store under HKEY_LOCAL_MACHINE\SOFTWARE\KORVANE_Lidmar.
// Names and text cross to the platform in the single-byte code page.
#include <cstdint>
#include <cstdio>

#include "frame/cl_kiv.hpp"
#include "frame/code_page.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

constexpr Long kAccess = 0x2003F;          // read, query, set, create sub-key, enumerate, notify, create link
constexpr std::size_t kBufferBytes = 1024;  // the readers' value and name buffers

RegistryStore& Store() { return CurrentPlatform().registry(); }

String HexOf(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "%X", value);
    return FromCp1252(text);
}

// The decimal text of a hexadecimal literal "&h" & digits as the runtime
// reads it: up to four digits an Integer, up to eight a Long, both signed.
String HexLiteralText(const String& digits) {
    if (digits.size() > 8) Raise(kOverflow);
    std::uint32_t v = 0;
    for (char16_t c : digits) v = v * 16 + static_cast<std::uint32_t>(c <= u'9' ? c - u'0' : c - u'A' + 10);
    const long long value = digits.size() <= 4 ? static_cast<std::int16_t>(static_cast<std::uint16_t>(v))
                                               : static_cast<std::int32_t>(v);
    return FromCp1252(std::to_string(value));
}

std::uint32_t Dword(const std::string& data) {
    std::uint32_t v = 0;
    for (std::size_t k = 0; k < data.size() && k < 4; ++k)
        v |= static_cast<std::uint32_t>(static_cast<unsigned char>(data[k])) << (8 * k);
    return v;
}

// The data of an enumerated value as text, by its type.
String EnumDataText(Long type, const std::string& data) {
    if (type == reg::kRegBinary) {
        String text;
        for (unsigned char b : data) text += HexOf(b) + u" ";
        return text;
    }
    if (type == reg::kRegDword) {
        char hex[16];
        std::snprintf(hex, sizeof hex, "0x%08X", Dword(data));
        return FromCp1252(hex) + u" (" + FormatPattern(Variant(static_cast<Double>(Dword(data))), u"0,000,000,000") +
               u")";
    }
    if (type == reg::kRegSz) {
        const std::size_t nul = data.find('\0');
        return FromCp1252(nul == std::string::npos ? data : data.substr(0, nul));
    }
    // Other types: the bytes as one number, byte k weighted 256^k.
    Double n = 0, weight = 1;
    for (unsigned char b : data) {
        n += b * weight;
        weight *= 256;
    }
    return NumberText(n);
}

}  // namespace

// ---- handle wrappers: True exactly when the platform answered 0 ----

Boolean Cl_KIV::RegOpenKey(Long KeyRoot, const String& KeyName, Ref<Long> phkResult) {
    lastRegResult_ = Store().openKey(KeyRoot, ToCp1252(KeyName), kAccess, *phkResult);
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegCreateKey(Long hKey, const String& lpszSubKeyPermanent, const String& lpszSubKeyRemovable,
                             Ref<Long> phkResult) {
    if (lpszSubKeyPermanent.empty()) return false;
    String removable = lpszSubKeyRemovable;
    if (!removable.empty() && removable.front() == u'\\') removable.erase(0, 1);
    const String subKey = removable.empty() ? lpszSubKeyPermanent : lpszSubKeyPermanent + u"\\" + removable;
    lastRegResult_ = Store().createKey(hKey, ToCp1252(subKey), *phkResult);
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegCloseKey(Long hKey) {
    lastRegResult_ = Store().closeKey(hKey);
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegDeleteKey(Long hKey, const String& lpszSubKey) {
    lastRegResult_ = Store().deleteKey(hKey, ToCp1252(lpszSubKey));
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegDeleteValue(Long hKey, const String& lpValueName) {
    lastRegResult_ = Store().deleteValue(hKey, ToCp1252(lpValueName));
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegSetNumericValue(Long hKey, const String& strValueName, Long TypeOfData, Long lData) {
    const auto u = static_cast<std::uint32_t>(lData);
    const char bytes[4] = {static_cast<char>(u & 0xFF), static_cast<char>((u >> 8) & 0xFF),
                           static_cast<char>((u >> 16) & 0xFF), static_cast<char>((u >> 24) & 0xFF)};
    lastRegResult_ = Store().setValue(hKey, ToCp1252(strValueName), TypeOfData, std::string_view(bytes, 4));
    return lastRegResult_ == reg::kSuccess;
}

Boolean Cl_KIV::RegSetStringValue(Long hKey, const String& strValueName, const String& strData) {
    if (hKey == 0) return false;
    // The text and its terminating zero: byte length + 1.
    std::string data = ToCp1252(strData);
    data.push_back('\0');
    lastRegResult_ = Store().setValue(hKey, ToCp1252(strValueName), reg::kRegSz, data);
    return lastRegResult_ == reg::kSuccess;
}

Variant Cl_KIV::RegEnumKey(Long hKey) {
    Long subKeys = 0, values = 0;
    lastRegResult_ = Store().queryInfoKey(hKey, subKeys, values);
    if (subKeys <= 0) return Variant::null();
    Array names(VarType::String, {{0, subKeys}});
    for (Long i = 0; i < subKeys; ++i) {
        std::string name;
        lastRegResult_ = Store().enumKey(hKey, i, name);
        names.set({i}, Variant(FromCp1252(name)));
    }
    return Variant(std::move(names));
}

// Entries as (part, index): part 0 the value's name, 1 its data as text, 2
// its type number. The index is the last dimension, the one that grows.
Variant Cl_KIV::RegEnumValue(Long hKey, Ref<Long> NumValues) {
    Long subKeys = 0, values = 0;
    lastRegResult_ = Store().queryInfoKey(hKey, subKeys, values);
    *NumValues = values;
    if (values <= 0) return Variant::null();
    Array entries(VarType::String, {{0, 3}, {0, 1}});
    for (Long i = 0; i < values; ++i) {
        if (i > 0) {
            Array grown(VarType::String, {{0, 3}, {0, i + 1}});
            for (Long part = 0; part < 3; ++part)
                for (Long j = 0; j < i; ++j) grown.set({part, j}, entries.at({part, j}));
            entries = std::move(grown);
        }
        std::string name, data;
        Long type = 0;
        lastRegResult_ = Store().enumValue(hKey, i, name, type, data);
        if (lastRegResult_ != reg::kSuccess) continue;
        entries.set({0, i}, Variant(FromCp1252(name)));
        entries.set({1, i}, Variant(EnumDataText(type, data)));
        entries.set({2, i}, Variant(FromCp1252(std::to_string(type))));
    }
    return Variant(std::move(entries));
}

// ---- readers of one value ----

void Cl_KIV::ReadRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue, String& Value,
                               Boolean& Ok) {
    RegistryStore& store = Store();
    Value.clear();
    Ok = false;
    // 1. Open the key.
    Long h = 0;
    if (store.openKey(KeyRoot, ToCp1252(KeyName), kAccess, h) != reg::kSuccess) {
        store.closeKey(h);
        return;
    }
    // 2. Query the value into a buffer of 1024 bytes.
    Long type = 0;
    std::string buffer;
    std::size_t n = 0;
    if (store.queryValue(h, ToCp1252(QueryValue), kBufferBytes, type, buffer, n) != reg::kSuccess) {
        store.closeKey(h);
        return;
    }
    // 3. A final zero byte is not part of the value.
    std::string kept = buffer.substr(0, n);
    if (n > 0 && kept[n - 1] == '\0') kept.pop_back();
    if (type == reg::kRegDword) {
        // 4. Bytes from the last to the first, each in hexadecimal without a
        // leading zero, read back as a hexadecimal literal.
        String digits;
        for (std::size_t k = kept.size(); k-- > 0;) digits += HexOf(static_cast<unsigned char>(kept[k]));
        Value = HexLiteralText(digits);
    } else {
        // 5. The bytes as text.
        Value = FromCp1252(kept);
    }
    // 6.
    store.closeKey(h);
    Ok = true;
}

Variant Cl_KIV::GetRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue) {
    String value;
    Boolean ok = false;
    ReadRegistryValue(KeyRoot, KeyName, QueryValue, value, ok);
    return Variant(ok ? value : String());
}

// Every read is traced, seven lines, to a fixed log in the root of drive C.
Variant Cl_KIV::GetZRRegistryValue(Long KeyRoot, const String& KeyName, const String& QueryValue) {
    const String log = u"C:\\ZRRegistry_LOGz.txt";
    const auto trace = [&](const String& line) { Dbg_Log(Variant(line), false, log, true); };
    trace(u"===== GetZRReg ===============");
    trace(u"===== KeyRoot    :" + FromCp1252(std::to_string(KeyRoot)));
    trace(u"===== KeyName    :" + KeyName);
    trace(u"===== QueryValue :" + QueryValue);
    trace(u"===== WinBit     :" + FromCp1252(std::to_string(GetWindowsBit())));
    trace(u"===== WinVersion :" + GetWindowsVer());
    String value;
    Boolean ok = false;
    ReadRegistryValue(KeyRoot, KeyName, QueryValue, value, ok);
    const String result = ok ? value : String(u"ZRERROR");
    trace(u"===== GetZRRegistryValue      :" + result);
    return Variant(result);
}

String Cl_KIV::RegRead(const String& R_KeyFull, const String& Sep) {
    // 1. Any separator becomes "\".
    String K = R_KeyFull;
    if (Sep != u"\\") K = SostChar(K, Sep, String(Sep.size(), u'\\'));
    // 2. The root is the first field, the value name the last.
    const String rootName = GetPipeStr(K, 1, u"\\", true);
    const String valueName = GetPipeStr(K, CheckedInteger(PipeCount(K, u"\\")), u"\\", true);
    // 3. The key path lies between them.
    const Long first = InStr(K, u"\\");
    const Long last = InStrRev(K, u"\\");
    const String path = first > 0 && last > first ? Mid(K, first + 1, last - first - 1) : String();
    // 4. Root names are compared exactly.
    Long root = 0;
    if (rootName == u"HKLM" || rootName == u"HKEY_LOCAL_MACHINE") root = reg::kLocalMachine;
    else if (rootName == u"HKCU" || rootName == u"HKEY_CURRENT_USER") root = reg::kCurrentUser;
    // 5.
    String result;
    Long h = 0;
    if (RegOpenKey(root, path, h)) {
        const Variant v = GetRegistryValue(root, path, valueName);
        if (!ToText(v).empty()) result = ToText(v);
        RegCloseKey(h);
    }
    return result;
}

// ---- the settings store ----

namespace {
String StorePath(const Variant& Appl, const Variant& Folder) {
    return u"SOFTWARE\\KORVANE_Lidmar\\" + JoinText(Appl) + u"\\" + JoinText(Folder);
}
}  // namespace

Variant Cl_KIV::GetZRReg(const Variant& Appl, const Variant& Folder, const String& NomeVar, const Variant& Std) {
    const Variant v = GetZRRegistryValue(reg::kLocalMachine, StorePath(Appl, Folder), NomeVar);
    if (v == Variant(u"ZRERROR")) return Std;
    return v;
}

Boolean Cl_KIV::SetZRReg(const Variant& Appl, const Variant& Folder, const String& NomeVar, const Variant& val,
                         ZRReg_Enum TipoVar) {
    Long h = 0;
    Boolean last = false;
    try {
        // 1. Open the folder's key, or make it.
        const String P = StorePath(Appl, Folder);
        last = RegOpenKey(reg::kLocalMachine, P, h);
        if (h == 0) last = RegCreateKey(reg::kLocalMachine, P, u"", h);
        if (TipoVar == ZRReg_String) {
            // 2.
            last = RegSetStringValue(h, NomeVar, ToText(val));
        } else if (TipoVar == ZRReg_Numeric) {
            // 3. A fraction is written with the type asked for, 0: REG_NONE.
            if (IsNumericValue(val)) {
                const Double x = ToDoubleLocale(val);
                if (x == IntFloor(x)) last = RegSetNumericValue(h, NomeVar, reg::kRegDword, ToLong(val));
                else last = RegSetNumericValue(h, NomeVar, TipoVar, RoundToLong(x));
            } else {
                last = RegSetStringValue(h, NomeVar, ToText(val));
            }
        }
        // 4. Any other type writes nothing.
    } catch (const RuntimeError&) {
        // A value that cannot be converted is not written.
        last = false;
    }
    // 5.
    RegCloseKey(h);
    return last;
}

// The typed family: lpRegINI is the application, lpParagraf the folder,
// lpKeyName the value. The saves answer 0 whatever the write did.

Long Cl_KIV::SAVERegString(const String& lpParagraf, const String& lpKeyName, const String& lpString,
                           const String& lpRegINI) {
    SetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpString), ZRReg_String);
    return 0;
}

String Cl_KIV::LOADRegString(const String& lpParagraf, const String& lpKeyName, const String& lpStd,
                             const String& lpRegINI) {
    return ToText(GetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpStd)));
}

Long Cl_KIV::SAVERegInt(const String& lpParagraf, const String& lpKeyName, Long lpLong, const String& lpRegINI) {
    SetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpLong), ZRReg_Numeric);
    return 0;
}

Long Cl_KIV::LOADRegInt(const String& lpParagraf, const String& lpKeyName, Long lpStd, const String& lpRegINI) {
    return ToLong(GetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpStd)));
}

Long Cl_KIV::SAVERegNumber(const String& lpParagraf, const String& lpKeyName, Long lpLong, const String& lpRegINI) {
    SetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpLong), ZRReg_Numeric);
    return 0;
}

Double Cl_KIV::LOADRegNumber(const String& lpParagraf, const String& lpKeyName, Long lpStd, const String& lpRegINI) {
    return ToNumber(GetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, Variant(lpStd)));
}

Long Cl_KIV::SAVERegDate(const String& lpParagraf, const String& lpKeyName, const Variant& lpDate,
                         const String& lpRegINI) {
    SetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, lpDate, ZRReg_String);
    return 0;
}

Date Cl_KIV::LOADRegDate(const String& lpParagraf, const String& lpKeyName, const Variant& lpStd,
                         const String& lpRegINI) {
    return ToDateLocale(GetZRReg(Variant(lpRegINI), Variant(lpParagraf), lpKeyName, lpStd));
}

}  // namespace kiv
