// A list's items written to a text file and shown in the text viewer.
#include <vector>

#include "forms/late_bound.hpp"
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/platform.hpp"

namespace kiv {
namespace {

// The temporary folder, asked of the object by name like any host would.
String TempFolder(Cl_KIV& kiv) {
    Variant which(Long{SD_Temp});
    Arguments args;
    args.positional.push_back(&which);
    return ToText(kiv.invoke("GetSysDir", InvokeKind::Method, args));
}

}  // namespace

String Cl_KIV::List2Txt(const Object& Lst, const String& T_File, const String& Titolo, Boolean Apri) {
    FileTable& files = CurrentPlatform().fileTable();
    Long opened = 0;  // the file number this call opened; 0 before it has one
    try {
        // The items are read first: a control that fails leaves the file as it was.
        std::vector<String> items;
        const Long n = ToLong(GetMember(Lst, "ListCount"));
        for (Long i = 0; i < n; ++i) items.push_back(ToText(GetMember(Lst, "List", Variant(i))));
        // 2.
        const String F = T_File.empty() ? TempFolder(*this) + u"List2Txt.txt" : T_File;
        // 3.
        const Long number = files.freeNumber();
        files.open(F, FileMode::Output, number);
        opened = number;
        // 4.
        if (!Titolo.empty()) {
            files.print(number, Titolo);
            files.print(number, u"");
        }
        // 5.
        for (const String& item : items) files.print(number, item);
        // 6.
        opened = 0;
        files.close(number);
        // 7. A quote in the path could end the viewer's argument early.
        if (Apri && F.find(u'"') == String::npos) CurrentPlatform().host().startProgram(u"NOTEPAD.EXE \"" + F + u"\"");
        // 8.
        return F;
    } catch (const std::exception&) {
        // 1.
        if (opened != 0) {
            try {
                files.close(opened);
            } catch (const std::exception&) {
            }
        }
        return u"";
    }
}

void Cl_KIV::Lst2Txt(const Object& Lst, const String& Titolo) { List2Txt(Lst, u"", Titolo, true); }

}  // namespace kiv
