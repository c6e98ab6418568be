#include "syntax.hpp"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <limits>

#include "frame/ascii.hpp"
#include "frame/runtime.hpp"
#include "frame/strings.hpp"

namespace kiv::script {
namespace {

bool IsAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsNameChar(char c) { return IsAlpha(c) || IsAsciiDigit(c) || c == '_'; }
bool IsHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }
bool IsOctDigit(char c) { return c >= '0' && c <= '7'; }
bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

struct Token {
    enum class Kind { End, Number, Text, Date, Name, Symbol };
    Kind kind = Kind::End;
    std::string text;  // the number as written, the name, the symbol
    String value;      // Text
    DateLiteralParts date;    // Date
    int column = 0;           // where it starts, from 1
};

// Splits a line into tokens; a quote outside text starts a comment.
class Lexer {
public:
    explicit Lexer(std::string_view line) : s_(line) {}

    std::vector<Token> tokens() {
        std::vector<Token> out;
        for (;;) {
            while (i_ < s_.size() && IsBlank(s_[i_])) ++i_;
            if (i_ >= s_.size() || s_[i_] == '\'') break;
            const int column = static_cast<int>(i_) + 1;
            try {
                out.push_back(next());
            } catch (const ParseError& e) {
                throw ParseError(e.what(), e.column != 0 ? e.column : column);
            }
            out.back().column = column;
        }
        out.push_back(Token{});
        out.back().column = static_cast<int>(i_) + 1;
        return out;
    }

private:
    char peek(std::size_t ahead = 0) const { return i_ + ahead < s_.size() ? s_[i_ + ahead] : '\0'; }

    Token next() {
        const char c = peek();
        if (IsAsciiDigit(c) || (c == '.' && IsAsciiDigit(peek(1)))) return number();
        if (c == '&' && (peek(1) == 'H' || peek(1) == 'h') && IsHexDigit(peek(2))) return radix(IsHexDigit);
        if (c == '&' && (peek(1) == 'O' || peek(1) == 'o') && IsOctDigit(peek(2))) return radix(IsOctDigit);
        if (c == '"') return text();
        if (c == '#' && isDateLiteral()) return date();
        if (IsAlpha(c) || c == '_') {
            const std::size_t start = i_;
            while (IsNameChar(peek())) ++i_;
            return {Token::Kind::Name, std::string(s_.substr(start, i_ - start)), {}, {}};
        }
        if (c == ':' && peek(1) == '=') {
            i_ += 2;
            return {Token::Kind::Symbol, ":=", {}, {}};
        }
        if (std::string_view("?=(),.&-;#").find(c) != std::string_view::npos) {
            ++i_;
            return {Token::Kind::Symbol, std::string(1, c), {}, {}};
        }
        throw ParseError("unexpected character '" + std::string(1, c) + "'");
    }

    // "#" opens a date when a digit follows and the text up to the next "#"
    // is made of date characters with a "-" or ":"; otherwise it marks a
    // file number ("#1", "#f").
    bool isDateLiteral() const {
        if (!IsAsciiDigit(peek(1))) return false;
        const std::size_t close = s_.find('#', i_ + 1);
        if (close == std::string_view::npos) return false;
        const std::string_view body = s_.substr(i_ + 1, close - i_ - 1);
        // "/" and "." too, so that a date written day first is refused by name.
        return body.find_first_not_of("0123456789-:/. ") == std::string_view::npos &&
               body.find_first_of("-:/") != std::string_view::npos;
    }

    Token number() {
        const std::size_t start = i_;
        while (IsAsciiDigit(peek())) ++i_;
        if (peek() == '.') {
            ++i_;
            while (IsAsciiDigit(peek())) ++i_;
        }
        const char e = peek();
        if ((e == 'E' || e == 'e' || e == 'D' || e == 'd') &&
            (IsAsciiDigit(peek(1)) || ((peek(1) == '+' || peek(1) == '-') && IsAsciiDigit(peek(2))))) {
            i_ += 2;
            while (IsAsciiDigit(peek())) ++i_;
        }
        if (std::string_view("%&!#@").find(peek()) != std::string_view::npos && peek() != '\0') ++i_;
        if (IsNameChar(peek())) throw ParseError("malformed number");
        return {Token::Kind::Number, std::string(s_.substr(start, i_ - start)), {}, {}};
    }

