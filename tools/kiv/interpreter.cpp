#include "interpreter.hpp"

#include <algorithm>
#include <cstdio>
#include <new>
#include <stdexcept>

#include "canonical.hpp"
#include "driver_host.hpp"
#include "frame/convert.hpp"
#include "frame/dispatch.hpp"
#include "frame/errors.hpp"
#include <exception>

namespace kiv::script {
namespace {

// Indices and bounds: whole numbers as they stand, anything else converted.
Long Whole(const Variant& v) {
    if (const Integer* i = v.as<Integer>()) return *i;
    if (const Long* l = v.as<Long>()) return *l;
    return ToLong(v);
}

// Arrays larger than this are refused rather than left to exhaust memory.
constexpr std::int64_t kMaxElements = std::int64_t{1} << 24;

}  // namespace

Interpreter::Interpreter(Output& out) : out_(out), default_(std::make_shared<Cl_KIV>()) {}

bool Interpreter::execute(const Statement& statement) {
    failing_.clear();
    long number = 0;
    std::string description;
    try {
        run(statement);
        return true;
    } catch (const RuntimeError& e) {
        number = e.number();
        description = e.description();
    } catch (const std::bad_alloc&) {
        number = 7;
        description = DescribeError(kOutOfMemory);
    } catch (const std::length_error&) {
        number = 7;
        description = DescribeError(kOutOfMemory);
    } catch (const std::exception& e) {
        number = 5;
        description = DescribeError(kInvalidCall) + " (" + e.what() + ")";
    } catch (...) {
        number = 5;
        description = DescribeError(kInvalidCall);
    }
    out_.line("Error " + std::to_string(number) + ": " + description);
    if (diagnose) report(number, description);
    return false;
}

void Interpreter::report(long number, const std::string& description) const {
    std::string text = file_ + ":" + std::to_string(line_) + ": ";
    if (const Member* m = FindMember(failing_); m != nullptr) text += m->name + ": ";
    else if (!failing_.empty()) text += failing_ + ": ";
    text += "Error " + std::to_string(number) + ": " + description;
    if (number == kNotSupported && !failing_.empty() && failing_.find('.') == std::string::npos &&
        !isCallable(failing_)) {
        if (const std::string near = ClosestName(failing_); !near.empty()) text += "; did you mean " + near + "?";
    }
    std::fprintf(stderr, "%s\n", text.c_str());
}

std::vector<std::string> Interpreter::variableNames() const {
    std::vector<std::string> names;
    for (const auto& [name, value] : variables_) names.push_back(name);
    return names;
}

void Interpreter::run(const Statement& s) {
    switch (s.kind) {
        case Statement::Kind::Print: out_.line(Canonical(evaluate(*s.value))); return;
        case Statement::Kind::Assign: assign(*s.target, evaluate(*s.value), false); return;
        case Statement::Kind::SetRef: assign(*s.target, evaluate(*s.value), true); return;
        case Statement::Kind::Dim: dim(s); return;
        case Statement::Kind::Evaluate:
            // A name alone on a line is a call, never a variable read.
            if (s.value->kind == Expr::Kind::Name) call(s.value->name, {}, false);
            else evaluate(*s.value);
            return;
        case Statement::Kind::FileOpen: case Statement::Kind::FileClose: case Statement::Kind::FilePrint:
        case Statement::Kind::LineInput: case Statement::Kind::FileCommand: case Statement::Kind::WriteText:
            fileStatement(s);
            return;
    }
}

Variant Interpreter::evaluate(const Expr& e) {
    switch (e.kind) {
        case Expr::Kind::Literal: return e.value;
        case Expr::Kind::DateLiteral: return Variant(DateOfParts(e.date));
        case Expr::Kind::Name:
            if (Variant* v = variable(e.name)) return *v;
            if (const Constant* c = FindConstant(e.name)) return Variant(c->value);
            if (isCallable(e.name)) return call(e.name, {}, false);
            return Variant();  // an undefined variable reads as Empty
        case Expr::Kind::Call: return call(e.name, e.args, true);
        case Expr::Kind::Member: {
            const Variant object = evaluate(*e.object);
            const Object* o = object.as<Object>();
            if (o == nullptr) Raise(kObjectRequired);
            return invoke(*o, e.name, e.parens ? InvokeKind::Method : InvokeKind::PropertyGet, e.args);
        }
        case Expr::Kind::Concat: {
            // Left to right along the chain, without recursing down its length.
            std::vector<const Expr*> parts;
            const Expr* left = &e;
            for (; left->kind == Expr::Kind::Concat; left = left->object.get()) parts.push_back(left->right.get());
            Variant acc = evaluate(*left);
            for (auto it = parts.rbegin(); it != parts.rend(); ++it) {
                const Variant b = evaluate(**it);
                acc = acc.isNull() && b.isNull() ? Variant::null() : Variant(JoinText(acc) + JoinText(b));
            }
            return acc;
        }
        case Expr::Kind::Negate: return Negate(evaluate(*e.object));
        case Expr::Kind::Paren: return evaluate(*e.object);
    }
    Raise(kNotSupported);
}

Variant* Interpreter::variable(const std::string& name) {
    auto it = variables_.find(Lower(name));
    return it == variables_.end() ? nullptr : &it->second;
}

Variant& Interpreter::define(const std::string& name) { return variables_[Lower(name)]; }

bool Interpreter::isCallable(const std::string& name) const {
    return FindBuiltin(name) != nullptr || FindMember(name) != nullptr;
}

std::vector<Long> Interpreter::indices(const std::vector<Argument>& args) {
    std::vector<Long> index;
    for (const Argument& a : args) {
        if (a.kind != Argument::Kind::Positional) Raise(kSubscriptOutOfRange);
        index.push_back(Whole(evaluate(*a.value)));
    }
    return index;
}

Variant Interpreter::call(const std::string& name, const std::vector<Argument>& args, bool parens) {
    Variant* var = variable(name);
    if (var != nullptr && var->array() != nullptr && parens) {
        const std::vector<Long> index = indices(args);
        var = variable(name);  // the indices may have changed it
        if (var->array() == nullptr) Raise(kTypeMismatch);
        return var->array()->at(index);
    }
    if (const Builtin* b = FindBuiltin(name)) {
        struct Blame {  // names the built-in when it, not an argument, fails
            std::string& failing;
            const char* name;
            ~Blame() {
                if (std::uncaught_exceptions() > 0 && failing.empty()) failing = name;
            }
        } blame{failing_, b->name};
        std::vector<Variant> values;
        for (const Argument& a : args) {
            if (a.kind == Argument::Kind::Named) Raise(kNamedArgumentNotFound);
            values.push_back(a.kind == Argument::Kind::Omitted ? Variant::missing() : evaluate(*a.value));
        }
        if (values.size() > static_cast<std::size_t>(b->maxArgs)) Raise(kWrongArgumentCount);
        for (int i = 0; i < b->minArgs; ++i)
            if (static_cast<std::size_t>(i) >= values.size() || values[i].isMissing()) Raise(kArgumentNotOptional);
        return b->call(values);
    }
    // An object called with arguments: its default member.
    if (parens && var != nullptr && var->isObject()) return invoke(*var->as<Object>(), "", InvokeKind::Method, args);
    if (parens && var != nullptr && FindMember(name) == nullptr) Raise(kTypeMismatch);  // a plain variable used as array
    return invoke(default_, name, parens ? InvokeKind::Method : InvokeKind::PropertyGet, args);
}

Variant Interpreter::invoke(const Object& object, const std::string& member, InvokeKind kind,
                            const std::vector<Argument>& args) {
    if (!object) Raise(kObjectNotSet);
    CallFrame frame;
    for (const Argument& a : args) {
        if (a.kind == Argument::Kind::Omitted) {
            frame.temps.push_back(Variant::missing());
            frame.args.positional.push_back(&frame.temps.back());
        } else if (a.kind == Argument::Kind::Positional) {
            frame.args.positional.push_back(bind(*a.value, frame));
        } else {
            frame.args.named.emplace_back(a.name, bind(*a.value, frame));
        }
    }
    return dispatch(*object, member, kind, frame);
}

Variant Interpreter::dispatch(Dispatchable& target, const std::string& member, InvokeKind kind, CallFrame& frame) {
    Variant result;
    try {
        result = member.empty() ? target.invokeById(kDefaultMemberId, kind, frame.args)
                                : target.invoke(member, kind, frame.args);
    } catch (...) {
        if (failing_.empty()) failing_ = member.empty() ? "(default member)" : member;
        // What the operation wrote before failing stays written.
        try {
            writeBack(frame);
        } catch (...) {
        }
        throw;
    }
    writeBack(frame);
    return result;
}

// A bare variable or array element is passed by reference; anything else is
// a temporary.
Variant* Interpreter::bind(const Expr& e, CallFrame& frame) {
    if (e.kind == Expr::Kind::Name) {
        if (Variant* v = variable(e.name)) return v;
        if (!isCallable(e.name) && FindConstant(e.name) == nullptr) return &define(e.name);
    }
    if (e.kind == Expr::Kind::Call) {
        Variant* v = variable(e.name);
        if (v != nullptr && v->array() != nullptr) {
            std::vector<Long> index = indices(e.args);
            v = variable(e.name);  // the indices may have changed it
            if (v->array() == nullptr) Raise(kTypeMismatch);
            // The element travels in a temporary and is stored back through the
            // array, so a String array keeps holding Strings.
            frame.temps.push_back(v->array()->at(index));
            frame.elements.push_back({e.name, std::move(index), &frame.temps.back(), frame.temps.back()});
            return &frame.temps.back();
        }
    }
    frame.temps.push_back(evaluate(e));
    return &frame.temps.back();
}

void Interpreter::writeBack(CallFrame& frame) {
    for (const CallFrame::Element& el : frame.elements) {
        if (*el.slot == el.before) continue;
        Variant* v = variable(el.variable);
        if (v != nullptr && v->array() != nullptr) v->array()->set(el.index, *el.slot);
    }
}

void Interpreter::assign(const Expr& target, Variant value, bool setRef) {
    if (setRef && !value.isObject()) Raise(kObjectRequired);
    if (target.kind == Expr::Kind::Name) {
        const Member* m = FindMember(target.name);
        if (variable(target.name) == nullptr && m != nullptr && m->kind == MemberKind::Property) {
            CallFrame frame;
            frame.temps.push_back(std::move(value));
            frame.args.positional.push_back(&frame.temps.back());
            dispatch(*default_, target.name, setRef ? InvokeKind::PropertyPutRef : InvokeKind::PropertyPut, frame);
            return;
        }
        define(target.name) = std::move(value);
        return;
    }
    if (target.kind == Expr::Kind::Call) {
        Variant* v = variable(target.name);
        if (v == nullptr) Raise(kSubscriptOutOfRange);
        if (v->array() == nullptr) Raise(kTypeMismatch);
        std::vector<Long> index = indices(target.args);
        v = variable(target.name);  // the indices may have redefined it
        if (v->array() == nullptr) Raise(kTypeMismatch);
        v->array()->set(index, std::move(value));
        return;
    }
    const Variant object = evaluate(*target.object);
    const Object* o = object.as<Object>();
    if (o == nullptr) Raise(kObjectRequired);
    if (!*o) Raise(kObjectNotSet);
    CallFrame frame;
    // The indices of an indexed property come first, the value last.
    for (const Argument& a : target.args) {
        if (a.kind != Argument::Kind::Positional) Raise(kNamedArgumentNotFound);
        frame.temps.push_back(evaluate(*a.value));
        frame.args.positional.push_back(&frame.temps.back());
    }
    frame.temps.push_back(std::move(value));
    frame.args.positional.push_back(&frame.temps.back());
    dispatch(**o, target.name, setRef ? InvokeKind::PropertyPutRef : InvokeKind::PropertyPut, frame);
}

void Interpreter::dim(const Statement& s) {
    if (!s.isArray) {
        define(s.name) = s.ofStrings ? Variant(String()) : Variant();
        return;
    }
    std::vector<Bound> dims;
    std::int64_t total = 1;
    for (const DimBound& b : s.bounds) {
        const std::int64_t lower = b.lower ? Whole(evaluate(*b.lower)) : 0;
        const std::int64_t count = Whole(evaluate(*b.upper)) - lower + 1;
        if (count < 0) Raise(kSubscriptOutOfRange);
        total *= count;
        if (total > kMaxElements) Raise(kOutOfMemory);
        dims.push_back({static_cast<Long>(lower), static_cast<Long>(count)});
    }
    define(s.name) = Variant(Array(s.ofStrings ? VarType::String : VarType::Variant, std::move(dims)));
}

}  // namespace kiv::script

namespace kiv::script {

namespace {

std::size_t EditDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

}  // namespace

std::string ClosestName(std::string_view name) {
    const std::string wanted = Lower(name);
    // A slip: at most two edits, and fewer than a third of the name.
    std::size_t best = std::min<std::size_t>(3, wanted.size() / 3 + 1);
    std::string closest;
    auto consider = [&](const std::string& candidate) {
        const std::size_t d = EditDistance(wanted, Lower(candidate));
        if (d < best) {
            best = d;
            closest = candidate;
        }
    };
    for (const Member& m : InterfaceMembers()) consider(m.name);
    for (const Builtin& b : Builtins()) consider(b.name);
    return closest;
}

}  // namespace kiv::script
