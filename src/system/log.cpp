// The diagnostic log: one line appended to a text file, optionally stamped
// with the date and time. A log must never disturb the host, so every
// failure is swallowed and the line is lost.
#include "frame/cl_kiv.hpp"
#include "frame/convert.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"

namespace kiv {

void Cl_KIV::Dbg_Log(const Variant& Txt_Log, Boolean B_First, const String& T_File, Boolean HasFullPath) {
    try {
        // Choosing the file.
        const String E = SostChar(CurrentPlatform().host().applicationName(), u" .", u"__");
        String file;
        if (HasFullPath) {
            if (T_File.empty()) return;
            file = T_File;
        } else if (T_File.empty()) {
            file = u"c:\\" + E + u"_Dbg.LOG";
        } else {
            file = u"c:\\" + SostChar(T_File, u" .", u"__") + u"_Dbg.LOG";
        }

        // Building the line.
        String line;
        bool stamp = false;
        if (!Txt_Log.isNull()) {
            const String text = ToText(Txt_Log);
            if (text == Space(static_cast<Long>(text.size()))) {
                line = text;
            } else {
                line = RTrim(text);
                if (!line.empty() && line[0] == u'§') {
                    stamp = true;
                    line.erase(0, 1);
                }
                if (line.empty()) return;
            }
        }

        // Writing: the whole line at once, so that a failure leaves no half line.
        if (stamp) {
            Variant now = Variant(CurrentPlatform().host().now());
            line = u"** " + MettiASin(now, 20) + u": " + line;
        }
        FileSystem& files = CurrentPlatform().files();
        const std::string bytes = files.encodeText(line + u"\r\n");
        if (B_First) files.replaceFile(file, bytes);
        else files.appendFile(file, bytes);
    } catch (...) {
        // Nothing a log does may reach the host.
    }
}

}  // namespace kiv
