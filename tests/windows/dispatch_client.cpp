// A C++ automation client of the registered DLLKiv.dll, for what script
// hosts cannot do: named arguments by DISPID, typed by-reference arguments,
// the exception record and the argument an error points at.
//   dispatch_client            the checks; "CLIENT-OK" last when all hold
//   dispatch_client bench N    N late-bound FmtNum calls, calls per second
#include <windows.h>
#include <oleauto.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

int fails = 0;

void Check(const char* name, bool ok, const std::wstring& detail = L"") {
    if (ok) return;
    std::printf("FAIL %s %ls\n", name, detail.c_str());
    ++fails;
}

VARIANT Text(const wchar_t* s) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_BSTR;
    v.bstrVal = SysAllocString(s);
    return v;
}
VARIANT Number(double d) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_R8;
    v.dblVal = d;
    return v;
}
VARIANT Short(short n) {
    VARIANT v;
    VariantInit(&v);
    v.vt = VT_I2;
    v.iVal = n;
    return v;
}

std::wstring TextOf(const VARIANT& v) { return v.vt == VT_BSTR ? std::wstring(v.bstrVal, SysStringLen(v.bstrVal)) : L"<not a text>"; }

struct Call {
    HRESULT hr = S_OK;
    VARIANT result{};
    EXCEPINFO error{};
    UINT argErr = 99;
};

// Arguments are given in the client's order: positional ones first, then
// the named ones with their DISPIDs; rgvarg takes them reversed.
Call Invoke(IDispatch* d, DISPID member, std::vector<VARIANT> positional, std::vector<std::pair<DISPID, VARIANT>> named) {
    std::vector<VARIANT> args;
    std::vector<DISPID> ids;
    for (auto it = named.rbegin(); it != named.rend(); ++it) {
        args.push_back(it->second);
        ids.push_back(it->first);
    }
    for (auto it = positional.rbegin(); it != positional.rend(); ++it) args.push_back(*it);
    DISPPARAMS params{args.data(), ids.data(), static_cast<UINT>(args.size()), static_cast<UINT>(ids.size())};
    Call c;
    VariantInit(&c.result);
    c.hr = d->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &c.result, &c.error, &c.argErr);
    return c;
}

std::vector<DISPID> Ids(IDispatch* d, std::vector<const wchar_t*> names, HRESULT* hr = nullptr) {
    std::vector<DISPID> ids(names.size(), 0);
    const HRESULT r = d->GetIDsOfNames(IID_NULL, const_cast<LPOLESTR*>(names.data()), static_cast<UINT>(names.size()),
                                       LOCALE_USER_DEFAULT, ids.data());
    if (hr != nullptr) *hr = r;
    return ids;
}

void Checks(IDispatch* d) {
    // Names case-blind; a parameter's DISPID is the same for any spelling.
    const std::vector<DISPID> ids = Ids(d, {L"fmtnum", L"DEC", L"fl_mig", L"Lun", L"N"});
    const std::vector<DISPID> again = Ids(d, {L"FmtNum", L"Dec"});
    Check("member id case-blind", ids[0] == again[0]);
    Check("parameter id case-blind", ids[1] == again[1]);
    const DISPID fmtNum = ids[0], dec = ids[1], mig = ids[2], lun = ids[3], n = ids[4];

    HRESULT hr = S_OK;
    const std::vector<DISPID> bad = Ids(d, {L"FmtNum", L"NoSuchArg"}, &hr);
    Check("unknown parameter name", hr == DISP_E_UNKNOWNNAME && bad[1] == DISPID_UNKNOWN);
    Ids(d, {L"NoSuchMember"}, &hr);
    Check("unknown member name", hr == DISP_E_UNKNOWNNAME);

    // A named argument after positional ones.
    Call c = Invoke(d, fmtNum, {Number(1234.5), Short(10)}, {{dec, Short(2)}});
    Check("named Dec", c.hr == S_OK && TextOf(c.result) == L"   1234,50", TextOf(c.result));
    // Every argument named, in another order than the parameters'.
    c = Invoke(d, fmtNum, {}, {{dec, Short(1)}, {lun, Short(6)}, {n, Number(-2.25)}});
    Check("all named", c.hr == S_OK && TextOf(c.result) == L"  -2,3", TextOf(c.result));

    // A typed by-reference argument, named, written back: the marks do not fit.
    VARIANT_BOOL marks = VARIANT_TRUE;
    VARIANT ref;
    VariantInit(&ref);
    ref.vt = VT_BYREF | VT_BOOL;
    ref.pboolVal = &marks;
    c = Invoke(d, fmtNum, {Number(1234567), Short(5)}, {{mig, ref}, {dec, Short(0)}});
    Check("by-ref named call", c.hr == S_OK && TextOf(c.result) == L"1234567", TextOf(c.result));
    Check("typed by-ref write-back", marks == VARIANT_FALSE);
    // The same through a Variant reference.
    VARIANT held;
    VariantInit(&held);
    held.vt = VT_BOOL;
    held.boolVal = VARIANT_TRUE;
    VARIANT vref;
    VariantInit(&vref);
    vref.vt = VT_BYREF | VT_VARIANT;
    vref.pvarVal = &held;
    c = Invoke(d, fmtNum, {Number(1234567), Short(5), Short(0), vref}, {});
    Check("variant by-ref write-back", held.vt == VT_BOOL && held.boolVal == VARIANT_FALSE);

    // A run-time error: the exception record, and the argument at fault.
    c = Invoke(d, fmtNum, {Text(L"abc"), Short(6)}, {});
    Check("error hr", c.hr == DISP_E_EXCEPTION);
    Check("error scode", c.error.scode == static_cast<SCODE>(0x800A000D));
    Check("error text", c.error.bstrDescription != nullptr && std::wstring(c.error.bstrDescription) == L"Type mismatch");
    // N is a Variant: the text fails inside the operation, not as an argument.
    Check("error inside the operation", c.argErr == 99, std::to_wstring(c.argErr));
    c = Invoke(d, fmtNum, {Number(1), Text(L"sei"), Short(2)}, {});
    Check("error argument, positional", c.hr == DISP_E_EXCEPTION && c.argErr == 1, std::to_wstring(c.argErr));
    c = Invoke(d, fmtNum, {Number(1), Short(6)}, {{dec, Text(L"due")}});
    Check("error argument, named", c.hr == DISP_E_EXCEPTION && c.argErr == 0, std::to_wstring(c.argErr));
    c = Invoke(d, fmtNum, {Number(1), Short(6)}, {{n, Number(2)}});
    Check("named argument given twice", c.hr != S_OK);

    c = Invoke(d, 0x7ffffff0, {}, {});
    Check("unknown member id", c.hr == DISP_E_MEMBERNOTFOUND);
}

