// The host's file statements: numbered files shared with the component
// (the same table its operations use), and whole-file fixtures for tests.
#include "frame/convert.hpp"
#include "frame/platform.hpp"
#include "interpreter.hpp"

namespace kiv::script {
namespace {

Long Number(const Variant& v) {
    if (const Integer* i = v.as<Integer>()) return *i;
    if (const Long* l = v.as<Long>()) return *l;
    return ToLong(v);
}

String Text(const Variant& v) {
    if (const String* s = v.as<String>()) return *s;
    if (v.isNull()) return u"Null";
    return ToText(v);
}

FileMode ModeOf(const std::string& name) {
    if (name == "input") return FileMode::Input;
    if (name == "output") return FileMode::Output;
    if (name == "append") return FileMode::Append;
    return FileMode::Binary;
}

}  // namespace

void Interpreter::fileStatement(const Statement& s) {
    FileTable& table = CurrentPlatform().fileTable();
    FileSystem& files = CurrentPlatform().files();
    switch (s.kind) {
        case Statement::Kind::FileOpen: {
            const String path = Text(evaluate(*s.operands[0]));
            table.open(path, ModeOf(s.name), Number(evaluate(*s.operands[1])));
            return;
        }
        case Statement::Kind::FileClose:
            if (s.operands.empty()) table.closeAll();
            for (const ExprPtr& n : s.operands) table.close(Number(evaluate(*n)));
            return;
        case Statement::Kind::FilePrint: {
            const Long n = Number(evaluate(*s.operands[0]));
            table.print(n, s.value ? Text(evaluate(*s.value)) : String(), !s.noLineEnd);
            return;
        }
        case Statement::Kind::LineInput:
            assign(*s.target, Variant(table.lineInput(Number(evaluate(*s.operands[0])))), false);
            return;
        case Statement::Kind::FileCommand: {
            const String path = Text(evaluate(*s.operands[0]));
            if (s.name == "kill") files.deleteFile(path);
            else if (s.name == "mkdir") files.makeFolder(path);
            else files.removeFolder(path);
            return;
        }
        case Statement::Kind::WriteText: {
            const String path = Text(evaluate(*s.operands[0]));
            files.replaceFile(path, files.encodeText(Text(evaluate(*s.operands[1]))));
            return;
        }
        default: return;
    }
}

}  // namespace kiv::script
