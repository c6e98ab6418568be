// The host's numbered files, the same on every platform but for the few
// calls that touch the system: what is printed to a file is kept until the
// file is closed and then written in one piece through the file system seam
// (a new content replaces the old whole, an append is taken back if it
// cannot be completed), so a failure or a crash never leaves a torn file.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

#include "frame/file_system.hpp"

namespace kiv {

// A file open for binary access, on the platform's own terms.
class BinaryFile {
public:
    virtual ~BinaryFile() = default;
    // The byte at a 0-based offset; false past the end.
    virtual bool readAt(std::uint64_t offset, char& byte) = 0;
    virtual std::int64_t size() = 0;
};

class NumberedFiles : public FileTable {
public:
    Integer freeNumber() override;
    void open(const String& path, FileMode mode, Long number) override;
    void close(Long number) override;
    void closeAll() override;
    String lineInput(Long number) override;
    void print(Long number, const String& text, bool lineEnd) override;
    String readByteAt(Long number, Long position) override;
    Boolean atEnd(Long number) override;
    Long length(Long number) override;

protected:
    // What tells one file from another: two paths of the same file give
    // the same text.
    virtual String identity(const std::filesystem::path& native) = 0;
    // Makes the file if it is missing (the host sees it from the open on)
    // and answers its length.
    virtual std::int64_t touch(const std::filesystem::path& native) = 0;
    // Read and write where allowed, else read only.
    virtual std::unique_ptr<BinaryFile> openBinary(const std::filesystem::path& native) = 0;

private:
    struct OpenFile {
        String path;        // as the host wrote it, for the writes at close
        String where;       // identity(), to tell one file from another
        FileMode mode;
        std::string bytes;  // Input: the whole file; Output, Append: what was printed
        std::size_t next = 0;  // Input: the next byte to read
        std::int64_t lengthBefore = 0;  // Append: the file's length when opened
        std::unique_ptr<BinaryFile> binary;
        bool pastEnd = false;  // Binary: a read went beyond the last byte
    };
    OpenFile& entry(Long number);
    static void finish(OpenFile& f);

    std::array<std::optional<OpenFile>, kLast + 1> slots_;
};

}  // namespace kiv
