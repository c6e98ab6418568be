#include "frame/dispatch.hpp"

#include <array>
#include <unordered_map>

namespace kiv {
namespace {

std::string LowerAscii(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
}

const std::unordered_map<std::string, const Member*>& Index() {
    static const auto index = [] {
        std::unordered_map<std::string, const Member*> map;
        for (const Member& m : InterfaceMembers()) map.emplace(LowerAscii(m.name), &m);
        return map;
    }();
    return index;
}

Variant CallProperty(Cl_KIV& object, const Member& member, InvokeKind kind, Arguments& args) {
    const std::size_t given = args.positional.size() + args.named.size();
    if (kind == InvokeKind::PropertyGet || kind == InvokeKind::Method) {
        if (given != 0) raise(kWrongArgumentCount);
        return Variant(object.*member.slot);
    }
    if (given != 1) raise(kWrongArgumentCount);
    Variant* value = args.positional.empty() ? args.named.front().second : args.positional.front();
    if (!value->isObject()) raise(kObjectRequired);
    object.*member.slot = *value->as<Object>();
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

const Member* FindMember(std::string_view name) {
    const auto& index = Index();
    auto it = index.find(LowerAscii(name));
    return it == index.end() ? nullptr : it->second;
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

Variant Invoke(Cl_KIV& object, const Member& member, InvokeKind kind, Arguments& args) {
    if (member.kind == MemberKind::Property) return CallProperty(object, member, kind, args);
    if (kind != InvokeKind::Method && kind != InvokeKind::PropertyGet) raise(kNotSupported);

    const std::size_t n = member.params.size();
    if (args.positional.size() > n) raise(kWrongArgumentCount);
    std::array<Variant*, 16> bound{};
    for (std::size_t i = 0; i < args.positional.size(); ++i) bound[i] = args.positional[i];
    for (auto& [name, value] : args.named) {
        std::size_t i = 0;
        const std::string wanted = LowerAscii(name);
        while (i < n && LowerAscii(member.params[i].name) != wanted) ++i;
        if (i == n) raise(kNamedArgumentNotFound);
        if (bound[i] != nullptr) raise(kWrongArgumentCount);
        bound[i] = value;
    }
    return member.call(object, member, std::span<Variant* const>(bound.data(), n));
}

std::string Signature(const Member& member) {
    std::string out = member.name;
    if (member.kind == MemberKind::Property) return out + " As Object (property: get, Set)";
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
    if (!member.resultType.empty()) out += " As " + member.resultType;
    return out;
}

}  // namespace kiv
