// The dispatch tables: every dispatchable class described once (its members
// with parameters, types, passing, optional and default, result, member id,
// a line of help), the one list of creatable classes, and the enumerations
// and constants of the interface. The kiv driver and any automation front end
// call and publish through them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <stdexcept>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"

namespace kiv {

enum class Passing { ByValue, ByRef };

// The most parameters a member may have: the call path binds into an array
// of this size, and every member is checked against it when it is described.
inline constexpr std::size_t kMaxParams = 16;
// Member ids that automation fixes.
inline constexpr std::int32_t kDefaultMemberId = 0;
inline constexpr std::int32_t kEnumeratorId = -4;

struct ParamSpec {
    std::string name;
    Passing passing = Passing::ByValue;
    bool optional = false;
    bool hasDefault = false;
    Variant defaultValue;     // what an omitted argument becomes
    VarType type = VarType::Variant;
    std::string typeName;     // "Integer", "EnCF_Result", "String()", ...
    bool changed = false;     // the operation writes to it (a Ref<T> in C++)
    std::string meaning;      // one line for `kiv help` and the reference
};

struct Member;
using Invoker = Variant (*)(Dispatchable& object, const Member& member, std::span<Variant* const> args);

// Method: a call. PropertyGet: a read-only property computed by a call (it
// may take arguments). Property: a slot of the object, read and written (an
// object slot by Set, a value slot by Let).
enum class MemberKind { Method, PropertyGet, Property };

struct Member {
    std::string name;
    MemberKind kind = MemberKind::Method;
    std::vector<ParamSpec> params;
    std::string resultType;  // empty for a Sub
    VarType result = VarType::Empty;
    std::int32_t id = 0;     // stable member id (DISPID)
    bool hidden = false;     // left out of browsers (the enumerator)
    std::string help;
    // Lines of kiv script using the member, and what they print (one line
    // each, "\n" between): shown by `kiv help`, checked by a test.
    std::string example;
    std::string exampleOutput;
    Invoker call = nullptr;
    Variant (*get)(Dispatchable&) = nullptr;              // properties
    void (*set)(Dispatchable&, const Variant&) = nullptr;  // properties

    // The id automation fixes for this member instead of the derived one.
    Member withId(std::int32_t fixed) && {
        id = fixed;
        return std::move(*this);
    }
    Member asPropertyGet() && {
        kind = MemberKind::PropertyGet;
        return std::move(*this);
    }
    Member asHidden() && {
        hidden = true;
        return std::move(*this);
    }
    Member withExample(const char* lines, const char* output) && {
        example = lines;
        exampleOutput = output;
        return std::move(*this);
    }
};

// A dispatchable class as published: its name, its ProgID when it is
// creatable, how to create one, and its members in interface order. Two
// members sharing an id or a name are refused when the class is described.
class ClassInfo {
public:
    ClassInfo(std::string name, std::string progId, Object (*create)(), std::vector<Member> members);

    const std::string name;
    const std::string progId;     // "DLLKiv.Cl_KIV"; empty when not creatable
    Object (*const create)();     // nullptr when not creatable
    const std::vector<Member> members;

