// List and combo boxes: filled from a record and turned back into one,
// measured and widened, searched by text and by item data.
#include <algorithm>

#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

constexpr Long kTextMargin = 8;                 // pixels beside the widest item
constexpr Long kComboSetDroppedWidth = 352;     // CB_SETDROPPEDWIDTH
constexpr Long kListSetHorizontalExtent = 404;  // LB_SETHORIZONTALEXTENT

Long Count(const Object& Lst) { return ToLong(GetMember(Lst, "ListCount")); }
String Item(const Object& Lst, Long i) { return ToText(GetMember(Lst, "List", Variant(i))); }

// A type name ending in "ComboBox", letter case aside ("VB.ComboBox" too).
bool IsCombo(const Object& Lst) {
    const String type = FromUtf8(Lst->typeName());
    return CaseBlindEqual(Right(type, 8), u"ComboBox");
}

}  // namespace

Long Cl_KIV::Pipe2List(const String& T_Row, const Object& Lst, const String& Sep, Boolean Pulisci, Boolean Trimmed,
                       const String& DataSep) {
    // 1.
    if (Pulisci) CallMember(Lst, "Clear");
    // 2.
    if (T_Row.empty()) return 0;
    // 3.
    const Long n = PipeCount(T_Row, Sep);
    for (Long k = 1; k <= n; ++k) {
        const String f = GetPipeStr(T_Row, CheckedInteger(k), Sep, Trimmed);
        String item = f;
        std::optional<String> data;
        if (!DataSep.empty()) {
            if (const std::size_t at = f.find(DataSep); at != String::npos) {
                item = f.substr(0, at);
                data = f.substr(at + DataSep.size());
                if (Trimmed) {
                    item = Trim(item);
                    data = Trim(*data);
                }
            }
        }
        CallMember(Lst, "AddItem", Variant(item));
        if (data) {
            Long i = 0;
            try {
                i = ToLong(GetMember(Lst, "NewIndex"));
            } catch (const RuntimeError& e) {
                if (e.number() != kNotSupported) throw;
                i = Count(Lst) - 1;
            }
            SetMember(Lst, "ItemData", Variant(i), Variant(ToLong(Variant(ToNumber(Variant(*data))))));
        }
    }
    // 4.
    return n;
}

Long Cl_KIV::GetListWdt(const Object& Lst) {
    const Long n = Count(Lst);
    if (n <= 0) return 0;
    const Long hWnd = ToLong(GetMember(Lst, "hWnd"));
    Long widest = 0;
    WindowSystem& windows = CurrentPlatform().windows();
    for (Long i = 0; i < n; ++i) widest = std::max(widest, windows.textWidth(hWnd, Item(Lst, i)));
    return CheckedLong(std::int64_t{widest} + kTextMargin);
}

Long Cl_KIV::AllargaList(const Object& Lst, Long Extra) {
    // 1.
    const Long W = std::max<Long>(CheckedLong(std::int64_t{GetListWdt(Lst)} + Extra), 0);
    // 2., 3. A combo box widens its drop-down; a list box gets a scroll bar.
    const Long message = IsCombo(Lst) ? kComboSetDroppedWidth : kListSetHorizontalExtent;
    CurrentPlatform().windows().sendMessage(ToLong(GetMember(Lst, "hWnd")), message, W, 0);
    // 4.
    return W;
}

Long Cl_KIV::CercaList(const Object& Lst, const String& T_Cerca, Boolean Esatto, Boolean Seleziona) {
    const Long n = Count(Lst);
    for (Long i = 0; i < n; ++i) {
        const String item = Item(Lst, i);
        const bool match = Esatto ? CaseBlindEqual(item, T_Cerca)
                                  : item.size() >= T_Cerca.size() &&
                                        CaseBlindEqual(item.substr(0, T_Cerca.size()), T_Cerca);
        if (match) {
            if (Seleziona) SetMember(Lst, "ListIndex", Variant(i));
            return i;
        }
    }
    return -1;
}

Long Cl_KIV::SelItemData(const Object& Lst, Long N_Data) {
    Long found = -1;
    const Long n = Count(Lst);
    for (Long i = 0; i < n && found < 0; ++i)
        if (ToLong(GetMember(Lst, "ItemData", Variant(i))) == N_Data) found = i;
    // No match clears the selection, so nothing stale stays shown.
    SetMember(Lst, "ListIndex", Variant(found));
    return found;
}

Long Cl_KIV::GetItemData(const Object& Lst, Long Std) {
    const Long i = ToLong(GetMember(Lst, "ListIndex"));
    if (i < 0) return Std;
    return ToLong(GetMember(Lst, "ItemData", Variant(i)));
}

// Every item is followed by the separator, so Pipe2List gives back the same
// items, an empty last one included.
String Cl_KIV::List2Pipe(const Object& Lst, const String& Sep) {
    String result;
    const Long n = Count(Lst);
    for (Long i = 0; i < n; ++i) result += Item(Lst, i) + Sep;
    return result;
}

}  // namespace kiv
