// Values between the automation VARIANT and the component's Variant.
#include "com/automation.hpp"

#include <dispex.h>

#include <vector>

namespace kiv::com {
namespace {

// A client's object reached by member name: forms, controls and any other
// object a host passes in. Our own objects come back unwrapped instead.
class ClientObject final : public Dispatchable {
public:
    explicit ClientObject(IDispatch* d) : d_(d) { d_->AddRef(); }
    ~ClientObject() override { d_->Release(); }
    ClientObject(const ClientObject&) = delete;
    ClientObject& operator=(const ClientObject&) = delete;
    IDispatch* dispatch() const { return d_; }

    std::string typeName() const override {
        ITypeInfo* info = nullptr;
        std::string name = "Object";
        if (SUCCEEDED(d_->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info)) && info != nullptr) {
            BSTR text = nullptr;
            if (SUCCEEDED(info->GetDocumentation(MEMBERID_NIL, &text, nullptr, nullptr, nullptr)) && text != nullptr) {
                name.clear();
                for (const wchar_t* p = text; *p != 0; ++p) name += static_cast<char>(*p < 0x80 ? *p : '?');
                SysFreeString(text);
            }
            info->Release();
        }
        return name;
    }

    Variant invoke(std::string_view member, InvokeKind kind, Arguments& args) override {
        std::wstring name(member.begin(), member.end());
        LPOLESTR names[] = {name.data()};
        DISPID id = DISPID_UNKNOWN;
        if (FAILED(d_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)) && !scriptDispId(name, &id))
            Raise(kNotSupported);
        return invokeById(id, kind, args);
    }

    Variant invokeById(std::int32_t id, InvokeKind kind, Arguments& args) override {
        if (!args.named.empty() || !args.namedById.empty()) Raise(kNamedArgumentNotFound);
        const std::size_t n = args.positional.size();
        std::vector<VARIANT> values(n);
        std::vector<VARIANT> refs(n);
        for (std::size_t i = 0; i < n; ++i) {
            VariantInit(&values[i]);
            ToVariant(*args.positional[i], &values[i]);
            // Reversed, and by reference so the client can write back.
            VARIANT& r = refs[n - 1 - i];
            VariantInit(&r);
            r.vt = VT_BYREF | VT_VARIANT;
            r.pvarVal = &values[i];
        }
        DISPID put = DISPID_PROPERTYPUT;
        DISPPARAMS params{refs.data(), nullptr, static_cast<UINT>(n), 0};
        WORD flags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
        if (kind == InvokeKind::PropertyPut || kind == InvokeKind::PropertyPutRef) {
            flags = kind == InvokeKind::PropertyPut ? DISPATCH_PROPERTYPUT : DISPATCH_PROPERTYPUTREF;
            params.rgdispidNamedArgs = &put;
            params.cNamedArgs = 1;
        }
        VARIANT result;
        VariantInit(&result);
        EXCEPINFO info{};
        const HRESULT hr = d_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, &result, &info, nullptr);
        for (std::size_t i = 0; i < n; ++i) {
            Variant after = FromVariant(values[i]);
            if (!(after == *args.positional[i])) *args.positional[i] = std::move(after);
            VariantClear(&values[i]);
        }
        if (hr == DISP_E_EXCEPTION) {
            if (info.pfnDeferredFillIn != nullptr) info.pfnDeferredFillIn(&info);
            const String text = FromBstr(info.bstrDescription);
            const HRESULT code = info.scode != 0 ? info.scode : static_cast<HRESULT>(0x800A0000L | info.wCode);
            SysFreeString(info.bstrDescription);
            SysFreeString(info.bstrSource);
            SysFreeString(info.bstrHelpFile);
            const int number = HRESULT_FACILITY(code) == FACILITY_CONTROL ? HRESULT_CODE(code) : 440;
            throw RuntimeError(number, std::string(text.begin(), text.end()));
        }
        if (hr == DISP_E_MEMBERNOTFOUND || hr == DISP_E_UNKNOWNNAME) Raise(kNotSupported);
        if (hr == DISP_E_BADPARAMCOUNT) Raise(kWrongArgumentCount);
        if (hr == DISP_E_TYPEMISMATCH) Raise(kTypeMismatch);
        // A script engine may answer its own run-time error as the HRESULT itself.
        if (FAILED(hr) && HRESULT_FACILITY(hr) == FACILITY_CONTROL) Raise(HRESULT_CODE(hr));
        if (FAILED(hr)) Raise(440);
        Variant out = FromVariant(result);
        VariantClear(&result);
        return out;
    }

