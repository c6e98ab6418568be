// The in-process server: class factories for the creatable classes, the
// entry points regsvr32 and COM call, registration of the ProgIDs, classes
// and the embedded type library (resource 1).
#include <cstdio>
#include <map>
#include <new>
#include <mutex>
#include <string>

#include <olectl.h>

#include "com/automation.hpp"
#include "com/class_ids.hpp"

namespace kiv::com {

std::atomic<long> gModuleRefs{0};

namespace {

HMODULE gModule = nullptr;

std::wstring Wide(std::string_view text) { return std::wstring(text.begin(), text.end()); }
std::wstring Braced(std::string_view guid) { return L"{" + Wide(guid) + L"}"; }

std::wstring ModulePath() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(gModule, path, MAX_PATH);
    return path;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return c - 'A' + 10;
}

class ClassFactory final : public Unknown<IClassFactory, IID_IClassFactory> {
public:
    explicit ClassFactory(const ClassInfo& info) : info_(info) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        try {
            IDispatch* object = WrapObject(info_.create());
            const HRESULT hr = object->QueryInterface(iid, out);
            object->Release();
            return hr;
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock) ++gModuleRefs;
        else --gModuleRefs;
        return S_OK;
    }

private:
    const ClassInfo& info_;
};

bool SetValue(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    HKEY k = nullptr;
    if (RegCreateKeyExW(root, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &k, nullptr) != ERROR_SUCCESS) return false;
    const LONG r = RegSetValueExW(k, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(k);
    return r == ERROR_SUCCESS;
}

bool KeyExists(HKEY root, const std::wstring& key) {
    HKEY k = nullptr;
    if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, &k) != ERROR_SUCCESS) return false;
    RegCloseKey(k);
    return true;
}

void DeleteTree(HKEY root, const std::wstring& key) {
    if (KeyExists(root, key)) RegDeleteTreeW(root, key.c_str());
    RegDeleteKeyW(root, key.c_str());
}

ITypeLib* EmbeddedLibrary() {
    static std::once_flag once;
    static ITypeLib* library = nullptr;
    std::call_once(once, [] {
        if (FAILED(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &library))) library = nullptr;
    });
    return library;
}

}  // namespace

GUID ParseGuid(std::string_view t) {
    // "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx"
    auto hex = [&](std::size_t from, std::size_t digits) {
        unsigned long long v = 0;
        for (std::size_t i = 0; i < digits; ++i) v = v * 16 + static_cast<unsigned>(HexDigit(t[from + i]));
        return v;
    };
    GUID g{};
    g.Data1 = static_cast<unsigned long>(hex(0, 8));
    g.Data2 = static_cast<unsigned short>(hex(9, 4));
    g.Data3 = static_cast<unsigned short>(hex(14, 4));
    g.Data4[0] = static_cast<unsigned char>(hex(19, 2));
    g.Data4[1] = static_cast<unsigned char>(hex(21, 2));
    for (std::size_t i = 0; i < 6; ++i) g.Data4[2 + i] = static_cast<unsigned char>(hex(24 + 2 * i, 2));
    return g;
}

ITypeInfo* ClassTypeInfo(const ClassInfo& info) {
    const ClassIds* ids = FindClassIds(info.name);
    ITypeLib* library = EmbeddedLibrary();
    if (ids == nullptr || library == nullptr) return nullptr;
    static std::mutex lock;
    static std::map<std::string, ITypeInfo*> cache;
    std::lock_guard<std::mutex> guard(lock);
    ITypeInfo*& slot = cache[info.name];
    if (slot == nullptr && FAILED(library->GetTypeInfoOfGuid(ParseGuid(ids->interfaceId), &slot))) slot = nullptr;
    return slot;
}

}  // namespace kiv::com

using namespace kiv::com;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        gModule = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID clsid, REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (const kiv::ClassInfo* c : kiv::CreatableClasses()) {
        const ClassIds* ids = FindClassIds(c->name);
        if (ids == nullptr || clsid != ParseGuid(ids->classId)) continue;
        auto* factory = new (std::nothrow) ClassFactory(*c);
        if (factory == nullptr) return E_OUTOFMEMORY;
        const HRESULT hr = factory->QueryInterface(iid, out);
        factory->Release();
        return hr;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() { return gModuleRefs == 0 ? S_OK : S_FALSE; }

HRESULT STDAPICALLTYPE DllUnregisterServer();

HRESULT STDAPICALLTYPE DllRegisterServer() {
    const std::wstring path = ModulePath();
    for (const kiv::ClassInfo* c : kiv::CreatableClasses()) {
        const ClassIds* ids = FindClassIds(c->name);
        if (ids == nullptr) continue;
        const std::wstring progId = Wide(c->progId), clsid = Braced(ids->classId);
        const std::wstring classKey = L"CLSID\\" + clsid;
        const bool ok = SetValue(HKEY_CLASSES_ROOT, progId, nullptr, Wide(c->name)) &&
                        SetValue(HKEY_CLASSES_ROOT, progId + L"\\Clsid", nullptr, clsid) &&
                        SetValue(HKEY_CLASSES_ROOT, classKey, nullptr, Wide(c->name)) &&
                        SetValue(HKEY_CLASSES_ROOT, classKey + L"\\ProgID", nullptr, progId) &&
                        SetValue(HKEY_CLASSES_ROOT, classKey + L"\\TypeLib", nullptr, Braced(kLibraryId)) &&
                        SetValue(HKEY_CLASSES_ROOT, classKey + L"\\InprocServer32", nullptr, path) &&
                        SetValue(HKEY_CLASSES_ROOT, classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
        if (!ok) {
            DllUnregisterServer();
            return SELFREG_E_CLASS;
        }
    }
    ITypeLib* library = nullptr;
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_REGISTER, &library))) {
        DllUnregisterServer();
        return SELFREG_E_TYPELIB;
    }
    library->Release();
    return S_OK;
}

HRESULT STDAPICALLTYPE DllUnregisterServer() {
    for (const kiv::ClassInfo* c : kiv::CreatableClasses()) {
        const ClassIds* ids = FindClassIds(c->name);
        if (ids == nullptr) continue;
        DeleteTree(HKEY_CLASSES_ROOT, Wide(c->progId));
        DeleteTree(HKEY_CLASSES_ROOT, L"CLSID\\" + Braced(ids->classId));
    }
    // UnRegisterTypeLib fails on a library that is not registered.
    if (KeyExists(HKEY_CLASSES_ROOT, L"TypeLib\\" + Braced(kLibraryId)))
        UnRegisterTypeLib(ParseGuid(kLibraryId), 1, 0, LOCALE_NEUTRAL, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    DeleteTree(HKEY_CLASSES_ROOT, L"TypeLib\\" + Braced(kLibraryId));
    return S_OK;
}

}  // extern "C"
