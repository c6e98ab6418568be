// The file seams: the file system reached through Windows paths, and the
// host's table of numbered files that the component shares with its host.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "frame/value.hpp"

namespace kiv {

// Files and folders by path (existence, matching, length, creation, deletion,
// whole-file reads and writes), with Windows paths mapped to this platform's.
// Failures raise the host's file errors: 52 bad file name, 53 file not found,
// 75 path/file access error, 76 path not found, 61 disk full.
class FileSystem {
public:
    virtual ~FileSystem() = default;
    // The path of this platform's file system that PATH names: a Windows path
    // mapped through the configured drives, a native path as it stands. Raises
    // 76 (path not found) when its drive has no mapping, 52 for a name no
    // Windows file can have. Nothing else in the component builds file-system
    // paths.
    virtual std::filesystem::path nativePath(const String& path) = 0;
    // Text as the component's text files hold it (code page 1252, or UTF-8
    // as a setting), and back.
    virtual std::string encodeText(const String& text) = 0;
    virtual String decodeText(std::string_view bytes) = 0;

    // The name of the first entry that matches PATTERN ("*" and "?" in its
    // last part, case-blind), "" when none. Hidden entries (a leading ".")
    // and folders count only when asked for.
    virtual String firstMatch(const String& pattern, bool foldersToo = false) = 0;
    virtual bool isFolder(const String& path) = 0;
    virtual Long fileLength(const String& path) = 0;
    // One level: 75 when it exists, 76 when its parent is missing.
    virtual void makeFolder(const String& path) = 0;
    // An empty folder only.
    virtual void removeFolder(const String& path) = 0;
    // A file, or every file that a pattern matches (53 when none).
    virtual void deleteFile(const String& path) = 0;
    virtual std::string readFile(const String& path) = 0;
    // Replaces the file with exactly BYTES, all or nothing: a failure or a
    // crash leaves the old content in place.
    virtual void replaceFile(const String& path, std::string_view bytes) = 0;
    // Adds BYTES at the end (creating the file), all or nothing.
    virtual void appendFile(const String& path, std::string_view bytes) = 0;
};

enum class FileMode { Input, Output, Append, Binary };

// The host's numbered files, 1 to 511: free number, open for input, output,
// append and binary, line input, print, byte reads, length, end of file,
// close one, close all. Errors: 52 a number outside 1..511 or not open,
// 54 a statement the mode does not allow, 55 a number or a file already open,
// 62 input past the end, 53/75/76 from opening.
class FileTable {
public:
    static constexpr int kFirst = 1;
    static constexpr int kLast = 511;

    virtual ~FileTable() = default;
    // The lowest number not in use; 67 (too many files) when all are.
    virtual Integer freeNumber() = 0;
    virtual void open(const String& path, FileMode mode, Long number) = 0;
    virtual void close(Long number) = 0;
    virtual void closeAll() = 0;
    // One line without its end (CR, LF or CR LF).
    virtual String lineInput(Long number) = 0;
    // TEXT, then CR LF unless asked not to.
    virtual void print(Long number, const String& text, bool lineEnd = true) = 0;
    // The byte at 1-based POSITION of a file open for binary access, as a
    // character; "" past the end.
    virtual String readByteAt(Long number, Long position) = 0;
    virtual Boolean atEnd(Long number) = 0;
    virtual Long length(Long number) = 0;
};

}  // namespace kiv
