#include "frame/errors.hpp"

#include <limits>

namespace kiv {

std::string DescribeError(int number) {
    switch (number) {
        case kInvalidCall: return "Invalid procedure call or argument";
        case kOverflow: return "Overflow";
        case kOutOfMemory: return "Out of memory";
        case kSubscriptOutOfRange: return "Subscript out of range";
        case kDivisionByZero: return "Division by zero";
        case kTypeMismatch: return "Type mismatch";
        case kOutOfStringSpace: return "Out of string space";
        case kBadFileNameOrNumber: return "Bad file name or number";
        case kFileNotFound: return "File not found";
        case kBadFileMode: return "Bad file mode";
        case kFileAlreadyOpen: return "File already open";
        case kDeviceIOError: return "Device I/O error";
        case kFileAlreadyExists: return "File already exists";
        case kDiskFull: return "Disk full";
        case kInputPastEndOfFile: return "Input past end of file";
        case kBadRecordNumber: return "Bad record number";
        case kTooManyFiles: return "Too many files";
        case kPermissionDenied: return "Permission denied";
        case kPathFileAccessError: return "Path/File access error";
        case kPathNotFound: return "Path not found";
        case kObjectNotSet: return "Object variable or With block variable not set";
        case kInvalidUseOfNull: return "Invalid use of Null";
        case kObjectRequired: return "Object required";
        case kCannotCreateObject: return "ActiveX component can't create object";
        case kNotSupported: return "Object doesn't support this property or method";
        case kNamedArgumentNotFound: return "Named argument not found";
        case kArgumentNotOptional: return "Argument not optional";
        case kWrongArgumentCount: return "Wrong number of arguments or invalid property assignment";
        case kDuplicateKey: return "This key is already associated with an element of this collection";
        default: return "Application-defined or object-defined error";
    }
}

RuntimeError::RuntimeError(int number) : number_(number), description_(DescribeError(number)) {}

RuntimeError::RuntimeError(int number, std::string description)
    : number_(number), description_(std::move(description)) {}

void Raise(int number) { throw RuntimeError(number); }

std::int16_t CheckedInteger(std::int64_t value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
        Raise(kOverflow);
    return static_cast<std::int16_t>(value);
}

std::int32_t CheckedLong(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
        Raise(kOverflow);
    return static_cast<std::int32_t>(value);
}

}  // namespace kiv
