#include "frame/col_kiv.hpp"

#include <memory>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv {

Object Col_KIV::Add(const Variant& DlK_DatMask, const String& sKey) {
    auto created = std::make_shared<Cl_KIV>();
    // A plain value would go to the default property of the new object's
    // slot, which is Nothing on a fresh object.
    if (!DlK_DatMask.isObject()) raise(kObjectNotSet);
    created->DlK_DatMask = *DlK_DatMask.as<Object>();
    if (!sKey.empty()) {
        for (const Entry& e : items_)
            if (e.key && CaseBlindEqual(*e.key, sKey)) raise(kDuplicateKey);
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
        raise(kInvalidCall);  // no item has that key
    }
    const Long position = ToLong(vntIndexKey);
    if (position < 1 || position > Count()) raise(kSubscriptOutOfRange);
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

Variant Col_KIV::invoke(std::string_view member, InvokeKind, Arguments& args) {
    // Five members: bound by hand, positional or by name.
    const auto arg = [&](std::size_t i, const char* name) -> const Variant* {
        if (i < args.positional.size() && !args.positional[i]->isMissing()) return args.positional[i];
        for (auto& [n, v] : args.named)
            if (CaseBlindEqual(FromUtf8(n), FromUtf8(name)) && !v->isMissing()) return v;
        return nullptr;
    };
    const auto required = [&](std::size_t i, const char* name) -> const Variant& {
        const Variant* v = arg(i, name);
        if (v == nullptr) raise(kArgumentNotOptional);
        return *v;
    };
    const auto arity = [&](std::size_t most) {
        if (args.positional.size() + args.named.size() > most) raise(kWrongArgumentCount);
    };
    const String name = FromUtf8(member);
    if (CaseBlindEqual(name, u"Add")) {
        arity(2);
        const Variant* key = arg(1, "sKey");
        if (key != nullptr && key->isNull()) raise(kTypeMismatch);
        return Variant(Add(required(0, "DlK_DatMask"), key ? ToText(*key) : String()));
    }
    if (CaseBlindEqual(name, u"Item")) {
        arity(1);
        return Variant(Item(required(0, "vntIndexKey")));
    }
    if (CaseBlindEqual(name, u"Count")) {
        arity(0);
        return Variant(Count());
    }
    if (CaseBlindEqual(name, u"Remove")) {
        arity(1);
        Remove(required(0, "vntIndexKey"));
        return Variant();
    }
    if (CaseBlindEqual(name, u"NewEnum")) {
        arity(0);
        return Variant(NewEnum());
    }
    raise(kNotSupported);
}

}  // namespace kiv
