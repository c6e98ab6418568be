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
