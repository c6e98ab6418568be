#include "system/ini/ini_engine.hpp"

#include "frame/runtime.hpp"

namespace kiv::ini {
namespace {

bool IsBlank(char c) { return c == ' ' || (c >= '\x09' && c <= '\x0D'); }

std::string_view LeftTrim(std::string_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    return s;
}
std::string_view RightTrim(std::string_view s) {
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

bool IsAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

// One line of the file: where it starts, its text trimmed, where the next
// begins. A line ends at CR, LF, or CR LF.
struct Line {
    enum Kind { Blank, Section, Comment, Key, Other } kind = Blank;
    std::size_t start = 0;
    std::size_t next = 0;
    std::string_view name;   // section or key name
    std::string_view value;  // a key's value, left-trimmed
};

Line ReadLine(std::string_view file, std::size_t start) {
    Line line;
    line.start = start;
    std::size_t end = start;
    while (end < file.size() && file[end] != '\r' && file[end] != '\n') ++end;
    line.next = end;
    if (end < file.size()) line.next += (file[end] == '\r' && end + 1 < file.size() && file[end + 1] == '\n') ? 2 : 1;

    const std::string_view text = TrimBlanks(file.substr(start, end - start));
    if (text.empty()) return line;
    if (text.front() == '[') {
        // The name runs to the last "]" (to the end when there is none).
        const std::size_t close = text.rfind(']');
        line.kind = Line::Section;
        line.name = TrimBlanks(close == std::string_view::npos ? text.substr(1) : text.substr(1, close - 1));
    } else if (text.front() == ';') {
        line.kind = Line::Comment;
    } else if (const std::size_t eq = text.find('='); eq != std::string_view::npos) {
        line.kind = Line::Key;
        line.name = RightTrim(text.substr(0, eq));
        line.value = LeftTrim(text.substr(eq + 1));
    } else {
        line.kind = Line::Other;
    }
    return line;
}

// Where the first matching section lies: its header line, the offset after
// its last non-blank line, the offset where it ends, and its first matching
// key line when a key is asked for.
struct Found {
    bool section = false;
    std::size_t header = 0;
    std::size_t afterLastNonBlank = 0;
    std::size_t end = 0;
    std::optional<Line> key;
};

// A reader stops at the key; a writer goes on to the section's end.
Found Find(std::string_view file, std::string_view section, std::optional<std::string_view> key,
           const NameMatch& same, bool stopAtKey = false) {
    Found found;
    for (std::size_t pos = 0; pos < file.size();) {
        const Line line = ReadLine(file, pos);
        if (found.section) {
            if (line.kind == Line::Section) {
                found.end = line.start;
                return found;
            }
            if (line.kind != Line::Blank) found.afterLastNonBlank = line.next;
            if (key && !found.key && line.kind == Line::Key && same(line.name, *key)) {
                found.key = line;
                if (stopAtKey) return found;
            }
        } else if (line.kind == Line::Section && same(line.name, section)) {
            found.section = true;
            found.header = line.start;
            found.afterLastNonBlank = line.next;
        }
        pos = line.next;
    }
    found.end = file.size();
    return found;
}

bool EndsLine(std::string_view file) { return file.empty() || file.back() == '\r' || file.back() == '\n'; }

bool HasLineEnd(std::string_view s) { return s.find_first_of("\r\n") != std::string_view::npos; }

}  // namespace

std::string_view TrimBlanks(std::string_view s) { return RightTrim(LeftTrim(s)); }

bool NameMatch::operator()(std::string_view a, std::string_view b) const {
    if (IsAscii(a) && IsAscii(b)) {
        if (a.size() != b.size()) return false;
        for (std::size_t i = 0; i < a.size(); ++i)
            if (AsciiLower(a[i]) != AsciiLower(b[i])) return false;
        return true;
    }
    return CaseBlindEqual(decode_(a), decode_(b));
}

std::optional<std::string_view> Lookup(std::string_view file, std::string_view section, std::string_view key,
                                       const NameMatch& same) {
    const Found found = Find(file, TrimBlanks(section), TrimBlanks(key), same, true);
    if (!found.key) return std::nullopt;
    std::string_view value = found.key->value;
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
        value = value.substr(1, value.size() - 2);
    return value;
}

// What could not be read back as written is refused rather than torn into
// other lines or read as something else.
bool Writable(std::string_view section, std::optional<std::string_view> key, std::optional<std::string_view> value) {
    section = TrimBlanks(section);
    if (key) key = TrimBlanks(*key);
    if (HasLineEnd(section) || (key && HasLineEnd(*key)) || (value && HasLineEnd(*value))) return false;
    return !(key && value &&
             (key->find('=') != std::string_view::npos || (!key->empty() && (key->front() == '[' || key->front() == ';'))));
}

Edit Update(std::string_view file, std::string_view section, std::optional<std::string_view> key,
            std::optional<std::string_view> value, const NameMatch& same) {
    section = TrimBlanks(section);
    if (key) key = TrimBlanks(*key);
    if (!Writable(section, key, value)) return {Edit::Refused, {}};

    const Found found = Find(file, section, key, same);
    auto splice = [&](std::size_t from, std::size_t to, std::string_view with) {
        std::string text;
        text.reserve(file.size() + with.size());
        text.append(file.substr(0, from)).append(with).append(file.substr(to));
        return Edit{Edit::Changed, std::move(text)};
    };
    auto keyLine = [](std::string_view name, std::string_view v) {
        return std::string(name).append("=").append(v).append("\r\n");
    };

    if (!key) return found.section ? splice(found.header, found.end, "") : Edit{};
    if (!value) return found.key ? splice(found.key->start, found.key->next, "") : Edit{};
    if (found.key) {
        if (found.key->value == *value) return {};
        return splice(found.key->start, found.key->next, keyLine(found.key->name, *value));
    }
    if (found.section) {
        // A new key follows the last non-blank line of its section; that line
        // may be the file's last, without a line end.
        const std::size_t at = found.afterLastNonBlank;
        const bool needsEnd = !EndsLine(file.substr(0, at));
        return splice(at, at, (needsEnd ? std::string("\r\n") : std::string()) + keyLine(*key, *value));
    }
    std::string tail = EndsLine(file) ? "" : "\r\n";
    tail.append("[").append(section).append("]\r\n").append(keyLine(*key, *value));
    return splice(file.size(), file.size(), tail);
}

}  // namespace kiv::ini