private:
    // Objects made by a script engine publish their names through
    // IDispatchEx, and some engines answer only there.
    bool scriptDispId(const std::wstring& name, DISPID* id) const {
        // mingw's uuid library lacks IID_IDispatchEx.
        static const GUID kIidDispatchEx = ParseGuid("A6EF9860-C720-11D0-9337-00A0C90DCAA9");
        IDispatchEx* ex = nullptr;
        if (FAILED(d_->QueryInterface(kIidDispatchEx, reinterpret_cast<void**>(&ex))) || ex == nullptr) return false;
        BSTR text = SysAllocString(name.c_str());
        const HRESULT hr = ex->GetDispID(text, fdexNameCaseInsensitive, id);
        SysFreeString(text);
        ex->Release();
        return SUCCEEDED(hr);
    }

    IDispatch* d_;
};

VarType ElementType(VARTYPE vt) { return vt == VT_BSTR ? VarType::String : VarType::Variant; }

Variant FromSafeArray(SAFEARRAY* sa, VARTYPE element) {
    const UINT dims = SafeArrayGetDim(sa);
    if (dims < 1 || dims > 2) Raise(kTypeMismatch);
    std::vector<Bound> bounds;
    for (UINT d = 1; d <= dims; ++d) {
        LONG lo = 0, hi = -1;
        SafeArrayGetLBound(sa, d, &lo);
        SafeArrayGetUBound(sa, d, &hi);
        bounds.push_back({lo, hi - lo + 1});
    }
    Array out(ElementType(element), bounds);
    auto fetch = [&](std::vector<LONG> index) {  // index in VB order
        std::vector<LONG> reversed(index.rbegin(), index.rend());
        VARIANT item;
        VariantInit(&item);
        if (element == VT_VARIANT) {
            SafeArrayGetElement(sa, reversed.data(), &item);
        } else {
            // Every member of the union starts at its address.
            item.vt = element;
            SafeArrayGetElement(sa, reversed.data(), &item.llVal);
        }
        out.set(std::vector<Long>(index.begin(), index.end()), FromVariant(item));
        VariantClear(&item);
    };
    for (Long i = 0; i < bounds[0].count; ++i) {
        if (dims == 1) fetch({bounds[0].lower + i});
        else
            for (Long j = 0; j < bounds[1].count; ++j) fetch({bounds[0].lower + i, bounds[1].lower + j});
    }
    return Variant(std::move(out));
}

SAFEARRAY* ToSafeArray(const Array& a) {
    const VARTYPE element = a.element() == VarType::String ? VT_BSTR : VT_VARIANT;
    std::vector<SAFEARRAYBOUND> bounds;
    for (const Bound& b : a.dims()) bounds.push_back({static_cast<ULONG>(b.count), b.lower});
    SAFEARRAY* sa = SafeArrayCreate(element, static_cast<UINT>(bounds.size()), bounds.data());
    if (sa == nullptr) Raise(kOutOfMemory);
    auto store = [&](const std::vector<Long>& index) {
        std::vector<LONG> reversed(index.rbegin(), index.rend());
        const Variant& item = const_cast<Array&>(a).at(index);
        VARIANT v;
        VariantInit(&v);
        ToVariant(item, &v);
        if (element == VT_VARIANT) SafeArrayPutElement(sa, reversed.data(), &v);
        else SafeArrayPutElement(sa, reversed.data(), v.bstrVal);
        VariantClear(&v);
    };
    const std::vector<Bound>& d = a.dims();
    for (Long i = 0; i < d[0].count; ++i) {
        if (d.size() == 1) store({d[0].lower + i});
        else
            for (Long j = 0; j < d[1].count; ++j) store({d[0].lower + i, d[1].lower + j});
    }
    return sa;
}

}  // namespace

