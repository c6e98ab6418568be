// The file seams: the file system reached through Windows paths, and the
// host's table of numbered files that the component shares with its host.
#pragma once

#include "frame/value.hpp"

namespace kiv {

// Files and folders by path (existence, matching, length, creation, deletion,
// whole-file reads and writes), with Windows paths mapped to this platform's.
class FileSystem {
public:
    virtual ~FileSystem() = default;
};

// The host's numbered files, 1 to 511: free number, open for input, output,
// append and binary, line input, print, byte reads, length, end of file,
// close one, close all.
class FileTable {
public:
    virtual ~FileTable() = default;
};

}  // namespace kiv