    Token radix(bool (*digit)(char)) {
        const std::size_t start = i_;
        i_ += 2;
        while (digit(peek())) ++i_;
        if (peek() == '%' || peek() == '&') ++i_;
        if (IsNameChar(peek())) throw ParseError("malformed number");
        return {Token::Kind::Number, std::string(s_.substr(start, i_ - start)), {}, {}};
    }

    Token text() {
        std::string raw;
        ++i_;
        for (;;) {
            if (i_ >= s_.size()) throw ParseError("text without closing quote");
            if (s_[i_] == '"') {
                if (peek(1) != '"') break;
                ++i_;
            }
            raw += s_[i_++];
        }
        ++i_;
        return {Token::Kind::Text, {}, FromUtf8(raw), {}};
    }

    Token date() {
        const std::size_t close = s_.find('#', i_ + 1);
        if (close == std::string_view::npos) throw ParseError("date without closing #");
        const std::string_view body = s_.substr(i_ + 1, close - i_ - 1);
        i_ = close + 1;
        return {Token::Kind::Date, {}, {}, DateBody(body)};
    }

    // "yyyy-mm-dd", "yyyy-mm-dd hh:nn:ss" or "hh:nn:ss" (seconds optional).
    static DateLiteralParts DateBody(std::string_view body) {
        DateLiteralParts d;
        std::size_t p = 0;
        const std::string malformed = "malformed date #" + std::string(body) +
                                      "#: dates are written year first, #yyyy-mm-dd#, #yyyy-mm-dd hh:nn:ss# or #hh:nn:ss#";
        auto field = [&](std::size_t minDigits, std::size_t maxDigits) {
            const std::size_t start = p;
            int v = 0;
            while (p < body.size() && IsAsciiDigit(body[p]) && p - start < maxDigits) v = v * 10 + (body[p++] - '0');
            if (p - start < minDigits) throw ParseError(malformed);
            return v;
        };
        auto expect = [&](char c) {
            if (p >= body.size() || body[p] != c) throw ParseError(malformed);
            ++p;
        };
        if (body.find('-') != std::string_view::npos) {
            d.hasDate = true;
            d.year = field(4, 4);
            expect('-');
            d.month = field(1, 2);
            expect('-');
            d.day = field(1, 2);
            if (p < body.size()) expect(' ');
        }
        if (p < body.size()) {
            d.hasTime = true;
            d.hour = field(1, 2);
            expect(':');
            d.minute = field(1, 2);
            if (p < body.size()) {
                expect(':');
                d.second = field(1, 2);
            }
        }
        if (p != body.size() || (!d.hasDate && !d.hasTime)) throw ParseError(malformed);
        if (d.hasDate) {
            if (d.year < 100 || !ValidDay(d.year, d.month, d.day))
                throw ParseError("invalid date #" + std::string(body) + "#");
        }
        if (d.hour > 23 || d.minute > 59 || d.second > 59) throw ParseError("invalid time #" + std::string(body) + "#");
        return d;
    }

    std::string_view s_;
    std::size_t i_ = 0;
};

class Parser {
public:
    explicit Parser(std::vector<Token> tokens) : t_(std::move(tokens)) {}

    std::optional<Statement> statement() {
        if (at(Token::Kind::End)) return std::nullopt;
        Statement s;
        if (symbol("?")) {
            s.kind = Statement::Kind::Print;
            s.value = expression();
        } else if (keyword("dim")) {
            dim(s);
        } else if (keyword("set")) {
            s.kind = Statement::Kind::SetRef;
            assignment(s, postfix());
        } else if (keyword("let")) {
            s.kind = Statement::Kind::Assign;
            assignment(s, postfix());
        } else if (isFileStatement()) {
            fileStatement(s);
        } else if (keyword("call")) {
            s.value = expression();
            s.explicitCall = true;
            if (!s.value->isCallForm()) throw ParseError("Call needs an operation");
        } else {
            if (isUnsupportedKeyword()) throw ParseError("'" + cur().text + "' is no statement of kiv; " + unknownStatement());
            const std::size_t start = i_;
            ExprPtr e;
            std::optional<ParseError> failed;
            try {
                e = expression();
            } catch (const ParseError& error) {
                failed = error;
            }
            if (!failed && isSymbol("=")) {
                s.kind = Statement::Kind::Assign;
                assignment(s, std::move(e));
            } else if (!failed && at(Token::Kind::End)) {
                s.value = std::move(e);
            } else if (t_[start].kind == Token::Kind::Name && !isLiteralName(t_[start].text)) {
                // "Operation arg, arg" or "obj.Method arg, arg", as hosts write calls.
                i_ = start;
                s.value = statementCall();
                s.explicitCall = true;
            } else if (failed) {
                throw *failed;
            } else {
                throw ParseError("unexpected " + describe(cur()) + " after a value; " + unknownStatement());
            }
        }
        if (!at(Token::Kind::End)) throw ParseError("unexpected " + describe(cur()) + " at the end of the line");
        return s;
    }

