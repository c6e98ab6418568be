// Taking a Windows path apart by plain text: the last backslash and the last
// dot, searched from the right. Nothing here touches the disk.
#include "frame/cl_kiv.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"

namespace kiv {

String Cl_KIV::OnlyName(const String& FilFul) {
    String X = FilFul;
    const Long P = InStrRev(FilFul, u"\\");
    if (P > 0) X = Mid(FilFul, P + 1);
    const Long D = InStrRev(X, u".");
    if (D > 0) X = Left(X, D - 1);
    return X;
}

String Cl_KIV::GetExtens(Ref<String> T_Path) {
    const Long L = static_cast<Long>(T_Path->size());
    // The whole path is searched, folders too: "C:\a.b\c" gives "b\c".
    const Long P = InStrRev(*T_Path, u".");
    if (P == 0) return String();
    if (P == L) {
        *T_Path = Left(*T_Path, L - 1);
        return String();
    }
    return Mid(*T_Path, P + 1);
}

// Cuts four places for ".ext" whatever the extension, as callers rely on.
String Cl_KIV::GetFileName(const String& T_Path) {
    const Long P = InStrRev(T_Path, u"\\");
    if (P == 0) return T_Path;
    const String X = Trim(Mid(T_Path, P + 1));
    if (X.empty()) {
        CurrentPlatform().host().beep();
        return String();
    }
    return Left(X, static_cast<Long>(X.size()) - 4);
}

String Cl_KIV::GetFullFileName(Ref<String> T_Path) {
    const String N = GetFileName(*T_Path);
    const String E = GetExtens(*T_Path);
    return E.empty() ? N : N + u"." + E;
}

String Cl_KIV::GetFileNameOnly(Ref<String> T_Path) {
    const Long P = InStrRev(*T_Path, u"\\");
    if (P == 0) {
        const String E = GetExtens(*T_Path);
        if (E.empty()) return *T_Path;
        return Left(*T_Path, static_cast<Long>(T_Path->size()) - static_cast<Long>(E.size()) - 1);
    }
    const String X = Trim(Mid(*T_Path, P + 1));
    const Long D = InStrRev(X, u".");
    return D > 0 ? Left(X, D - 1) : X;
}

String Cl_KIV::GetPathName(const String& T_Path) {
    const Long P = InStrRev(T_Path, u"\\");
    return P != 0 ? Left(T_Path, P) : String();
}

String Cl_KIV::FixBarPth(const String& T_Pth) {
    if (!T_Pth.empty() && T_Pth.back() != u'\\') return T_Pth + u"\\";
    return T_Pth;
}

}  // namespace kiv
