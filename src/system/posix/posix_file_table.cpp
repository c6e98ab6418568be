#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixFileTable final : public FileTable {};

}  // namespace

std::unique_ptr<FileTable> makePosixFileTable(const PlatformSettings&) { return std::make_unique<PosixFileTable>(); }

}  // namespace kiv
