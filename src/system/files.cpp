// Files through the host's file system and its numbered files: existence,
// characters read from a file the caller opened, joining two text files,
// folders, and the desktop's file browser.
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"

namespace kiv {

namespace {

Long WholeOf(const Variant& v) {
    if (const Integer* i = v.as<Integer>()) return *i;
    if (const Long* l = v.as<Long>()) return *l;
    return ToLong(v);
}

// St + Nc with the runtime's typing: Integer while both are and it fits,
// else Long; a Double stays a Double.
Variant Advanced(const Variant& start, Long by) {
    if (const Double* d = start.as<Double>()) return Variant(*d + by);
    const std::int64_t sum = std::int64_t{WholeOf(start)} + by;
    if (start.as<Integer>() != nullptr && sum >= -32768 && sum <= 32767) return Variant(static_cast<Integer>(sum));
    return Variant(CheckedLong(sum));
}

}  // namespace

Boolean Cl_KIV::FilExist(const String& F, Boolean AncheVuoto) {
    if (F.empty()) return false;
    FileSystem& files = CurrentPlatform().files();
    if (files.firstMatch(F, false).empty()) return false;
    if (AncheVuoto && files.fileLength(F) == 0) return false;
    return true;
}

String Cl_KIV::GetStrFile(const Variant& Nf, Ref<Variant> St, const Variant& Nc, Boolean Rev) {
    String X;
    const Long count = WholeOf(Nc);
    if (count < 1) return X;
    const Long number = WholeOf(Nf);
    const Long start = WholeOf(*St);
    FileTable& table = CurrentPlatform().fileTable();
    for (Long i = 0; i < count; ++i) {
        const String c = table.readByteAt(number, CheckedLong(std::int64_t{start} + i));
        X = Rev ? c + X : X + c;
    }
    *St = Advanced(*St, count);
    return X;
}

void Cl_KIV::AppeFile(const String& F1, const String& F2, const String& F_Out, Boolean B_Appe) {
    Host& host = CurrentPlatform().host();
    for (const String* input : {&F1, &F2}) {
        if (!FilExist(*input)) {
            host.messageBox(MsgIcon::Critical, u"AppeFile", u"NON ESISTE IL FILE '" + *input + u"'");
            return;
        }
    }
    if (!B_Appe && FilExist(F_Out)) CurrentPlatform().files().deleteFile(F_Out);

    // What is printed reaches F_Out at the close, in one piece.
    FileTable& table = CurrentPlatform().fileTable();
    const Integer out = table.freeNumber();
    table.open(F_Out, FileMode::Append, out);
    for (const String* input : {&F1, &F2}) {
        const Integer in = table.freeNumber();
        table.open(*input, FileMode::Input, in);
        while (!table.atEnd(in)) table.print(out, table.lineInput(in));
        table.close(in);
    }
    // Every file of the table, the caller's own too.
    table.closeAll();
}

Boolean Cl_KIV::CreateFolder(const String& Pth) {
    try {
        FileSystem& files = CurrentPlatform().files();
        if (!files.isFolder(Pth)) files.makeFolder(Pth);
    } catch (const RuntimeError&) {
        // The result does not tell failure.
    }
    return true;
}

Boolean Cl_KIV::Is_PathWritable(const String& FullPth) {
    try {
        const String T = FixBarPth(FullPth) + u"§§TestPth§§.txt";
        FileTable& table = CurrentPlatform().fileTable();
        const Integer number = table.freeNumber();
        table.open(T, FileMode::Output, number);
        table.close(number);
        if (FilExist(T)) CurrentPlatform().files().deleteFile(T);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

void Cl_KIV::EsploraCartella(const String& Pth, Boolean Radice) {
    const String Opt = Radice ? u"/e, /root, " : u"";
    CurrentPlatform().host().startProgram(u"EXPLORER " + Opt + u" " + Pth);
}

}  // namespace kiv
