// The automation server's objects: our dispatchable objects seen by COM
// clients through IDispatch, and the clients' objects seen by the operations
// as Dispatchables.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <atomic>

#include "frame/dispatch.hpp"

namespace kiv::com {

// Live objects and server locks: DllCanUnloadNow answers from them.
extern std::atomic<long> gModuleRefs;

// IUnknown for a server object of one interface: counted among the live
// objects, deleted with its last reference.
template <class Interface, const IID& kIid>
class Unknown : public Interface {
public:
    Unknown() { ++gModuleRefs; }
    Unknown(const Unknown&) = delete;
    Unknown& operator=(const Unknown&) = delete;
    virtual ~Unknown() { --gModuleRefs; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        if (iid == IID_IUnknown || iid == kIid) {
            *out = static_cast<Interface*>(this);
            AddRef();
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG n = --refs_;
        if (n == 0) delete this;
        return n;
    }

private:
    std::atomic<ULONG> refs_{1};
};

// Not registered: QueryInterface for it gives an Object* to our own object
// (with a reference added to the COM object), so it comes back unwrapped.
extern const GUID kIidKivObject;

GUID ParseGuid(std::string_view text);
String FromBstr(BSTR text);
BSTR ToBstr(const String& text);

// VARIANT <-> Variant. An error raised while converting is a RuntimeError.
Variant FromVariant(const VARIANT& v);
void ToVariant(const Variant& value, VARIANT* out);  // out is cleared first

// A new IDispatch (reference count 1) over one of our objects.
IDispatch* WrapObject(Object object);

// The embedded type library's description of a class; nullptr if absent.
ITypeInfo* ClassTypeInfo(const ClassInfo& info);

}  // namespace kiv::com
