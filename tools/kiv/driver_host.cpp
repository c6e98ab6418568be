#include "driver_host.hpp"

#include <cstdio>

#include "canonical.hpp"
#include "frame/runtime.hpp"

namespace kiv::script {

void Output::line(const std::string& text) {
    if (!pending.empty()) {
        std::string first = std::move(pending);
        pending.clear();
        line(first);
    }
    if (collect) {
        lines.push_back(text);
    } else {
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
}

DriverHost::DriverHost(Output& out, const PlatformSettings& settings)
    : out_(out), system_(MakePosixHost(settings)) {}

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

namespace kiv::script {
namespace {

std::string Number(Long n) { return std::to_string(n); }

}  // namespace

bool DriverWindowSystem::setWindowPos(Long hWnd, Long after, Long x, Long y, Long cx, Long cy, Long flags) {
    out_.line("Window SetWindowPos " + Number(hWnd) + " " + Number(after) + " " + Number(x) + " " + Number(y) + " " +
              Number(cx) + " " + Number(cy) + " " + Number(flags));
    return true;
}

bool DriverWindowSystem::killTimer(Long hWnd, Long idEvent) {
    out_.line("Window KillTimer " + Number(hWnd) + " " + Number(idEvent));
    return true;
}

// Class and title compare case-blind, as the window system's search does.
Long DriverWindowSystem::findWindow(const String& className, const String& title) {
    out_.line("Window FindWindow " + QuotedText(className) + " " + QuotedText(title));
    for (const Window& w : windows_)
        if (CaseBlindEqual(w.className, className) && CaseBlindEqual(w.title, title)) return w.handle;
    return 0;
}

bool DriverWindowSystem::setForegroundWindow(Long hWnd) {
    out_.line("Window SetForegroundWindow " + Number(hWnd));
    return true;
}

void DriverWindowSystem::sendKeys(const String& keys) { out_.line("Window SendKeys " + QuotedText(keys)); }

Long DriverWindowSystem::sendMessage(Long hWnd, Long msg, Long wParam, Long lParam) {
    out_.line("Window SendMessage " + Number(hWnd) + " " + Number(msg) + " " + Number(wParam) + " " + Number(lParam));
    return 0;
}

bool DriverWindowSystem::fillRect(Long hWnd, const Rect& r, Long colour) {
    out_.line("Window FillRect " + Number(hWnd) + " " + Number(r.left) + " " + Number(r.top) + " " + Number(r.right) +
              " " + Number(r.bottom) + " " + Number(colour));
    return true;
}

Long DriverWindowSystem::textWidth(Long, const String& text) { return 8 * static_cast<Long>(text.size()); }

Long DriverWindowSystem::makeWindow(const String& className, const String& title) {
    const Long handle = 4096 + static_cast<Long>(windows_.size());
    windows_.push_back({className, title, handle});
    return handle;
}

}  // namespace kiv::script