String FromBstr(BSTR text) {
    if (text == nullptr) return String();
    return String(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

BSTR ToBstr(const String& text) {
    return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
}

Variant FromVariant(const VARIANT& in) {
    if (in.vt & VT_BYREF) {
        if (in.vt == (VT_BYREF | VT_VARIANT)) return FromVariant(*in.pvarVal);
        VARIANT v;
        VariantInit(&v);
        if (FAILED(VariantCopyInd(&v, const_cast<VARIANT*>(&in)))) Raise(kTypeMismatch);
        Variant out = FromVariant(v);
        VariantClear(&v);
        return out;
    }
    if (in.vt & VT_ARRAY) return in.parray == nullptr ? Variant(Array(VarType::Variant, {{0, 0}})) : FromSafeArray(in.parray, static_cast<VARTYPE>(in.vt & VT_TYPEMASK));
    switch (in.vt) {
        case VT_EMPTY: return Variant();
        case VT_NULL: return Variant::null();
        case VT_ERROR: return Variant(ErrorValue{in.scode});
        case VT_I2: return Variant(Integer{in.iVal});
        case VT_I4: return Variant(Long{in.lVal});
        case VT_R4: return Variant(Single{in.fltVal});
        case VT_R8: return Variant(Double{in.dblVal});
        case VT_CY: return Variant(Currency{in.cyVal.int64});
        case VT_DATE: return Variant(Date{in.date});
        case VT_BOOL: return Variant(Boolean{in.boolVal != VARIANT_FALSE});
        case VT_UI1: return Variant(Byte{in.bVal});
        case VT_BSTR: return Variant(FromBstr(in.bstrVal));
        case VT_DISPATCH:
        case VT_UNKNOWN: {
            if (in.punkVal == nullptr) return Variant(Object());
            // Our own objects answer a private interface with their object.
            Object* ours = nullptr;
            if (SUCCEEDED(in.punkVal->QueryInterface(kIidKivObject, reinterpret_cast<void**>(&ours))) && ours != nullptr) {
                Object o = *ours;
                in.punkVal->Release();
                return Variant(o);
            }
            IDispatch* d = nullptr;
            if (FAILED(in.punkVal->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&d)))) Raise(kTypeMismatch);
            Object o = std::make_shared<ClientObject>(d);
            d->Release();
            return Variant(o);
        }
        default: {
            // Other numbers (JScript's, 64-bit, decimal): as a Double.
            VARIANT v;
            VariantInit(&v);
            if (FAILED(VariantChangeType(&v, const_cast<VARIANT*>(&in), 0, VT_R8))) Raise(kTypeMismatch);
            return Variant(Double{v.dblVal});
        }
    }
}

void ToVariant(const Variant& value, VARIANT* out) {
    VariantClear(out);
    const Variant::Storage& s = value.storage();
    if (std::holds_alternative<NullValue>(s)) out->vt = VT_NULL;
    else if (const ErrorValue* e = value.as<ErrorValue>()) { out->vt = VT_ERROR; out->scode = e->code; }
    else if (const Integer* i = value.as<Integer>()) { out->vt = VT_I2; out->iVal = *i; }
    else if (const Long* l = value.as<Long>()) { out->vt = VT_I4; out->lVal = *l; }
    else if (const Single* f = value.as<Single>()) { out->vt = VT_R4; out->fltVal = *f; }
    else if (const Double* d = value.as<Double>()) { out->vt = VT_R8; out->dblVal = *d; }
    else if (const Currency* c = value.as<Currency>()) { out->vt = VT_CY; out->cyVal.int64 = c->scaled; }
    else if (const Date* day = value.as<Date>()) { out->vt = VT_DATE; out->date = day->serial; }
    else if (const Boolean* b = value.as<Boolean>()) { out->vt = VT_BOOL; out->boolVal = *b ? VARIANT_TRUE : VARIANT_FALSE; }
    else if (const Byte* y = value.as<Byte>()) { out->vt = VT_UI1; out->bVal = *y; }
    else if (const String* t = value.as<String>()) { out->vt = VT_BSTR; out->bstrVal = ToBstr(*t); }
    else if (const Object* o = value.as<Object>()) {
        out->vt = VT_DISPATCH;
        if (!*o) out->pdispVal = nullptr;
        else if (auto* client = dynamic_cast<ClientObject*>(o->get())) { out->pdispVal = client->dispatch(); out->pdispVal->AddRef(); }
        else out->pdispVal = WrapObject(*o);
    } else if (const Array* a = value.array()) {
        out->vt = static_cast<VARTYPE>(VT_ARRAY | (a->element() == VarType::String ? VT_BSTR : VT_VARIANT));
        out->parray = ToSafeArray(*a);
    }
}

}  // namespace kiv::com
