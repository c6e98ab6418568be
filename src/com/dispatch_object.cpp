// IDispatch over the dispatch tables: names case-blind, DISPIDs the tables'
// member ids, arguments in the client's order reversed, by-reference
// arguments written back where the operation changed them, run-time errors
// as DISP_E_EXCEPTION with the error's number and text.
#include <mutex>
#include <new>
#include <unordered_map>
#include <vector>

#include "com/automation.hpp"
#include "com/class_ids.hpp"

namespace kiv::com {

// {7d0f4b64-8f3e-4f52-9a0c-2f5c0b1e6a11}
const GUID kIidKivObject = {0x7d0f4b64, 0x8f3e, 0x4f52, {0x9a, 0x0c, 0x2f, 0x5c, 0x0b, 0x1e, 0x6a, 0x11}};

namespace {

std::string Narrow(const OLECHAR* name) {
    std::string out;
    for (; *name != 0; ++name) {
        if (*name >= 0x80) return std::string();  // no member has such a name
        out += static_cast<char>(*name);
    }
    return out;
}

InvokeKind KindOf(WORD flags) {
    if (flags & DISPATCH_PROPERTYPUTREF) return InvokeKind::PropertyPutRef;
    if (flags & DISPATCH_PROPERTYPUT) return InvokeKind::PropertyPut;
    if (flags & DISPATCH_METHOD) return InvokeKind::Method;
    return InvokeKind::PropertyGet;
}

HRESULT Fail(EXCEPINFO* info, HRESULT scode, const std::string& text, const std::string& source) {
    if (info != nullptr) {
        *info = EXCEPINFO{};
        info->scode = scode;
        info->bstrSource = ToBstr(String(source.begin(), source.end()));
        info->bstrDescription = ToBstr(String(text.begin(), text.end()));
    }
    return DISP_E_EXCEPTION;
}

// IEnumVARIANT over a snapshot of a collection's items.
class Enumerator final : public Unknown<IEnumVARIANT, IID_IEnumVARIANT> {
public:
    explicit Enumerator(std::vector<Variant> items, std::size_t next = 0) : items_(std::move(items)), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out, ULONG* fetched) override {
        ULONG done = 0;
        try {
            for (; done < count && next_ < items_.size(); ++done, ++next_) {
                VariantInit(&out[done]);
                ToVariant(items_[next_], &out[done]);
            }
        } catch (...) {
            return E_OUTOFMEMORY;
        }
        if (fetched != nullptr) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        next_ += count;
        if (next_ > items_.size()) { next_ = items_.size(); return S_FALSE; }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Reset() override { next_ = 0; return S_OK; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        if (out == nullptr) return E_POINTER;
        *out = new (std::nothrow) Enumerator(items_, next_);
        return *out != nullptr ? S_OK : E_OUTOFMEMORY;
    }

private:
    std::vector<Variant> items_;
    std::size_t next_;
};

class AutomationObject;

// One COM object per object of ours while a client holds it, so that a
// client's identity test (VBScript's Is) sees the same object again.
std::mutex gLiveLock;
std::unordered_map<const Dispatchable*, AutomationObject*> gLive;

class AutomationObject final : public IDispatch {
public:
    explicit AutomationObject(Object object) : object_(std::move(object)) { ++gModuleRefs; }
    ~AutomationObject() { --gModuleRefs; }