    int column() const { return cur().column; }

private:
    const Token& cur() const { return t_[i_]; }
    bool at(Token::Kind k) const { return cur().kind == k; }
    bool isSymbol(std::string_view s) const { return at(Token::Kind::Symbol) && cur().text == s; }
    bool isKeyword(std::string_view k) const { return at(Token::Kind::Name) && Lower(cur().text) == k; }
    bool symbol(std::string_view s) {
        if (!isSymbol(s)) return false;
        ++i_;
        return true;
    }
    bool keyword(std::string_view k) {
        if (!isKeyword(k)) return false;
        ++i_;
        return true;
    }
    void expect(std::string_view s) {
        if (!symbol(s)) throw ParseError("expected '" + std::string(s) + "' but found " + describe(cur()));
    }
    std::string name() {
        if (!at(Token::Kind::Name)) throw ParseError("expected a name but found " + describe(cur()));
        return t_[i_++].text;
    }
    static std::string describe(const Token& t) {
        switch (t.kind) {
            case Token::Kind::End: return "the end of the line";
            case Token::Kind::Number: return "number " + t.text;
            case Token::Kind::Text: return "a text";
            case Token::Kind::Date: return "a date";
            case Token::Kind::Name: return "'" + t.text + "'";
            case Token::Kind::Symbol: return "'" + t.text + "'";
        }
        return "?";
    }

    static bool isLiteralName(const std::string& name) {
        const std::string k = Lower(name);
        return k == "true" || k == "false" || k == "null" || k == "empty" || k == "nothing";
    }

    // Statements of the host language that kiv does not run.
    bool isUnsupportedKeyword() const {
        static const char* const kKeywords[] = {"if", "else", "elseif", "end", "for", "next", "do", "loop",
                                                "while", "wend", "sub", "function", "select", "case", "with",
                                                "exit", "goto", "gosub", "on", "redim", "const", "private",
                                                "public", "option", "return", "resume", "erase", "debug"};
        if (!at(Token::Kind::Name)) return false;
        const Token& after = t_[i_ + 1];
        if (after.kind == Token::Kind::Symbol && (after.text == "=" || after.text == "(")) return false;
        const std::string k = Lower(cur().text);
        for (const char* w : kKeywords)
            if (k == w) return true;
        return false;
    }

    static std::string unknownStatement() {
        return "the statements are: ? EXPR, NAME = EXPR, Set NAME = EXPR, Dim NAME(UB), Operation arg, ..., "
               "Call Operation(arg, ...), OBJ.Method arg, ..., Open, Close, Print #, Line Input #, Kill, MkDir, "
               "RmDir, WriteText";
    }

    // The callee of a statement-form call: a name, or a chain of members whose
    // last one takes the arguments that follow without parentheses.
    ExprPtr statementCall() {
        auto e = std::make_unique<Expr>();
        e->name = name();
        e->kind = Expr::Kind::Call;
        while (isSymbol(".") || (isSymbol("(") && parenthesisThenDot())) {
            if (symbol("(")) {
                e->args = arguments();
                continue;
            }
            ++i_;
            auto m = std::make_unique<Expr>();
            m->kind = Expr::Kind::Member;
            m->parens = true;
            if (e->kind == Expr::Kind::Call && e->args.empty()) e->kind = Expr::Kind::Name;
            else if (e->kind == Expr::Kind::Member && e->args.empty()) e->parens = false;
            m->object = std::move(e);
            m->name = name();
            e = std::move(m);
        }
        if (!at(Token::Kind::End)) {
            try {
                e->args = arguments(true);
            } catch (const ParseError& error) {
                throw ParseError(std::string(error.what()) + " (a call statement is: Operation arg, arg)");
            }
        }
        return e;
    }

