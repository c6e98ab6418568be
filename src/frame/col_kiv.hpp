// Col_KIV: a keyed collection of Cl_KIV objects, one worker object per form
// or per date-mask control of the host.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/dispatchable.hpp"

namespace kiv {

class Col_KIV : public Dispatchable {
public:
    // Members: Add, Item (the default member), Count, Remove, NewEnum.
    const ClassInfo* description() const override;

    // A new Cl_KIV holding DlK_DatMask, added under sKey when it is not "".
    Object Add(const Variant& DlK_DatMask, const String& sKey = u"");
    // By position 1..Count or by key (letter case ignored).
    Object Item(const Variant& vntIndexKey) const;
    Long Count() const { return static_cast<Long>(items_.size()); }
    void Remove(const Variant& vntIndexKey);
    // The items in order: what a host's for-each walks.
    Array NewEnum() const;

private:
    struct Entry {
        std::optional<String> key;
        Object item;
    };
    std::size_t indexOf(const Variant& vntIndexKey) const;
    std::vector<Entry> items_;
};

}  // namespace kiv
