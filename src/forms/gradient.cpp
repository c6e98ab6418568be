// A gradient of colour bands painted on a form's client area. Nothing keeps
// it: hosts paint it again from their paint and resize events.
#include <cstdint>

#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/runtime.hpp"

namespace kiv {
namespace {

constexpr Long kTwips = 1;
constexpr Long kPixels = 3;

Long ScaleModeOf(const Object& Frm) {
    try {
        return ToLong(GetMember(Frm, "ScaleMode"));
    } catch (const RuntimeError& e) {
        if (e.number() != kNotSupported) throw;
        return kTwips;
    }
}

// Channel `shift` of the colour k/(n-1) of the way from c1 to c2.
Long Channel(Long c1, Long c2, int shift, Long k, Long n) {
    const Long a = (c1 >> shift) & 0xFF, b = (c2 >> shift) & 0xFF;
    return RoundToLong(a + static_cast<double>(b - a) * k / (n - 1)) << shift;
}

}  // namespace

void Cl_KIV::FadeForm2(const Object& Frm, Long Colore1, Long Colore2, Boolean Verticale, Integer N_Bande) {
    // 1.
    if (N_Bande < 1 || Colore1 < 0 || Colore1 > 0xFFFFFF || Colore2 < 0 || Colore2 > 0xFFFFFF) Raise(kInvalidCall);
    // 2.
    WindowSystem& windows = CurrentPlatform().windows();
    const Long mode = ScaleModeOf(Frm);
    const Long hWnd = ToLong(GetMember(Frm, "hWnd"));
    Long w = 0, h = 0;
    if (mode == kTwips) {
        w = ToLong(Variant(ToDoubleLocale(GetMember(Frm, "ScaleWidth")) / windows.twipsPerPixelX()));
        h = ToLong(Variant(ToDoubleLocale(GetMember(Frm, "ScaleHeight")) / windows.twipsPerPixelY()));
    } else if (mode == kPixels) {
        w = ToLong(GetMember(Frm, "ScaleWidth"));
        h = ToLong(GetMember(Frm, "ScaleHeight"));
    } else if (const auto client = windows.clientRect(hWnd)) {
        w = client->right - client->left;
        h = client->bottom - client->top;
    }
    if (w <= 0 || h <= 0) return;
    // 3.
    const std::int64_t n = N_Bande, e = Verticale ? h : w;
    for (std::int64_t k = 0; k < n; ++k) {
        const auto start = static_cast<Long>(k * e / n), end = static_cast<Long>((k + 1) * e / n);
        if (start == end) continue;
        const Long colour = n == 1 ? Colore1
                                   : Channel(Colore1, Colore2, 0, static_cast<Long>(k), static_cast<Long>(n)) |
                                         Channel(Colore1, Colore2, 8, static_cast<Long>(k), static_cast<Long>(n)) |
                                         Channel(Colore1, Colore2, 16, static_cast<Long>(k), static_cast<Long>(n));
        const WindowSystem::Rect band =
            Verticale ? WindowSystem::Rect{0, start, w, end} : WindowSystem::Rect{start, 0, end, h};
        windows.fillRect(hWnd, band, colour);
    }
}

}  // namespace kiv
