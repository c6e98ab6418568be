#include "canonical.hpp"

#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "frame/dispatchable.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv::script {
namespace {

template <class T>
std::string Shortest(T value) {
    char buf[64];
    const auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
    return std::string(buf, end);
}

std::string CurrencyText(Currency c) {
    const bool negative = c.scaled < 0;
    // Magnitude in unsigned arithmetic, so the most negative value prints too.
    const std::uint64_t m = negative ? 0 - static_cast<std::uint64_t>(c.scaled) : static_cast<std::uint64_t>(c.scaled);
    std::string out = (negative ? "-" : "") + std::to_string(m / 10000);
    std::string frac = std::to_string(10000 + m % 10000).substr(1);
    while (!frac.empty() && frac.back() == '0') frac.pop_back();
    if (!frac.empty()) out += "." + frac;
    return out;
}

std::string Two(int v) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

std::string DateLiteralText(Date d) {
    const DateParts p = SplitDate(d);
    char year[16];
    std::snprintf(year, sizeof year, "%04d", p.year);
    std::string out = "#" + std::string(year) + "-" + Two(p.month) + "-" + Two(p.day);
    if (p.hour != 0 || p.minute != 0 || p.second != 0)
        out += " " + Two(p.hour) + ":" + Two(p.minute) + ":" + Two(p.second);
    return out + "#";
}

std::string ErrorValueText(std::int32_t code) {
    const std::uint32_t u = static_cast<std::uint32_t>(code);
    // Errors of the runtime's own facility show their plain number.
    if ((u & 0xFFFF0000u) == 0x800A0000u) return "Error " + std::to_string(u & 0xFFFFu);
    char buf[32];
    std::snprintf(buf, sizeof buf, "Error &H%08X", u);
    return buf;
}

std::string ArrayText(const Array& a) {
    std::string out = "Array(";
    for (std::size_t d = 0; d < a.dims().size(); ++d) {
        if (d > 0) out += ", ";
        out += std::to_string(a.lower(static_cast<int>(d))) + " To " + std::to_string(a.upper(static_cast<int>(d)));
    }
    out += ") {";
    for (std::size_t i = 0; i < a.items().size(); ++i) {
        if (i > 0) out += ", ";
        out += Canonical(a.items()[i]);
    }
    return out + "}";
}

}  // namespace

std::string QuotedText(const String& text) {
    if (text.empty()) return "\"\"";
    std::string out;
    String run;
    auto piece = [&](const std::string& p) {
        if (!out.empty()) out += " & ";
        out += p;
    };
    auto flush = [&] {
        if (run.empty()) return;
        std::string q = "\"";
        for (char c : ToUtf8(run)) q += c == '"' ? std::string("\"\"") : std::string(1, c);
        piece(q + "\"");
        run.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const bool high = c >= 0xD800 && c <= 0xDBFF;
        const bool paired = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (c < 32 || c == 127) {
            flush();
            piece("Chr(" + std::to_string(static_cast<int>(c)) + ")");
        } else if (c >= 0xD800 && c <= 0xDFFF && !paired) {
            // A lone surrogate has no UTF-8 spelling; show its code unit.
            flush();
            piece("ChrW(" + std::to_string(static_cast<int>(c)) + ")");
        } else {
            run += c;
            if (paired) run += text[++i];
        }
    }
    flush();
    return out;
}

std::string Canonical(const Variant& value) {
    struct Visitor {
        std::string operator()(EmptyValue) const { return "Empty"; }
        std::string operator()(NullValue) const { return "Null"; }
        std::string operator()(ErrorValue e) const {
            return e.code == kMissingArgument ? "Missing" : ErrorValueText(e.code);
        }
        std::string operator()(Integer v) const { return "Integer " + std::to_string(v); }
        std::string operator()(Long v) const { return "Long " + std::to_string(v); }
        std::string operator()(Single v) const { return "Single " + Shortest(v); }
        std::string operator()(Double v) const { return "Double " + Shortest(v); }
        std::string operator()(Currency v) const { return "Currency " + CurrencyText(v); }
        std::string operator()(Date v) const { return "Date " + DateLiteralText(v); }
        std::string operator()(Boolean v) const { return v ? "Boolean True" : "Boolean False"; }
        std::string operator()(Byte v) const { return "Byte " + std::to_string(v); }
        std::string operator()(const String& v) const { return "String " + QuotedText(v); }
        std::string operator()(const Object& v) const { return v ? "Object " + v->typeName() : "Nothing"; }
        std::string operator()(const Boxed<Array>& v) const { return ArrayText(*v); }
    };
    return std::visit(Visitor{}, value.storage());
}

}  // namespace kiv::script
