#include "system/numbered_files.hpp"

#include "frame/errors.hpp"
#include "frame/platform.hpp"

namespace kiv {

Integer NumberedFiles::freeNumber() {
    for (int n = kFirst; n <= kLast; ++n)
        if (!slots_[n]) return static_cast<Integer>(n);
    Raise(kTooManyFiles);
}

void NumberedFiles::open(const String& path, FileMode mode, Long number) {
    if (number < kFirst || number > kLast) Raise(kBadFileNameOrNumber);
    if (slots_[number]) Raise(kFileAlreadyOpen);
    FileSystem& files = CurrentPlatform().files();
    const std::filesystem::path native = files.nativePath(path);
    OpenFile f{path, identity(native), mode, {}, 0, 0, nullptr, false};
    // One writer per file; readers may share.
    const bool writes = mode == FileMode::Output || mode == FileMode::Append;
    for (const auto& other : slots_)
        if (other && other->where == f.where &&
            (writes || other->mode == FileMode::Output || other->mode == FileMode::Append))
            Raise(kFileAlreadyOpen);
    if (files.isFolder(path)) Raise(kPathFileAccessError);
    switch (mode) {
        case FileMode::Input: f.bytes = files.readFile(path); break;
        case FileMode::Output:
        case FileMode::Append: f.lengthBefore = touch(native); break;  // its content changes only at close
        case FileMode::Binary: f.binary = openBinary(native); break;
    }
    slots_[number] = std::move(f);
}

void NumberedFiles::close(Long number) {
    OpenFile taken = std::move(entry(number));
    slots_[number].reset();
    finish(taken);
}

void NumberedFiles::closeAll() {
    std::optional<RuntimeError> first;
    for (auto& slot : slots_) {
        if (!slot) continue;
        OpenFile taken = std::move(*slot);
        slot.reset();
        try {
            finish(taken);
        } catch (const RuntimeError& e) {
            if (!first) first = e;
        }
    }
    if (first) throw *first;
}

String NumberedFiles::lineInput(Long number) {
    OpenFile& f = entry(number);
    if (f.mode != FileMode::Input) Raise(kBadFileMode);
    if (f.next >= f.bytes.size()) Raise(kInputPastEndOfFile);
    const std::size_t end = f.bytes.find_first_of("\r\n", f.next);
    const std::size_t stop = end == std::string::npos ? f.bytes.size() : end;
    const String line = CurrentPlatform().files().decodeText(std::string_view(f.bytes).substr(f.next, stop - f.next));
    f.next = stop;
    if (f.next < f.bytes.size() && f.bytes[f.next] == '\r') ++f.next;
    if (f.next < f.bytes.size() && f.bytes[f.next] == '\n' && (f.next == stop || f.next == stop + 1)) ++f.next;
    return line;
}

void NumberedFiles::print(Long number, const String& text, bool lineEnd) {
    OpenFile& f = entry(number);
    if (f.mode != FileMode::Output && f.mode != FileMode::Append) Raise(kBadFileMode);
    f.bytes += CurrentPlatform().files().encodeText(lineEnd ? text + u"\r\n" : text);
}

String NumberedFiles::readByteAt(Long number, Long position) {
    OpenFile& f = entry(number);
    if (f.mode != FileMode::Binary) Raise(kBadFileMode);
    if (position < 1) Raise(kBadRecordNumber);
    char byte = 0;
    f.pastEnd = !f.binary->readAt(static_cast<std::uint64_t>(position) - 1, byte);
    if (f.pastEnd) return String();
    return CurrentPlatform().files().decodeText(std::string_view(&byte, 1));
}

Boolean NumberedFiles::atEnd(Long number) {
    OpenFile& f = entry(number);
    switch (f.mode) {
        case FileMode::Input: return f.next >= f.bytes.size();
        case FileMode::Binary: return f.pastEnd;
        default: return true;
    }
}

Long NumberedFiles::length(Long number) {
    OpenFile& f = entry(number);
    switch (f.mode) {
        case FileMode::Input:
        case FileMode::Output: return CheckedLong(static_cast<std::int64_t>(f.bytes.size()));
        case FileMode::Append: return CheckedLong(f.lengthBefore + static_cast<std::int64_t>(f.bytes.size()));
        case FileMode::Binary: return CheckedLong(f.binary->size());
    }
    return 0;
}

NumberedFiles::OpenFile& NumberedFiles::entry(Long number) {
    if (number < kFirst || number > kLast || !slots_[number]) Raise(kBadFileNameOrNumber);
    return *slots_[number];
}

// Writes what was printed, then lets the file go.
void NumberedFiles::finish(OpenFile& f) {
    f.binary.reset();
    if (f.mode == FileMode::Output) CurrentPlatform().files().replaceFile(f.path, f.bytes);
    if (f.mode == FileMode::Append && !f.bytes.empty()) CurrentPlatform().files().appendFile(f.path, f.bytes);
}

}  // namespace kiv
