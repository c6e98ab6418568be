#include "host_objects.hpp"

#include <limits>
#include <memory>

#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"
#include "syntax.hpp"

namespace kiv::script {
namespace {

// The list controls' own errors.
constexpr int kInvalidPropertyValue = 380;
constexpr int kInvalidPropertyIndex = 381;

void NoNamedArguments(const Arguments& args) {
    if (!args.named.empty() || !args.namedById.empty()) Raise(kNamedArgumentNotFound);
}

void Arity(const Arguments& args, std::size_t count) {
    if (args.positional.size() != count) Raise(kWrongArgumentCount);
    for (const Variant* a : args.positional)
        if (a->isMissing()) Raise(kArgumentNotOptional);
}

bool Reads(InvokeKind kind) { return kind == InvokeKind::Method || kind == InvokeKind::PropertyGet; }

}  // namespace

Variant* HostObject::property(std::string_view name) {
    auto it = properties_.find(Lower(name));
    return it == properties_.end() ? nullptr : &it->second;
}

void HostObject::setProperty(std::string_view name, Variant value) { properties_[Lower(name)] = std::move(value); }

Variant HostObject::invoke(std::string_view member, InvokeKind kind, Arguments& args) {
    NoNamedArguments(args);
    if (Reads(kind)) {
        const Variant* v = property(member);
        if (v == nullptr) Raise(kNotSupported);
        Arity(args, 0);
        return *v;
    }
    Arity(args, 1);
    if (kind == InvokeKind::PropertyPutRef && !args.positional[0]->isObject()) Raise(kObjectRequired);
    setProperty(member, *args.positional[0]);
    return Variant();
}

HostListControl::HostListControl(std::string typeName) : HostObject(std::move(typeName)) {
    setProperty("hWnd", Variant(Long{0}));
}

bool HostListControl::isCombo() const { return Lower(typeName()) == "combobox"; }

std::size_t HostListControl::at(const Variant& index) const {
    const Long i = ToLong(index);
    if (i < 0 || static_cast<std::size_t>(i) >= items_.size()) throw RuntimeError(kInvalidPropertyIndex, "Invalid property array index");
    return static_cast<std::size_t>(i);
}

void HostListControl::select(Integer index) {
    listIndex_ = index;
    if (isCombo()) comboText_ = index >= 0 ? items_[static_cast<std::size_t>(index)].text : String();
}

String HostListControl::text() const {
    if (isCombo()) return comboText_;
    return listIndex_ >= 0 ? items_[static_cast<std::size_t>(listIndex_)].text : String();
}

// A text that names an item selects it; any other text clears the selection
// (a combo box keeps the text in its edit field).
void HostListControl::setText(const String& text) {
    Integer found = -1;
    for (std::size_t i = 0; i < items_.size() && found < 0; ++i)
        if (CaseBlindEqual(items_[i].text, text)) found = static_cast<Integer>(i);
    listIndex_ = found;
    if (isCombo()) comboText_ = text;
}

Variant HostListControl::invoke(std::string_view member, InvokeKind kind, Arguments& args) {
    NoNamedArguments(args);
    const std::string name = Lower(member);
    auto& p = args.positional;
    auto readOnly = [&] {
        if (!Reads(kind)) Raise(kWrongArgumentCount);
    };
    if (name == "additem") {
        readOnly();
        if (p.empty() || p.size() > 2) Raise(kWrongArgumentCount);
        if (p[0]->isMissing()) Raise(kArgumentNotOptional);
        const String text = ToText(*p[0]);
        const Long index = p.size() > 1 && !p[1]->isMissing() ? ToLong(*p[1]) : static_cast<Long>(items_.size());
        if (index < 0 || static_cast<std::size_t>(index) > items_.size()) Raise(kInvalidCall);
        if (items_.size() >= static_cast<std::size_t>(std::numeric_limits<Integer>::max())) Raise(kOutOfMemory);
        items_.insert(items_.begin() + index, Item{text, 0});
        newIndex_ = static_cast<Integer>(index);
        if (listIndex_ >= index) ++listIndex_;  // the selected item stays selected
        return Variant();
    }
    if (name == "removeitem") {
        readOnly();
        Arity(args, 1);
        const Long index = ToLong(*p[0]);
        if (index < 0 || static_cast<std::size_t>(index) >= items_.size()) Raise(kInvalidCall);
        items_.erase(items_.begin() + index);
        if (listIndex_ == index) select(-1);
        else if (listIndex_ > index) --listIndex_;
        return Variant();
    }
    if (name == "clear") {
        readOnly();
        Arity(args, 0);
        items_.clear();
        listIndex_ = newIndex_ = -1;
        comboText_.clear();
        return Variant();
    }
    if (name == "list" || name == "itemdata") {
        const bool list = name == "list";
        if (Reads(kind)) {
            Arity(args, 1);
            const Item& item = items_[at(*p[0])];
            return list ? Variant(item.text) : Variant(item.data);
        }
        Arity(args, 2);
        Item& item = items_[at(*p[0])];
        if (list) item.text = ToText(*p[1]);
        else item.data = ToLong(*p[1]);
        return Variant();
    }
    if (name == "listcount" || name == "newindex") {
        readOnly();
        Arity(args, 0);
        return Variant(name == "listcount" ? static_cast<Integer>(items_.size()) : newIndex_);
    }
    if (name == "listindex") {
        if (Reads(kind)) {
            Arity(args, 0);
            return Variant(listIndex_);
        }
        Arity(args, 1);
        const Long index = ToLong(*p[0]);
        if (index < -1 || index >= static_cast<Long>(items_.size()))
            throw RuntimeError(kInvalidPropertyValue, "Invalid property value");
        select(static_cast<Integer>(index));
        return Variant();
    }
    if (name == "text") {
        if (Reads(kind)) {
            Arity(args, 0);
            return Variant(text());
        }
        Arity(args, 1);
        setText(ToText(*p[0]));
        return Variant();
    }
    return HostObject::invoke(member, kind, args);
}

Object MakeHostObject(const String& typeName) {
    const std::string type = ToUtf8(typeName);
    if (type.empty()) Raise(kInvalidCall);
    const std::string lower = Lower(type);
    if (lower == "listbox" || lower == "combobox") return std::make_shared<HostListControl>(type);
    return std::make_shared<HostObject>(type);
}

}  // namespace kiv::script
