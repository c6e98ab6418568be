#include "driver_host.hpp"

#include <cstdio>

#include "canonical.hpp"
#include "frame/runtime.hpp"

namespace kiv::script {

void Output::line(const std::string& text) {
    if (collect) {
        lines.push_back(text);
    } else {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

DriverHost::DriverHost(Output& out, const PlatformSettings& settings)
    : out_(out), system_(makePosixHost(settings)) {}

int DriverHost::messageBox(MsgIcon icon, const String& title, const String& text) {
    const char* name = "None";
    switch (icon) {
        case MsgIcon::None: name = "None"; break;
        case MsgIcon::Critical: name = "Critical"; break;
        case MsgIcon::Question: name = "Question"; break;
        case MsgIcon::Exclamation: name = "Exclamation"; break;
        case MsgIcon::Information: name = "Information"; break;
    }
    out_.line(std::string("MsgBox ") + name + " " + QuotedText(title) + " " + QuotedText(text));
    return 1;  // OK
}

void DriverHost::beep() { out_.line("Beep"); }

Date DriverHost::now() { return pinned_ ? DateOfParts(*pinned_) : system_->now(); }

bool DriverHost::startProgram(const String& commandLine) {
    out_.line("Start " + QuotedText(commandLine));
    return true;
}

bool DriverHost::openDocument(const String& target) {
    out_.line("Open " + QuotedText(target));
    return true;
}

std::optional<DateLiteralParts> ParseClock(std::string_view text) {
    // The same forms as a date literal, with the date required.
    try {
        std::optional<Statement> s = ParseLine("? #" + std::string(text) + "#");
        if (!s || s->value->kind != Expr::Kind::DateLiteral || !s->value->date.hasDate) return std::nullopt;
        return s->value->date;
    } catch (const ParseError&) {
        return std::nullopt;
    }
}

Date DateOfParts(const DateLiteralParts& p) {
    const double day = p.hasDate ? DateFromParts(p.year, p.month, p.day).serial : 0.0;
    const double time = p.hasTime ? TimeFromParts(p.hour, p.minute, p.second).serial : 0.0;
    return Date{day < 0 ? day - time : day + time};
}

}  // namespace kiv::script