    // At "(": whether the matching ")" is followed by "." (a call in the middle of a chain).
    bool parenthesisThenDot() const {
        int depth = 0;
        for (std::size_t k = i_; t_[k].kind != Token::Kind::End; ++k) {
            if (t_[k].kind != Token::Kind::Symbol) continue;
            if (t_[k].text == "(") ++depth;
            else if (t_[k].text == ")" && --depth == 0)
                return t_[k + 1].kind == Token::Kind::Symbol && t_[k + 1].text == ".";
        }
        return false;
    }

    // A file statement's keyword, unless the line assigns to a variable of that name.
    bool isFileStatement() const {
        if (!at(Token::Kind::Name)) return false;
        const Token& after = t_[i_ + 1];
        if (after.kind == Token::Kind::Symbol && after.text == "=") return false;
        const std::string k = Lower(cur().text);
        if (k == "line") return after.kind == Token::Kind::Name && Lower(after.text) == "input";
        return k == "open" || k == "close" || k == "print" || k == "kill" || k == "mkdir" || k == "rmdir" ||
               k == "writetext";
    }

    void fileStatement(Statement& s) {
        const std::string k = Lower(name());
        if (k == "open") {
            s.kind = Statement::Kind::FileOpen;
            s.operands.push_back(expression());
            if (!keyword("for")) throw ParseError("Open needs For Input, Output, Append or Binary");
            s.name = Lower(name());
            if (s.name != "input" && s.name != "output" && s.name != "append" && s.name != "binary")
                throw ParseError("Open knows For Input, Output, Append and Binary");
            if (!keyword("as")) throw ParseError("Open needs As #number");
            s.operands.push_back(fileNumber());
        } else if (k == "close") {
            s.kind = Statement::Kind::FileClose;
            if (!at(Token::Kind::End)) {
                do s.operands.push_back(fileNumber());
                while (symbol(","));
            }
        } else if (k == "print") {
            s.kind = Statement::Kind::FilePrint;
            s.operands.push_back(fileNumber());
            expect(",");
            if (!at(Token::Kind::End) && !isSymbol(";")) s.value = expression();
            s.noLineEnd = symbol(";");
        } else if (k == "line") {
            name();  // Input
            s.kind = Statement::Kind::LineInput;
            s.operands.push_back(fileNumber());
            expect(",");
            ExprPtr target = postfix();
            if (target->kind != Expr::Kind::Name && target->kind != Expr::Kind::Call)
                throw ParseError("Line Input needs a variable");
            s.target = std::move(target);
        } else if (k == "writetext") {
            s.kind = Statement::Kind::WriteText;
            s.operands.push_back(expression());
            expect(",");
            s.operands.push_back(expression());
        } else {
            s.kind = Statement::Kind::FileCommand;
            s.name = k;
            s.operands.push_back(expression());
        }
    }

    ExprPtr fileNumber() {
        symbol("#");
        return expression();
    }

    void assignment(Statement& s, ExprPtr target) {
        // A member with arguments is an indexed property: `l.ItemData(0) = 5`.
        const bool assignable = target->kind == Expr::Kind::Name || target->kind == Expr::Kind::Call ||
                                target->kind == Expr::Kind::Member;
        if (!assignable) throw ParseError("cannot assign to this");
        expect("=");
        s.target = std::move(target);
        s.value = expression();
    }

    void dim(Statement& s) {
        s.kind = Statement::Kind::Dim;
        s.name = name();
        if (symbol("(")) {
            s.isArray = true;
            do {
                DimBound b;
                b.upper = expression();
                if (keyword("to")) {
                    b.lower = std::move(b.upper);
                    b.upper = expression();
                }
                s.bounds.push_back(std::move(b));
            } while (symbol(","));
            expect(")");
            if (s.bounds.size() > 2) throw ParseError("arrays have one or two dimensions");
        }
        if (keyword("as")) {
            const std::string type = Lower(name());
            if (type == "string") s.ofStrings = true;
            else if (type != "variant") throw ParseError("Dim knows As String and As Variant");
        }
    }

    ExprPtr expression() {
        ExprPtr left = unary();
        while (symbol("&")) {
            auto e = std::make_unique<Expr>();
            e->kind = Expr::Kind::Concat;
            e->object = std::move(left);
            e->right = unary();
            left = std::move(e);
        }
        return left;
    }

    // Bounds the recursion of the parser and of everything that walks the tree.
    struct Nesting {
        explicit Nesting(int& depth) : d(depth) {
            if (++d > kMaxDepth) throw ParseError("expression nested too deeply");
        }
        ~Nesting() { --d; }
        int& d;
    };
    static constexpr int kMaxDepth = 200;
    static constexpr int kMaxNodes = 20000;

