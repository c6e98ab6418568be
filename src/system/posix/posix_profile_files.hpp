// INI files on POSIX: our engine over files that are replaced atomically
// under an inter-process lock, so a crash or a second writer never loses or
// tears a setting. Declared here for the tests and benchmarks.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "frame/platform.hpp"
#include "system/ini/ini_engine.hpp"

namespace kiv {

// The whole file; nothing when it cannot be read.
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

// Where a replacement of `path` is written before it is renamed over it. One
// name per file: only the holder of the file's lock writes it, and the next
// writer takes over whatever a killed one left.
std::filesystem::path TemporaryBeside(const std::filesystem::path& path);

// Takes an exclusive lock on `path` (created empty when missing), hands its
// bytes to `edit` and replaces it with the edited text: a temporary file in
// the same folder, flushed to disk when `flush`, renamed over the original,
// the lock held from the read to the rename. False when the file could not
// be written (a missing folder, a read-only file, a refused edit).
bool ReplaceLocked(const std::filesystem::path& path, const std::function<ini::Edit(std::string_view)>& edit,
                   bool flush);

// The seam; `flush` off only for measuring what the flush costs.
std::unique_ptr<ProfileFiles> MakePosixProfileFiles(const PlatformSettings& settings, bool flush);

}  // namespace kiv
