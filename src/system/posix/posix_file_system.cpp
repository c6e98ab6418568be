#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

// Nothing yet: the operations that need this seam fill it in.
class PosixFileSystem final : public FileSystem {};

}  // namespace

std::unique_ptr<FileSystem> makePosixFileSystem(const PlatformSettings&) { return std::make_unique<PosixFileSystem>(); }

}  // namespace kiv
