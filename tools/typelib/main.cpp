// Run by the Windows build on the build machine: prints the type library's
// IDL from the dispatch tables (classes, members, parameters, enumerations,
// records), so the library that early-bound hosts read cannot differ from
// what IDispatch answers. widl compiles the output; the DLL embeds it.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <string>

#include "com/class_ids.hpp"
#include "frame/dispatch.hpp"
#include "frame/strings.hpp"

namespace kiv {
namespace {

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + "\"";
}

std::string Id(std::string_view id) { return std::string(id); }

bool IsEnumeration(const std::string& typeName) { return FindEnumeration(typeName) != nullptr; }

// The IDL type of a parameter or result as the table names it.
std::string IdlType(VarType type, const std::string& typeName) {
    if (IsEnumeration(typeName)) return typeName;
    if (typeName == "String()") return "SAFEARRAY(BSTR)";
    if (typeName == "Variant()") return "SAFEARRAY(VARIANT)";
    switch (type) {
        case VarType::Variant: return "VARIANT";
        case VarType::String: return "BSTR";
        case VarType::Integer: return "short";
        case VarType::Long: return "long";
        case VarType::Single: return "float";
        case VarType::Double: return "double";
        case VarType::Currency: return "CURRENCY";
        case VarType::Date: return "DATE";
        case VarType::Boolean: return "VARIANT_BOOL";
        case VarType::Byte: return "unsigned char";
        case VarType::Object: return "IDispatch*";
        default: break;
    }
    throw std::logic_error("no IDL type for " + typeName);
}

std::string RecordFieldType(std::string_view typeName) {
    if (typeName == "String") return "BSTR";
    if (typeName == "Integer") return "short";
    if (typeName == "Long") return "long";
    if (typeName == "Single") return "float";
    if (typeName == "Double") return "double";
    throw std::logic_error("no IDL type for a field of type " + std::string(typeName));
}

// A number as the help writes it (floating-point defaults never reach
// widl): the shortest text that reads back the same.
std::string Number(double value) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return std::string(text, end);
}

// widl drops a line end inside a string and keeps "\r" as two characters,
// and writes no default of a floating-point parameter: such a default cannot
// be in the library.
bool WidlCanWrite(const ParamSpec& p) {
    if (p.type == VarType::Double || p.type == VarType::Single || p.type == VarType::Date) return false;
    const String* s = p.defaultValue.as<String>();
    return s == nullptr || std::none_of(s->begin(), s->end(), [](char16_t c) { return c < 0x20; });
}

// A text as a script writes it: quoted runs, control characters as vbCrLf
// or Chr(n), joined by "&".
std::string ScriptText(const String& text) {
    std::string out, run;
    auto add = [&](const std::string& piece) { out += (out.empty() ? "" : " & ") + piece; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= 0x20) {
            run += ToUtf8(text.substr(i, 1));
            continue;
        }
        if (!run.empty()) add(Quoted(run));
        run.clear();
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            add("vbCrLf");
            ++i;
        } else {
            add("Chr(" + std::to_string(static_cast<int>(text[i])) + ")");
        }
    }
    if (!run.empty() || out.empty()) add(Quoted(run));
    return out;
}

// The default value as IDL writes it; empty when the type has none to show.
std::string DefaultValue(const Variant& v) {
    if (const String* s = v.as<String>()) return ScriptText(*s);
    if (const Boolean* b = v.as<Boolean>()) return *b ? "-1" : "0";
    if (const Integer* i = v.as<Integer>()) return std::to_string(*i);
    if (const Long* l = v.as<Long>()) return std::to_string(*l);
    if (const Byte* b = v.as<Byte>()) return std::to_string(*b);
    if (const Single* f = v.as<Single>()) return Number(*f);
    if (const Double* d = v.as<Double>()) return Number(*d);
    if (const Date* d = v.as<Date>()) return Number(d->serial);
    return "";
}

std::string Parameter(const ParamSpec& p) {
    const bool byRef = p.passing == Passing::ByRef;
    std::string attrs = byRef ? "in, out" : "in";
    // widl writes no default for a by-reference parameter, nor one it
    // cannot hold: the member's help names those instead, and the latter is
    // an optional Variant, which arrives as missing when left out, so the
    // server applies the default.
    const bool inLibrary = WidlCanWrite(p);
    const std::string deflt = p.optional && !byRef && inLibrary ? DefaultValue(p.defaultValue) : "";
    if (p.optional) attrs += deflt.empty() ? ", optional" : ", optional, defaultvalue(" + deflt + ")";
    const std::string type = p.optional && !byRef && !inLibrary ? "VARIANT" : IdlType(p.type, p.typeName);
    return "[" + attrs + "] " + type + (byRef ? "* " : " ") + p.name;
}

