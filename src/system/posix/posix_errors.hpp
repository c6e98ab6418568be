// The host's file error for a POSIX errno, so that a failure reads on Linux
// as it would on Windows.
#pragma once

#include <cerrno>

#include "frame/errors.hpp"

namespace kiv {

inline int FileErrorOf(int errnum) {
    switch (errnum) {
        case ENOENT: return kFileNotFound;
        case ENOTDIR: return kPathNotFound;
        case ENAMETOOLONG: case EILSEQ: return kBadFileNameOrNumber;
        case ENOSPC: case EFBIG:
#ifdef EDQUOT
        case EDQUOT:
#endif
            return kDiskFull;
        case EMFILE: case ENFILE: return kTooManyFiles;
        case EIO: return kDeviceIOError;
        default: return kPathFileAccessError;  // EACCES, EPERM, EROFS, EISDIR, EBUSY, ...
    }
}

[[noreturn]] inline void RaiseFileError(int errnum) { Raise(FileErrorOf(errnum)); }

}  // namespace kiv
