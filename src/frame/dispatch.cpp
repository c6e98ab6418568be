#include "frame/dispatch.hpp"

#include <array>
#include <new>
#include <stdexcept>
#include <unordered_map>

#include "frame/ascii.hpp"

namespace kiv {
namespace {

std::string LowerAscii(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = AsciiLower(c);
    return out;
}

Variant CallProperty(Dispatchable& object, const Member& member, InvokeKind kind, Arguments& args) {
    const std::size_t given = args.positional.size() + args.named.size() + args.namedById.size();
    if (kind == InvokeKind::PropertyGet || kind == InvokeKind::Method) {
        if (given != 0) Raise(kWrongArgumentCount);
        return member.get(object);
    }
    if (given != 1) Raise(kWrongArgumentCount);
    Variant* value = !args.positional.empty() ? args.positional.front()
                     : !args.named.empty()    ? args.named.front().second
                                              : args.namedById.front().second;
    // An object slot takes only an object; a value slot takes a value by Let.
    if (member.result == VarType::Object ? !value->isObject() : kind == InvokeKind::PropertyPutRef)
        Raise(kObjectRequired);
    member.set(object, *value);
    return Variant();
}

std::string DefaultText(const Variant& v) {
    if (const String* s = v.as<String>()) {
        std::string out = "\"";
        for (char16_t c : *s) out += static_cast<char>(c);  // defaults are plain ASCII
        return out + "\"";
    }
    if (const Boolean* b = v.as<Boolean>()) return *b ? "True" : "False";
    if (const Integer* i = v.as<Integer>()) return std::to_string(*i);
    if (const Long* l = v.as<Long>()) return std::to_string(*l);
    if (const Double* d = v.as<Double>()) {
        std::string t = std::to_string(*d);
        while (t.size() > 1 && t.back() == '0' && t[t.size() - 2] != '.') t.pop_back();
        return t;
    }
    if (const Date* d = v.as<Date>()) return d->serial == 0 ? "#00:00:00#" : "#" + std::to_string(d->serial) + "#";
    return "";
}

}  // namespace

ClassInfo::ClassInfo(std::string className, std::string id, Object (*factory)(), std::vector<Member> list)
    : name(std::move(className)), progId(std::move(id)), create(factory), members(std::move(list)) {
    for (const Member& m : members) {
        if (!byName_.emplace(LowerAscii(m.name), &m).second)
            throw std::logic_error(name + ": two members named " + m.name);
        if (!byId_.emplace(m.id, &m).second)
            throw std::logic_error(name + ": member " + m.name + " has the id of another member");
        if (m.params.size() > kMaxParams) throw std::logic_error(name + "." + m.name + ": too many parameters");
    }
}

const Member* ClassInfo::find(std::string_view memberName) const {
    auto it = byName_.find(LowerAscii(memberName));
    return it == byName_.end() ? nullptr : it->second;
}

const Member* ClassInfo::findById(std::int32_t id) const {
    auto it = byId_.find(id);
    return it == byId_.end() ? nullptr : it->second;
}

const std::vector<Member>& InterfaceMembers() { return ClKivClass().members; }

const Member* FindMember(std::string_view name) { return ClKivClass().find(name); }

const std::vector<const ClassInfo*>& CreatableClasses() {
    static const std::vector<const ClassInfo*> all = {&ClKivClass(), &ColKivClass()};
    return all;
}

const ClassInfo* FindCreatable(std::string_view progId) {
    const std::string wanted = LowerAscii(progId);
    for (const ClassInfo* c : CreatableClasses())
        if (LowerAscii(c->progId) == wanted) return c;
    return nullptr;
}

const EnumInfo* FindEnumeration(std::string_view name) {
    const std::string wanted = LowerAscii(name);
    for (const EnumInfo& e : Enumerations())
        if (LowerAscii(e.name) == wanted) return &e;
    return nullptr;
}

const Constant* FindConstant(std::string_view name) {
    static const auto index = [] {
        std::unordered_map<std::string, const Constant*> map;
        for (const EnumInfo& e : Enumerations())
            for (const Constant& c : e.members) map.emplace(LowerAscii(c.name), &c);
        for (const Constant& c : RegistryConstants()) map.emplace(LowerAscii(c.name), &c);
        return map;
    }();
    auto it = index.find(LowerAscii(name));
    return it == index.end() ? nullptr : it->second;
}

std::string Dispatchable::typeName() const {
    const ClassInfo* c = description();
    return c != nullptr ? c->name : "Object";
}

Variant Dispatchable::invoke(std::string_view member, InvokeKind kind, Arguments& args) {
    const ClassInfo* c = description();
    const Member* m = c != nullptr ? c->find(member) : nullptr;
    if (m == nullptr) Raise(kNotSupported);
    return Invoke(*this, *m, kind, args);
}

Variant Dispatchable::invokeById(std::int32_t id, InvokeKind kind, Arguments& args) {
    const ClassInfo* c = description();
    const Member* m = c != nullptr ? c->findById(id) : nullptr;
    if (m == nullptr) Raise(kNotSupported);
    return Invoke(*this, *m, kind, args);
}

std::int32_t ParamId(const Member& member, std::string_view name) {
    const std::string wanted = LowerAscii(name);
    for (std::size_t i = 0; i < member.params.size(); ++i)
        if (LowerAscii(member.params[i].name) == wanted) return static_cast<std::int32_t>(i);
    return -1;
}

std::int32_t MemberId(std::string_view name) {
    // FNV-1a of the lower-case name, kept positive and clear of the reserved ids.
    std::uint32_t h = 2166136261u;
    for (char c : LowerAscii(name)) {
        h ^= static_cast<unsigned char>(c);
        h *= 16777619u;
    }
    return static_cast<std::int32_t>(0x10000u + h % 0x3FFF0000u);
}

Variant Invoke(Dispatchable& object, const Member& member, InvokeKind kind, Arguments& args) {
    if (member.kind == MemberKind::Property) return CallProperty(object, member, kind, args);
    if (kind != InvokeKind::Method && kind != InvokeKind::PropertyGet) Raise(kNotSupported);

    const std::size_t n = member.params.size();
    if (args.positional.size() > n) Raise(kWrongArgumentCount);
    std::array<Variant*, kMaxParams> bound{};
    for (std::size_t i = 0; i < args.positional.size(); ++i) bound[i] = args.positional[i];
    const auto bindNamed = [&](std::int32_t i, Variant* value) {
        if (i < 0 || static_cast<std::size_t>(i) >= n) Raise(kNamedArgumentNotFound);
        if (bound[i] != nullptr) Raise(kWrongArgumentCount);
        bound[i] = value;
    };
    for (auto& [name, value] : args.named) bindNamed(ParamId(member, name), value);
    for (auto& [id, value] : args.namedById) bindNamed(id, value);
    try {
        return member.call(object, member, std::span<Variant* const>(bound.data(), n));
    } catch (const std::bad_alloc&) {
        // Memory that ran out anywhere in the call is the runtime's error, never an abort.
        Raise(kOutOfMemory);
    } catch (const std::length_error&) {
        Raise(kOutOfMemory);
    }
}

std::string Signature(const Member& member) {
    std::string out = member.name;
    if (member.kind == MemberKind::Property)
        return out + " As " + member.resultType +
               (member.result == VarType::Object ? " (property: get, Set)" : " (property: get, Let)");
    if (member.kind == MemberKind::Method || !member.params.empty()) {
        out += "(";
        for (std::size_t i = 0; i < member.params.size(); ++i) {
            const ParamSpec& p = member.params[i];
            if (i > 0) out += ", ";
            if (p.optional) out += "Optional ";
            out += p.passing == Passing::ByRef ? "ByRef " : "ByVal ";
            out += p.name + " As " + p.typeName;
            if (p.optional && p.hasDefault) out += " = " + DefaultText(p.defaultValue);
        }
        out += ")";
    }
    if (!member.resultType.empty()) out += " As " + member.resultType;
    std::string notes;
    const auto note = [&](const char* text) { notes += (notes.empty() ? "" : ", ") + std::string(text); };
    if (member.kind == MemberKind::PropertyGet) note("property: get");
    if (member.id == kDefaultMemberId) note("default member");
    if (member.id == kEnumeratorId) note("the enumerator");
    if (!notes.empty()) out += " (" + notes + ")";
    return out;
}

}  // namespace kiv