    // Case-blind; nullptr when there is no such member.
    const Member* find(std::string_view memberName) const;
    const Member* findById(std::int32_t id) const;

private:
    std::unordered_map<std::string, const Member*> byName_;
    std::unordered_map<std::int32_t, const Member*> byId_;
};

const ClassInfo& ClKivClass();
const ClassInfo& ColKivClass();
// The one list of creatable classes: CreateObject, the driver's list and help,
// and the automation server's class factory, registration and type library.
const std::vector<const ClassInfo*>& CreatableClasses();
// By ProgID, case-blind; nullptr when no class has it.
const ClassInfo* FindCreatable(std::string_view progId);

// Cl_KIV's interface, in the interface's member order.
const std::vector<Member>& InterfaceMembers();
// Case-blind lookup in Cl_KIV; nullptr when there is no such member.
const Member* FindMember(std::string_view name);
// The late-bound call: binds positional and named arguments (by name or by
// parameter index), supplies defaults and the missing marker, coerces, calls,
// writes by-reference results back where the operation changed them. An
// error binding or converting an argument carries the parameter's position.
Variant Invoke(Dispatchable& object, const Member& member, InvokeKind kind, Arguments& args);
// The id of a parameter for named arguments by id: its 0-based index, -1
// when the member has no parameter of that name.
std::int32_t ParamId(const Member& member, std::string_view name);
// Stable member id: derived from the name, so adding members never moves others.
std::int32_t MemberId(std::string_view name);
// "FmtNum(ByVal N As Variant, ...) As String"
std::string Signature(const Member& member);

// ---- enumerations, records and constants of the interface ----

struct Constant {
    const char* name;
    Long value;
};
struct EnumInfo {
    const char* name;
    std::vector<Constant> members;
};
struct FieldInfo {
    const char* name;
    const char* typeName;
};
struct RecordInfo {
    const char* name;
    std::vector<FieldInfo> fields;
};
// En_SysDir, EnCF_Result, EnPI_Result, En_EANType, ZRReg_Enum: made from the
// same lists as the C++ enumerations, so they cannot disagree.
const std::vector<EnumInfo>& Enumerations();
const std::vector<RecordInfo>& Records();  // PrtStru
// Constants a host uses with the registry operations (root keys, value types).
const std::vector<Constant>& RegistryConstants();
// Case-blind; nullptr when there is none.
const EnumInfo* FindEnumeration(std::string_view name);
// An enumeration member or a registry constant, case-blind.
const Constant* FindConstant(std::string_view name);

// ---- how a row of the table is built from a member function ----

namespace dispatch_detail {

template <class T> struct TypeOf;
#define KIV_TYPE(T, VT, NAME) \
    template <> struct TypeOf<T> { static constexpr VarType type = VarType::VT; static constexpr const char* name = NAME; };
KIV_TYPE(Variant, Variant, "Variant")
KIV_TYPE(String, String, "String")
KIV_TYPE(Integer, Integer, "Integer")
KIV_TYPE(Long, Long, "Long")
KIV_TYPE(Single, Single, "Single")
KIV_TYPE(Double, Double, "Double")
KIV_TYPE(Currency, Currency, "Currency")
KIV_TYPE(Date, Date, "Date")
KIV_TYPE(Boolean, Boolean, "Boolean")
KIV_TYPE(Byte, Byte, "Byte")
KIV_TYPE(Object, Object, "Object")
KIV_TYPE(Array, Array, "Variant()")
KIV_TYPE(VariantArray, Array, "Variant()")
KIV_TYPE(StringArray, Array, "String()")
KIV_TYPE(En_SysDir, Long, "En_SysDir")
KIV_TYPE(EnCF_Result, Long, "EnCF_Result")
KIV_TYPE(EnPI_Result, Long, "EnPI_Result")
KIV_TYPE(En_EANType, Long, "En_EANType")
KIV_TYPE(ZRReg_Enum, Long, "ZRReg_Enum")
#undef KIV_TYPE

// The value a parameter of C++ type P is held in during the call.
template <class P> struct Slot { using type = std::remove_cvref_t<P>; static constexpr bool writes = false; };
template <class T> struct Slot<Ref<T>> { using type = T; static constexpr bool writes = true; };

template <class T> T FromArgument(const Variant& v) {
    if constexpr (std::is_same_v<T, Variant>) return v;
    else {
        // The interface layer refuses Null for every typed parameter.
        if (v.isNull() || v.isError()) Raise(kTypeMismatch);
        if constexpr (std::is_same_v<T, String>) return ToText(v);
        else if constexpr (std::is_same_v<T, Integer>) return ToInteger(v);
        else if constexpr (std::is_same_v<T, Long>) return ToLong(v);
        else if constexpr (std::is_same_v<T, Single>) return ToSingle(v);
        else if constexpr (std::is_same_v<T, Double>) return ToDoubleLocale(v);
        else if constexpr (std::is_same_v<T, Currency>) return ToCurrency(v);
        else if constexpr (std::is_same_v<T, Date>) return ToDateLocale(v);
        else if constexpr (std::is_same_v<T, Boolean>) return ToBooleanLocale(v);
        else if constexpr (std::is_same_v<T, Byte>) return ToByte(v);
        else if constexpr (std::is_same_v<T, Object>) return ToObject(v);
        else if constexpr (std::is_enum_v<T>) return static_cast<T>(ToLong(v));
        else {
            const Array* a = v.array();
            if (a == nullptr || a->element() != T::kElement) Raise(kTypeMismatch);
            return T(*a);
        }
    }
}

template <class T> Variant ToResult(T value) {
    if constexpr (std::is_enum_v<T>) return Variant(static_cast<Long>(value));
    else if constexpr (std::is_base_of_v<Array, T>) return Variant(static_cast<Array>(std::move(value)));
    else return Variant(std::move(value));
}

inline const Variant& ArgumentOrDefault(const ParamSpec& p, Variant* arg) {
    if (arg != nullptr && !arg->isMissing()) return *arg;
    if (!p.optional) Raise(kArgumentNotOptional);
    return p.defaultValue;
}

// Parameter i's argument bound and converted; a failure names the position.
template <class T> T Bind(const Member& member, std::size_t i, Variant* arg) {
    try {
        return FromArgument<T>(ArgumentOrDefault(member.params[i], arg));
    } catch (RuntimeError& e) {
        e.atArgument(static_cast<int>(i));
        throw;
    }
}

template <auto Fn, class C, class R, class... P>
struct Caller {
    static constexpr std::size_t arity = sizeof...(P);
    using Class = C;
    using Result = R;

