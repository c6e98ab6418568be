// Keeping a form on top, the timer that confirms a pending dialog box, and
// the page eject of a printer file.
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/platform.hpp"
#include "forms/late_bound.hpp"

namespace kiv {
namespace {

constexpr Long kTopMost = -1;
constexpr Long kNotTopMost = -2;
constexpr Long kShowNoActivate = 0x50;  // show the window, do not activate it
constexpr Long kConfirmTimer = 0x5000;
// The title of the dialog box that the timer confirms: the module's text,
// which the library never sets, so only a dialog box without title matches.
const String kDialogTitle = u"";

// Twips to pixels, halves to the even neighbour.
Long Pixels(const Variant& twips, Double twipsPerPixel) { return ToLong(Variant(ToDoubleLocale(twips) / twipsPerPixel)); }

}  // namespace

void Cl_KIV::FormPrimoPiano(const Object& Myfrm, Boolean SetOnTop) {
    WindowSystem& windows = CurrentPlatform().windows();
    // 1.
    const Long after = SetOnTop ? kTopMost : kNotTopMost;
    // 2. In the order of the call's arguments: the handle, then the place.
    const Long hWnd = ToLong(GetMember(Myfrm, "hWnd"));
    const Long x = Pixels(GetMember(Myfrm, "Left"), windows.twipsPerPixelX());
    const Long y = Pixels(GetMember(Myfrm, "Top"), windows.twipsPerPixelY());
    const Long cx = Pixels(GetMember(Myfrm, "Width"), windows.twipsPerPixelX());
    const Long cy = Pixels(GetMember(Myfrm, "Height"), windows.twipsPerPixelY());
    // 3. The window system's answer is not looked at.
    windows.setWindowPos(hWnd, after, x, y, cx, cy, kShowNoActivate);
}

void Cl_KIV::TimerProc(Long hWnd, Long /*uMsg*/, Long idEvent, Long /*dwTime*/) {
    WindowSystem& windows = CurrentPlatform().windows();
    // 1.
    windows.killTimer(hWnd, idEvent);
    // 2.
    if (idEvent != kConfirmTimer) return;
    const Long dialog = windows.findWindow(u"#32770", kDialogTitle);
    if (dialog > 0) {
        windows.setForegroundWindow(dialog);
        windows.sendKeys(u"{enter}");
    }
}

// The form feed ends its print item without a line end, so every page of a
// report starts on its first line, as the first page does.
void Cl_KIV::ejec(const Variant& Nf) { CurrentPlatform().fileTable().print(ToLong(Nf), String(1, u'\f'), false); }

}  // namespace kiv