    ExprPtr unary() {
        Nesting guard(depth_);
        if (++nodes_ > kMaxNodes) throw ParseError("line too long");
        if (!symbol("-")) return postfix();
        auto e = std::make_unique<Expr>();
        if (at(Token::Kind::Number)) {
            e->value = NumberLiteral(t_[i_++].text, true);
            return e;
        }
        e->kind = Expr::Kind::Negate;
        e->object = unary();
        return e;
    }

    ExprPtr postfix() {
        ExprPtr e = primary();
        // Each member nests its object one level deeper, like a parenthesis.
        const int outer = depth_;
        while (symbol(".")) {
            if (++depth_ > kMaxDepth) throw ParseError("expression nested too deeply");
            auto m = std::make_unique<Expr>();
            m->kind = Expr::Kind::Member;
            m->object = std::move(e);
            m->name = name();
            if (symbol("(")) {
                m->parens = true;
                m->args = arguments();
            }
            e = std::move(m);
        }
        depth_ = outer;
        return e;
    }

    ExprPtr primary() {
        auto e = std::make_unique<Expr>();
        const Token& t = cur();
        switch (t.kind) {
            case Token::Kind::Number: e->value = NumberLiteral(t.text, false); ++i_; return e;
            case Token::Kind::Text: e->value = Variant(t.value); ++i_; return e;
            case Token::Kind::Date:
                e->kind = Expr::Kind::DateLiteral;
                e->date = t.date;
                ++i_;
                return e;
            case Token::Kind::Name: {
                const std::string lower = Lower(t.text);
                if (lower == "true" || lower == "false") e->value = Variant(lower == "true");
                else if (lower == "null") e->value = Variant::null();
                else if (lower == "empty") e->value = Variant();
                else if (lower == "nothing") e->value = Variant(Object{});
                else {
                    e->name = t.text;
                    ++i_;
                    if (symbol("(")) {
                        e->kind = Expr::Kind::Call;
                        e->args = arguments();
                    } else {
                        e->kind = Expr::Kind::Name;
                    }
                    return e;
                }
                ++i_;
                return e;
            }
            case Token::Kind::Symbol:
                if (symbol("(")) {
                    e->kind = Expr::Kind::Paren;
                    e->object = expression();
                    expect(")");
                    return e;
                }
                break;
            case Token::Kind::End: break;
        }
        throw ParseError("expected a value but found " + describe(t));
    }

    // After "(": positions separated by commas, an empty one omitted, up to
    // ")"; for a statement-form call (`bare`), up to the end of the line.
    std::vector<Argument> arguments(bool bare = false) {
        std::vector<Argument> args;
        auto closes = [&] { return bare ? at(Token::Kind::End) : symbol(")"); };
        if (closes()) return args;
        bool named = false;
        for (;;) {
            Argument a;
            if (isSymbol(",") || (bare ? at(Token::Kind::End) : isSymbol(")"))) {
                a.kind = Argument::Kind::Omitted;
            } else if (at(Token::Kind::Name) && t_[i_ + 1].kind == Token::Kind::Symbol && t_[i_ + 1].text == ":=") {
                a.kind = Argument::Kind::Named;
                a.name = name();
                ++i_;
                a.value = expression();
                named = true;
            } else {
                a.value = expression();
            }
            if (named && a.kind != Argument::Kind::Named)
                throw ParseError("a positional argument cannot follow a named one");
            args.push_back(std::move(a));
            if (closes()) return args;
            expect(",");
        }
    }

    std::vector<Token> t_;
    std::size_t i_ = 0;
    int depth_ = 0;
    int nodes_ = 0;
};

Variant Typed(std::int64_t v, char suffix) {
    if (suffix == '%') {
        if (v < -32768 || v > 32767) throw ParseError("Overflow");
        return Variant(static_cast<Integer>(v));
    }
    if (suffix == '&') {
        if (v < std::numeric_limits<Long>::min() || v > std::numeric_limits<Long>::max()) throw ParseError("Overflow");
        return Variant(static_cast<Long>(v));
    }
    if (v >= -32768 && v <= 32767) return Variant(static_cast<Integer>(v));
    if (v >= std::numeric_limits<Long>::min() && v <= std::numeric_limits<Long>::max())
        return Variant(static_cast<Long>(v));
    return Variant(static_cast<Double>(v));
}

// Currency through a Double, for digits beyond what the exact path holds.
Variant CurrencyOfDouble(std::string_view digits, bool negate) {
    double d = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), d);
    try {
        return Variant(Currency::fromDouble(negate ? -d : d));
    } catch (const std::exception&) {
        throw ParseError("Overflow");
    }
}

