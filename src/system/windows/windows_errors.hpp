// The host's file error for a Win32 error code, as the runtime of a VB host
// reports it.
#pragma once

#include <windows.h>

#include "frame/errors.hpp"

namespace kiv {

inline int FileErrorOf(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND: return kFileNotFound;
        case ERROR_PATH_NOT_FOUND: case ERROR_INVALID_DRIVE: case ERROR_BAD_NETPATH: case ERROR_BAD_NET_NAME:
            return kPathNotFound;
        case ERROR_INVALID_NAME: case ERROR_FILENAME_EXCED_RANGE: case ERROR_BAD_PATHNAME: return kBadFileNameOrNumber;
        case ERROR_DISK_FULL: case ERROR_HANDLE_DISK_FULL: return kDiskFull;
        case ERROR_TOO_MANY_OPEN_FILES: return kTooManyFiles;
        case ERROR_FILE_EXISTS: case ERROR_ALREADY_EXISTS: return kPathFileAccessError;
        case ERROR_CRC: case ERROR_READ_FAULT: case ERROR_WRITE_FAULT: case ERROR_GEN_FAILURE: return kDeviceIOError;
        default: return kPathFileAccessError;  // access denied, sharing violation, locked, ...
    }
}

[[noreturn]] inline void RaiseFileError(DWORD error) { raise(FileErrorOf(error)); }
[[noreturn]] inline void RaiseLastFileError() { RaiseFileError(GetLastError()); }

}  // namespace kiv