void PrintMember(const Member& m) {
    std::string attrs = "id(" + std::to_string(m.id) + ")";
    if (m.hidden) attrs += ", hidden";
    std::string help = m.help, defaults;
    for (const ParamSpec& p : m.params) {
        const bool named = p.optional && (p.passing == Passing::ByRef || !WidlCanWrite(p));
        const std::string value = named ? DefaultValue(p.defaultValue) : "";
        if (!value.empty()) defaults += (defaults.empty() ? "" : ", ") + p.name + " = " + value;
    }
    if (!defaults.empty()) help += " Defaults: " + defaults + ".";
    attrs += ", helpstring(" + Quoted(help) + ")";
    std::string result = "void";
    if (m.id == kEnumeratorId) result = "IUnknown*";
    else if (!m.resultType.empty()) result = IdlType(m.result, m.resultType);

    if (m.kind == MemberKind::Property) {
        std::printf("        [%s, propget] IDispatch* %s();\n", attrs.c_str(), m.name.c_str());
        std::printf("        [%s, propputref] void %s([in] IDispatch* value);\n", attrs.c_str(), m.name.c_str());
        return;
    }
    if (m.kind == MemberKind::PropertyGet) attrs += ", propget";
    std::string params;
    for (const ParamSpec& p : m.params) params += (params.empty() ? "" : ", ") + Parameter(p);
    std::printf("        [%s] %s %s(%s);\n", attrs.c_str(), result.c_str(), m.name.c_str(), params.c_str());
}

void PrintLibrary() {
    std::printf("// Generated by kiv_idl from the dispatch tables. Do not edit.\n");
    std::printf("import \"automation_types.idl\";\n\n");
    std::printf("[uuid(%s), version(1.0), helpstring(\"DLLKiv: text, numbers, dates, records, fiscal codes\")]\n",
                Id(com::kLibraryId).c_str());
    std::printf("library %s\n{\n    importlib(\"stdole2.tlb\");\n\n", std::string(com::kLibraryName).c_str());
    for (const EnumInfo& e : Enumerations()) {
        std::printf("    typedef enum %s {\n", e.name);
        for (std::size_t i = 0; i < e.members.size(); ++i)
            std::printf("        %s = %d%s\n", e.members[i].name, static_cast<int>(e.members[i].value),
                        i + 1 < e.members.size() ? "," : "");
        std::printf("    } %s;\n\n", e.name);
    }
    for (const RecordInfo& r : Records()) {
        std::printf("    typedef [uuid(%s)] struct %s {\n", Id(com::kPrtStruId).c_str(), r.name);
        for (const FieldInfo& f : r.fields) std::printf("        %s %s;\n", RecordFieldType(f.typeName).c_str(), f.name);
        std::printf("    } %s;\n\n", r.name);
    }
    for (const ClassInfo* c : CreatableClasses()) {
        const com::ClassIds* ids = com::FindClassIds(c->name);
        if (ids == nullptr) throw std::logic_error("no identifiers for class " + c->name + " in com/class_ids.hpp");
        // A dispatch interface: hosts bind to the member ids, which the
        // server's IDispatch answers from the same table.
        std::printf("    [uuid(%s), helpstring(\"%s\")]\n", Id(ids->interfaceId).c_str(), c->name.c_str());
        std::printf("    dispinterface _%s\n    {\n    properties:\n    methods:\n", c->name.c_str());
        for (const Member& m : c->members) PrintMember(m);
        std::printf("    };\n\n");
        std::printf("    [uuid(%s), helpstring(\"%s\")]\n", Id(ids->classId).c_str(), c->progId.c_str());
        std::printf("    coclass %s\n    {\n        [default] interface _%s;\n    };\n\n", c->name.c_str(), c->name.c_str());
    }
    std::printf("}\n");
}

}  // namespace
}  // namespace kiv

// kiv_idl [OUTPUT]: the IDL to OUTPUT, or to the standard output.
int main(int argc, char** argv) {
    try {
        if (argc > 1 && std::freopen(argv[1], "w", stdout) == nullptr) throw std::runtime_error("cannot write " + std::string(argv[1]));
        kiv::PrintLibrary();
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kiv_idl: %s\n", e.what());
        return 1;
    }
}