// Currency from decimal digits, exact to four places.
Variant CurrencyLiteral(std::string_view digits, bool negate) {
    const std::size_t dot = digits.find('.');
    const std::string_view whole = digits.substr(0, dot);
    std::string_view frac = dot == std::string_view::npos ? std::string_view() : digits.substr(dot + 1);
    if (frac.size() > 4 || whole.size() > 15) {
        return CurrencyOfDouble(digits, negate);
    }
    // Fifteen whole digits and four decimals fit 64 unsigned bits; the signed
    // range is checked on the magnitude, one more allowed below zero.
    std::uint64_t scaled = 0;
    for (char c : whole) scaled = scaled * 10 + static_cast<unsigned>(c - '0');
    for (std::size_t k = 0; k < 4; ++k) scaled = scaled * 10 + (k < frac.size() ? static_cast<unsigned>(frac[k] - '0') : 0u);
    const std::uint64_t limit = static_cast<std::uint64_t>(INT64_MAX) + (negate ? 1u : 0u);
    if (scaled > limit) throw ParseError("Overflow");
    return Variant(Currency{negate ? static_cast<std::int64_t>(0 - scaled) : static_cast<std::int64_t>(scaled)});
}

}  // namespace

std::string Lower(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = AsciiLower(c);
    return out;
}

Variant NumberLiteral(std::string_view text, bool negate) {
    char suffix = 0;
    if (!text.empty() && std::string_view("%&!#@").find(text.back()) != std::string_view::npos) {
        suffix = text.back();
        text.remove_suffix(1);
    }
    if (text.size() > 1 && text[0] == '&') {
        // &H and &O: the bits of a 16-bit Integer when they fit, else of a Long.
        const int base = (text[1] == 'H' || text[1] == 'h') ? 16 : 8;
        std::uint64_t v = 0;
        for (char c : text.substr(2)) {
            v = v * static_cast<unsigned>(base) + static_cast<unsigned>(IsAsciiDigit(c) ? c - '0' : AsciiLower(c) - 'a' + 10);
            if (v > 0xFFFFFFFFu) throw ParseError("Overflow");
        }
        const bool isLong = suffix == '&' || v > 0xFFFFu;
        if (suffix == '%' && isLong) throw ParseError("Overflow");
        std::int64_t typed;
        if (suffix == '&' && v <= 0x7FFFFFFFu) typed = static_cast<std::int64_t>(v);  // &HFFFF& is 65535
        else if (isLong) typed = static_cast<Long>(static_cast<std::uint32_t>(v));
        else typed = static_cast<Integer>(static_cast<std::uint16_t>(v));
        return Typed(negate ? -typed : typed, isLong ? '&' : '\0');
    }
    std::string digits(text);
    for (char& c : digits)
        if (c == 'D' || c == 'd') c = 'E';
    const bool fractional = digits.find_first_of(".Ee") != std::string::npos;
    if (suffix == '@') {
        if (digits.find_first_of("Ee") == std::string::npos) return CurrencyLiteral(digits, negate);
        return CurrencyOfDouble(digits, negate);
    }
    if (!fractional && digits.size() <= 18 && suffix != '!' && suffix != '#') {
        std::int64_t v = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), v);
        return Typed(negate ? -v : v, suffix);
    }
    if (suffix == '%' || suffix == '&') throw ParseError("a whole number is needed before " + std::string(1, suffix));
    double d = 0;
    const auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), d);
    if (ec != std::errc() || end != digits.data() + digits.size()) throw ParseError("Overflow");
    if (negate) d = -d;
    if (suffix == '!') {
        if (d > std::numeric_limits<float>::max() || d < -std::numeric_limits<float>::max()) throw ParseError("Overflow");
        return Variant(static_cast<Single>(d));
    }
    return Variant(d);
}

std::optional<Statement> ParseLine(std::string_view line) {
    Parser parser(Lexer(line).tokens());
    try {
        return parser.statement();
    } catch (const ParseError& e) {
        if (e.column != 0) throw;
        throw ParseError(e.what(), parser.column());
    }
}

}  // namespace kiv::script