// A host's form as FormPrimoPiano sees it: hWnd, Left, Top, Width and
// Height (twips) read late-bound.
class Form final : public IDispatch {
public:
    Form(HWND window, long left, long top, long width, long height)
        : values_{static_cast<long>(reinterpret_cast<INT_PTR>(window)), left, top, width, height} {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid == IID_IUnknown || iid == IID_IDispatch) {
            *out = this;
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // lives on the stack of the checks
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* n) override {
        *n = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        static const wchar_t* known[] = {L"hWnd", L"Left", L"Top", L"Width", L"Height"};
        for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
        for (DISPID k = 0; k < 5; ++k)
            if (_wcsicmp(names[0], known[k]) == 0) ids[0] = k + 1;
        return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (id < 1 || id > 5) return DISP_E_MEMBERNOTFOUND;
        ++reads;
        if (result != nullptr) {
            VariantInit(result);
            result->vt = VT_I4;
            result->lVal = values_[id - 1];
        }
        return S_OK;
    }
    int reads = 0;

private:
    long values_[5];
};

// FormPrimoPiano through user32: the window moved to the form's place in
// pixels and put above the others, then released.
void FormChecks(IDispatch* d) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"kiv form", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                        nullptr, GetModuleHandleW(nullptr), nullptr);
    Check("a window to move", window != nullptr);
    if (window == nullptr) return;
    const HDC screen = GetDC(nullptr);
    const int dpiX = GetDeviceCaps(screen, LOGPIXELSX), dpiY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    // 1440 twips to the inch: an inch and a half from the left, an inch down,
    // three inches by two.
    Form form(window, 2160, 1440, 4320, 2880);
    const DISPID member = Ids(d, {L"FormPrimoPiano"})[0];
    VARIANT frm;
    VariantInit(&frm);
    frm.vt = VT_DISPATCH;
    frm.pdispVal = &form;
    VARIANT onTop;
    VariantInit(&onTop);
    onTop.vt = VT_BOOL;
    onTop.boolVal = VARIANT_TRUE;
    Call c = Invoke(d, member, {frm, onTop}, {});
    Check("FormPrimoPiano call", c.hr == S_OK && form.reads == 5);
    RECT r{};
    GetWindowRect(window, &r);
    const bool placed = r.left == dpiX * 3 / 2 && r.top == dpiY && r.right - r.left == dpiX * 3 && r.bottom - r.top == dpiY * 2;
    Check("form placed in pixels", placed,
          std::to_wstring(r.left) + L"," + std::to_wstring(r.top) + L" " + std::to_wstring(r.right - r.left) + L"x" +
              std::to_wstring(r.bottom - r.top) + L" at " + std::to_wstring(dpiX) + L" dpi");
    Check("form on top", (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
    onTop.boolVal = VARIANT_FALSE;
    Invoke(d, member, {frm, onTop}, {});
    Check("form released", (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) == 0);
    DestroyWindow(window);
}

void Bench(IDispatch* d, long calls) {
    const std::vector<DISPID> ids = Ids(d, {L"FmtNum"});
    VARIANT args[3] = {Short(2), Short(10), Number(1234.5)};
    DISPPARAMS params{args, nullptr, 3, 0};
    VARIANT result;
    VariantInit(&result);
    const auto start = std::chrono::steady_clock::now();
    for (long i = 0; i < calls; ++i) {
        d->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result, nullptr, nullptr);
        VariantClear(&result);
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("FmtNum via IDispatch::Invoke: %ld calls in %.3f s, %.0f calls per second\n", calls, seconds,
                calls / seconds);
}

}  // namespace

int main(int argc, char** argv) {
    if (FAILED(CoInitialize(nullptr))) return 90;
    CLSID clsid;
    IDispatch* d = nullptr;
    if (FAILED(CLSIDFromProgID(L"DLLKiv.Cl_KIV", &clsid)) ||
        FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&d)))) {
        std::printf("FAIL creation by ProgID\n");
        return 91;
    }
    if (argc == 3 && std::string(argv[1]) == "bench") {
        Bench(d, std::atol(argv[2]));
    } else {
        Checks(d);
        FormChecks(d);
        if (fails == 0) std::printf("CLIENT-OK\n");
    }
    d->Release();
    CoUninitialize();
    return fails;
}