    static Variant call(Dispatchable& object, const Member& member, std::span<Variant* const> args) {
        return callWith(static_cast<C&>(object), member, args, std::index_sequence_for<P...>{});
    }

    template <std::size_t... I>
    static Variant callWith(C& object, const Member& member, std::span<Variant* const> args,
                            std::index_sequence<I...>) {
        std::tuple<typename Slot<P>::type...> slots{Bind<typename Slot<P>::type>(member, I, args[I])...};
        // Copies of what the writable parameters held before the call.
        std::tuple<std::conditional_t<Slot<P>::writes, typename Slot<P>::type, std::monostate>...> before{
            keepIfWritable<P>(std::get<I>(slots))...};
        auto writeBack = [&] { (writeBackOne<P>(std::get<I>(slots), std::get<I>(before), args[I]), ...); };
        try {
            if constexpr (std::is_void_v<R>) {
                (object.*Fn)(std::get<I>(slots)...);
                writeBack();
                return Variant();
            } else {
                Variant result = ToResult<R>((object.*Fn)(std::get<I>(slots)...));
                writeBack();
                return result;
            }
        } catch (...) {
            // What the operation had already written stays written.
            writeBack();
            throw;
        }
    }

    template <class Q, class S> static auto keepIfWritable(const S& slot) {
        if constexpr (Slot<Q>::writes) return slot;
        else return std::monostate{};
    }

    template <class Q, class S, class B> static void writeBackOne(const S& after, const B& before, Variant* arg) {
        if constexpr (Slot<Q>::writes) {
            if (arg != nullptr && !arg->isMissing() && !(after == before)) *arg = ToResult<S>(after);
        }
    }