    // A reference to the live wrapper of `object`, or a new one.
    static IDispatch* wrap(Object object) {
        std::lock_guard<std::mutex> guard(gLiveLock);
        auto found = gLive.find(object.get());
        if (found != gLive.end() && found->second->refs_ > 0) {
            found->second->AddRef();
            return found->second;
        }
        auto* wrapper = new AutomationObject(std::move(object));
        gLive[wrapper->object_.get()] = wrapper;
        return wrapper;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (iid == kIidKivObject) {
            *out = &object_;
        } else if (iid == IID_IUnknown || iid == IID_IDispatch || isOwnInterface(iid)) {
            *out = static_cast<IDispatch*>(this);
        } else {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
    ULONG STDMETHODCALLTYPE Release() override {
        std::unique_lock<std::mutex> guard(gLiveLock);
        const ULONG n = --refs_;
        if (n == 0) {
            auto found = gLive.find(object_.get());
            if (found != gLive.end() && found->second == this) gLive.erase(found);
            guard.unlock();
            delete this;
        }
        return n;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr) return E_POINTER;
        *count = description() != nullptr && ClassTypeInfo(*description()) != nullptr ? 1 : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (index != 0) return DISP_E_BADINDEX;
        ITypeInfo* info = description() != nullptr ? ClassTypeInfo(*description()) : nullptr;
        if (info == nullptr) return TYPE_E_ELEMENTNOTFOUND;
        info->AddRef();
        *out = info;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
        const ClassInfo* info = description();
        const Member* member = info != nullptr ? info->find(Narrow(names[0])) : nullptr;
        ids[0] = member != nullptr ? member->id : DISPID_UNKNOWN;
        HRESULT hr = member != nullptr ? S_OK : DISP_E_UNKNOWNNAME;
        for (UINT i = 1; i < count; ++i) {
            ids[i] = member != nullptr ? ParamId(*member, Narrow(names[i])) : -1;
            if (ids[i] < 0) {
                ids[i] = DISPID_UNKNOWN;
                hr = DISP_E_UNKNOWNNAME;
            }
        }
        return hr;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                     EXCEPINFO* info, UINT* argErr) override {
        const UINT count = params != nullptr ? params->cArgs : 0;
        const UINT named = params != nullptr ? params->cNamedArgs : 0;
        if (named > count) return E_INVALIDARG;
        const UINT positional = count - named;
        // What each argument held when it arrived, and where it came from.
        std::vector<Variant> values;
        values.reserve(count);
        std::vector<VARIANT*> sources;
        Arguments args;
        const std::string source = object_->typeName();
        try {
            auto take = [&](VARIANT& v) -> Variant* {
                const bool omitted = v.vt == VT_ERROR && v.scode == DISP_E_PARAMNOTFOUND;
                values.push_back(omitted ? Variant::missing() : FromVariant(v));
                sources.push_back(&v);
                return &values.back();
            };
            for (UINT i = 0; i < positional; ++i) args.positional.push_back(take(params->rgvarg[count - 1 - i]));
            for (UINT j = 0; j < named; ++j) {
                Variant* value = take(params->rgvarg[j]);
                if (params->rgdispidNamedArgs[j] == DISPID_PROPERTYPUT) args.positional.push_back(value);
                else args.namedById.emplace_back(params->rgdispidNamedArgs[j], value);
            }
            const std::vector<Variant> before = values;
            Variant answer;
            try {
                answer = object_->invokeById(id, KindOf(flags), args);
            } catch (...) {
                writeBack(before, values, sources);
                throw;
            }
            writeBack(before, values, sources);
            if (result != nullptr) {
                VariantInit(result);
                if (id == DISPID_NEWENUM && answer.isArray()) {
                    result->vt = VT_UNKNOWN;
                    result->punkVal = new Enumerator(answer.array()->items());
                } else {
                    ToVariant(answer, result);
                }
            }
            return S_OK;
        } catch (const RuntimeError& e) {
            if (e.number() == kNotSupported && description() != nullptr && description()->findById(id) == nullptr)
                return DISP_E_MEMBERNOTFOUND;
            if (argErr != nullptr && e.argument() >= 0) *argErr = argumentIndex(e.argument(), count, positional, params);
            return Fail(info, static_cast<HRESULT>(0x800A0000UL + static_cast<unsigned>(e.number())), e.description(), source);
        } catch (const std::bad_alloc&) {
            return Fail(info, static_cast<HRESULT>(0x800A0000UL + kOutOfMemory), DescribeError(kOutOfMemory), source);
        } catch (const std::exception& e) {
            return Fail(info, E_UNEXPECTED, e.what(), source);
        }
    }

private:
    const ClassInfo* description() const { return object_->description(); }

    bool isOwnInterface(REFIID iid) const {
        const ClassInfo* info = description();
        const ClassIds* ids = info != nullptr ? FindClassIds(info->name) : nullptr;
        return ids != nullptr && iid == ParseGuid(ids->interfaceId);
    }

    // The index in rgvarg of the argument bound to parameter `position`.
    static UINT argumentIndex(int position, UINT count, UINT positional, DISPPARAMS* params) {
        if (static_cast<UINT>(position) < positional) return count - 1 - static_cast<UINT>(position);
        for (UINT j = 0; j < count - positional; ++j)
            if (params->rgdispidNamedArgs[j] == position) return j;
        return 0;
    }

    // By-reference arguments the operation changed go back to the client's
    // variable, converted to its type when it is a typed reference.
    static void writeBack(const std::vector<Variant>& before, const std::vector<Variant>& after,
                          const std::vector<VARIANT*>& sources) {
        for (std::size_t i = 0; i < sources.size(); ++i) {
            VARIANT& target = *sources[i];
            if (!(target.vt & VT_BYREF) || after[i] == before[i]) continue;
            if (target.vt == (VT_BYREF | VT_VARIANT)) {
                ToVariant(after[i], target.pvarVal);
                continue;
            }
            VARIANT fresh, typed;
            VariantInit(&fresh);
            VariantInit(&typed);
            ToVariant(after[i], &fresh);
            const VARTYPE base = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
            if (FAILED(VariantChangeType(&typed, &fresh, 0, base))) {
                VariantClear(&fresh);
                Raise(kTypeMismatch);
            }
            VariantClear(&fresh);
            if (base & VT_ARRAY) {
                SafeArrayDestroy(*target.pparray);
                *target.pparray = typed.parray;
                continue;
            }
            switch (base) {
                case VT_I2: *target.piVal = typed.iVal; break;
                case VT_I4: *target.plVal = typed.lVal; break;
                case VT_R4: *target.pfltVal = typed.fltVal; break;
                case VT_R8: *target.pdblVal = typed.dblVal; break;
                case VT_CY: *target.pcyVal = typed.cyVal; break;
                case VT_DATE: *target.pdate = typed.date; break;
                case VT_BOOL: *target.pboolVal = typed.boolVal; break;
                case VT_UI1: *target.pbVal = typed.bVal; break;
                case VT_BSTR: SysFreeString(*target.pbstrVal); *target.pbstrVal = typed.bstrVal; typed.vt = VT_EMPTY; break;
                case VT_DISPATCH:
                    if (*target.ppdispVal != nullptr) (*target.ppdispVal)->Release();
                    *target.ppdispVal = typed.pdispVal;
                    typed.vt = VT_EMPTY;
                    break;
                default: break;
            }
            VariantClear(&typed);
        }
    }

    Object object_;
    std::atomic<ULONG> refs_{1};
};

}  // namespace

IDispatch* WrapObject(Object object) { return AutomationObject::wrap(std::move(object)); }

}  // namespace kiv::com
