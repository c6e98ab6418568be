#include "frame/col_kiv.hpp"

#include <memory>

#include "frame/convert.hpp"
#include "frame/dispatch.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

Object Col_KIV::Add(const Variant& DlK_DatMask, const String& sKey) {
    auto created = std::make_shared<Cl_KIV>();
    // A plain value would go to the default property of the new object's
    // slot, which is Nothing on a fresh object.
    if (!DlK_DatMask.isObject()) Raise(kObjectNotSet);
    created->DlK_DatMask = *DlK_DatMask.as<Object>();
    if (!sKey.empty()) {
        for (const Entry& e : items_)
            if (e.key && CaseBlindEqual(*e.key, sKey)) Raise(kDuplicateKey);
        items_.push_back({sKey, created});
    } else {
        items_.push_back({std::nullopt, created});
    }
    return created;
}

std::size_t Col_KIV::indexOf(const Variant& vntIndexKey) const {
    if (const String* key = vntIndexKey.as<String>()) {
        for (std::size_t i = 0; i < items_.size(); ++i)
            if (items_[i].key && CaseBlindEqual(*items_[i].key, *key)) return i;
        Raise(kInvalidCall);  // no item has that key
    }
    const Long position = ToLong(vntIndexKey);
    if (position < 1 || position > Count()) Raise(kSubscriptOutOfRange);
    return static_cast<std::size_t>(position - 1);
}

Object Col_KIV::Item(const Variant& vntIndexKey) const { return items_[indexOf(vntIndexKey)].item; }

void Col_KIV::Remove(const Variant& vntIndexKey) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(indexOf(vntIndexKey)));
}

Array Col_KIV::NewEnum() const {
    Array all(VarType::Variant, {{1, Count()}});
    for (Long i = 1; i <= Count(); ++i) all.at({i}) = Variant(items_[static_cast<std::size_t>(i - 1)].item);
    return all;
}

const ClassInfo& ColKivClass() {
    using C = Col_KIV;
    static const ClassInfo info(
        "Col_KIV", "DLLKiv.Col_KIV", [] { return Object(std::make_shared<Col_KIV>()); },
        {
            Method<&C::Add>("Add", "A new Cl_KIV holding DlK_DatMask, added under sKey unless it is \"\".",
                            ByRef("DlK_DatMask", "the date-mask control the new item holds"),
                            OptRef("sKey", Variant(u""), "the key of the new item; \"\" for none")),
            Method<&C::Item>("Item", "The item at a position 1..Count or under a key (letter case ignored).",
                             ByRef("vntIndexKey", "a position 1 to Count, or a key"))
                .asPropertyGet()
                .withId(kDefaultMemberId),
            Method<&C::Count>("Count", "The number of items.").asPropertyGet(),
            Method<&C::Remove>("Remove", "Removes the item at a position or under a key.",
                               ByRef("vntIndexKey", "a position 1 to Count, or a key")),
            Method<&C::NewEnum>("NewEnum", "The items in order, for a for-each loop.")
                .asPropertyGet()
                .withId(kEnumeratorId)
                .asHidden(),
        });
    return info;
}

const ClassInfo* Col_KIV::description() const { return &ColKivClass(); }

}  // namespace kiv
