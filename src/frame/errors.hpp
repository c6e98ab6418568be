// Run-time errors of the component: one exception type with the error number
// and description a host sees, plus checked 16- and 32-bit arithmetic.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace kiv {

enum ErrorNumber : int {
    kInvalidCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kOutOfStringSpace = 14,
    kBadFileNameOrNumber = 52,
    kFileNotFound = 53,
    kBadFileMode = 54,
    kFileAlreadyOpen = 55,
    kDeviceIOError = 57,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kInputPastEndOfFile = 62,
    kBadRecordNumber = 63,
    kTooManyFiles = 67,
    kPermissionDenied = 70,
    kPathFileAccessError = 75,
    kPathNotFound = 76,
    kObjectNotSet = 91,
    kInvalidUseOfNull = 94,
    kObjectRequired = 424,
    kCannotCreateObject = 429,
    kNotSupported = 438,
    kNamedArgumentNotFound = 448,
    kArgumentNotOptional = 449,
    kWrongArgumentCount = 450,
    kDuplicateKey = 457,
};

// The standard description of a run-time error number.
std::string DescribeError(int number);

class RuntimeError : public std::exception {
public:
    explicit RuntimeError(int number);
    RuntimeError(int number, std::string description);
    int number() const { return number_; }
    const std::string& description() const { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }
    // The 0-based position of the parameter whose argument could not be bound
    // or converted, -1 when the error is not about one argument. An
    // automation server reports it to its caller; the number and text stay.
    int argument() const { return argument_; }
    RuntimeError& atArgument(int position) {
        argument_ = position;
        return *this;
    }

private:
    int number_;
    std::string description_;
    int argument_ = -1;
};

[[noreturn]] void Raise(int number);

// Narrowing with the runtime's overflow check instead of wrapping.
std::int16_t CheckedInteger(std::int64_t value);
std::int32_t CheckedLong(std::int64_t value);

}  // namespace kiv
