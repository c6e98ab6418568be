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
class FileSystem {
public:
    virtual ~FileSystem() = default;
    // The path of this platform's file system that PATH names: a Windows path
    // mapped through the configured drives, a native path as it stands. Raises
    // 76 (path not found) when its drive has no mapping. Nothing else in the
    // component builds file-system paths.
    virtual std::filesystem::path nativePath(const String& path) = 0;
    // Text as the component's text files hold it (code page 1252, or UTF-8
    // as a setting), and back.
    virtual std::string encodeText(const String& text) = 0;
    virtual String decodeText(std::string_view bytes) = 0;
};

// The host's numbered files, 1 to 511: free number, open for input, output,
// append and binary, line input, print, byte reads, length, end of file,
// close one, close all.
class FileTable {
public:
    virtual ~FileTable() = default;
};

}  // namespace kiv