    template <std::size_t I> using ParamSlot = typename Slot<std::tuple_element_t<I, std::tuple<P...>>>::type;
    template <std::size_t I> static constexpr bool writes = Slot<std::tuple_element_t<I, std::tuple<P...>>>::writes;
};

template <auto Fn> struct Invoke;
template <class C, class R, class... P, R (C::*Fn)(P...)>
struct Invoke<Fn> : Caller<Fn, C, R, P...> {};
template <class C, class R, class... P, R (C::*Fn)(P...) const>
struct Invoke<Fn> : Caller<Fn, C, R, P...> {};

template <auto Field> struct SlotOf;
template <class C, class T, T C::*Field>
struct SlotOf<Field> {
    using Type = T;
    static Variant get(Dispatchable& object) { return ToResult<T>(static_cast<C&>(object).*Field); }
    static void set(Dispatchable& object, const Variant& value) {
        static_cast<C&>(object).*Field = FromArgument<T>(value);
    }
};

}  // namespace dispatch_detail

// A parameter as published: by value or by reference, optional with a
// default, or optional without one (the missing marker for a Variant, the
// type's zero otherwise).
struct Param {
    const char* name;
    Passing passing;
    bool optional = false;
    bool hasDefault = false;
    Variant defaultValue;
    const char* meaning = "";  // what the argument is, in one line
};
inline Param ByVal(const char* name, const char* meaning = "") {
    return {name, Passing::ByValue, false, false, Variant(), meaning};
}
inline Param ByRef(const char* name, const char* meaning = "") {
    return {name, Passing::ByRef, false, false, Variant(), meaning};
}
inline Param OptVal(const char* name, Variant d, const char* meaning = "") {
    return {name, Passing::ByValue, true, true, std::move(d), meaning};
}
inline Param OptRef(const char* name, Variant d, const char* meaning = "") {
    return {name, Passing::ByRef, true, true, std::move(d), meaning};
}
inline Param OptRef(const char* name, const char* meaning = "") {
    return {name, Passing::ByRef, true, false, Variant::missing(), meaning};
}

template <auto Fn, class... Ps>
Member Method(const char* name, const char* help, Ps... params) {
    using I = dispatch_detail::Invoke<Fn>;
    static_assert(sizeof...(Ps) == I::arity, "the published parameters must match the member's signature");
    static_assert(I::arity <= kMaxParams, "more parameters than the call path binds");
    Param given[] = {Param(std::move(params))..., ByVal("")};
    Member m;
    m.name = name;
    m.help = help;
    m.id = MemberId(name);
    m.call = &I::call;
    [&]<std::size_t... K>(std::index_sequence<K...>) {
        (([&] {
             using S = typename I::template ParamSlot<K>;
             const Param& p = given[K];
             if (I::template writes<K> && p.passing != Passing::ByRef) throw std::logic_error("a parameter the member changes must be published by reference");
             ParamSpec published;
             published.name = p.name;
             published.passing = p.passing;
             published.optional = p.optional;
             published.hasDefault = p.hasDefault;
             published.type = dispatch_detail::TypeOf<S>::type;
             published.typeName = dispatch_detail::TypeOf<S>::name;
             published.changed = I::template writes<K>;
             published.meaning = p.meaning;
             if (p.hasDefault) published.defaultValue = p.defaultValue;
             else if constexpr (std::is_same_v<S, Variant>) published.defaultValue = Variant::missing();
             else if constexpr (std::is_default_constructible_v<S>) published.defaultValue = dispatch_detail::ToResult<S>(S{});
             m.params.push_back(std::move(published));
         }()),
         ...);
    }(std::make_index_sequence<sizeof...(Ps)>{});
    using R = typename I::Result;
    if constexpr (!std::is_void_v<R>) {
        m.result = dispatch_detail::TypeOf<R>::type;
        m.resultType = dispatch_detail::TypeOf<R>::name;
    }
    return m;
}

// A slot of the object: read, and stored by Set (an Object) or Let (a value).
template <auto Field>
Member Property(const char* name, const char* help) {
    Member m;
    m.name = name;
    m.kind = MemberKind::Property;
    m.get = &dispatch_detail::SlotOf<Field>::get;
    m.set = &dispatch_detail::SlotOf<Field>::set;
    m.help = help;
    m.id = MemberId(name);
    using T = typename dispatch_detail::SlotOf<Field>::Type;
    m.result = dispatch_detail::TypeOf<T>::type;
    m.resultType = dispatch_detail::TypeOf<T>::name;
    return m;
}

}  // namespace kiv
