// A form's place and size kept between sessions in an INI file of the user:
// written when the form closes, applied when it opens again.
#include <algorithm>
#include <array>
#include <limits>

#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"

namespace kiv {
namespace {

const String kSection = u"FormSize";
constexpr Long kMissing = std::numeric_limits<Long>::min();
const std::array<const char16_t*, 4> kKeys = {u".Left", u".Top", u".Width", u".Height"};
const std::array<const char*, 4> kMembers = {"Left", "Top", "Width", "Height"};

// The file given, or the application's name made a file name (no folder).
String GeometryFile(const String& lpFileName) {
    if (!lpFileName.empty()) return lpFileName;
    String name = CurrentPlatform().host().applicationName();
    std::replace(name.begin(), name.end(), u' ', u'_');
    std::replace(name.begin(), name.end(), u'.', u'_');
    return name + u".ini";
}

// A minimised or maximised form keeps no geometry; a form without the
// property counts as a normal one.
bool IsNormal(const Object& Frm) {
    try {
        return ToLong(GetMember(Frm, "WindowState")) == 0;
    } catch (const RuntimeError& e) {
        if (e.number() != kNotSupported) throw;
        return true;
    }
}

}  // namespace

Boolean Cl_KIV::FormSizeSAVE(const Object& Frm, const String& lpFileName) {
    try {
        // 1.
        if (!IsNormal(Frm)) return false;
        // 2. Every value is read before anything is written, so a form that
        // lacks one leaves the file as it was.
        const String name = ToText(GetMember(Frm, "Name"));
        std::array<Long, 4> values{};
        for (std::size_t i = 0; i < values.size(); ++i) values[i] = ToLong(GetMember(Frm, kMembers[i]));
        const String file = GeometryFile(lpFileName);
        bool written = true;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (SAVEPrivateInt(kSection, name + kKeys[i], values[i], file) == 0) written = false;
        // 3.
        return written;
    } catch (const std::exception&) {
        return false;
    }
}

Boolean Cl_KIV::FormSizeLOAD(const Object& Frm, const String& lpFileName, Boolean SoloPosizione) {
    try {
        // 1.
        if (!IsNormal(Frm)) return false;
        // 2.
        const String name = ToText(GetMember(Frm, "Name"));
        const String file = GeometryFile(lpFileName);
        const std::size_t count = SoloPosizione ? 2 : 4;
        std::array<Long, 4> v{};
        for (std::size_t i = 0; i < count; ++i) {
            v[i] = LOADPrivateInt(kSection, name + kKeys[i], kMissing, file);
            if (v[i] == kMissing) return false;
        }
        Long& L = v[0];
        Long& T = v[1];
        Long& W = v[2];
        Long& H = v[3];
        // 3.
        if (!SoloPosizione && (W < 1 || H < 1)) return false;
        // 4. Back onto the screen from a monitor that is gone. Without a new
        // size the form's own size is the one to fit.
        WindowSystem& windows = CurrentPlatform().windows();
        if (const auto screen = windows.virtualScreen()) {
            if (SoloPosizione) {
                W = ToLong(GetMember(Frm, "Width"));
                H = ToLong(GetMember(Frm, "Height"));
            }
            const double tx = windows.twipsPerPixelX(), ty = windows.twipsPerPixelY();
            const double left = screen->left * tx, top = screen->top * ty;
            const double width = (screen->right - screen->left) * tx, height = (screen->bottom - screen->top) * ty;
            W = ToLong(Variant(std::min<double>(W, width)));
            H = ToLong(Variant(std::min<double>(H, height)));
            L = ToLong(Variant(std::clamp<double>(L, left, left + width - W)));
            T = ToLong(Variant(std::clamp<double>(T, top, top + height - H)));
        }
        // 5.
        SetMember(Frm, "Left", Variant(L));
        SetMember(Frm, "Top", Variant(T));
        if (!SoloPosizione) {
            SetMember(Frm, "Width", Variant(W));
            SetMember(Frm, "Height", Variant(H));
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace kiv
