// The platform on POSIX systems: the system clock, Windows paths mapped to
// folders, our own INI engine, the registry kept in SQLite, no window system.
// A host such as the kiv driver derives from it to show messages its own way.
#pragma once

#include <memory>

#include "frame/platform.hpp"

namespace kiv {

// Each seam's POSIX implementation, in the file of its subject.
std::unique_ptr<Host> MakePosixHost(const PlatformSettings& settings);
std::unique_ptr<FileSystem> MakePosixFileSystem(const PlatformSettings& settings);
std::unique_ptr<FileTable> MakePosixFileTable(const PlatformSettings& settings);
std::unique_ptr<ProfileFiles> MakePosixProfileFiles(const PlatformSettings& settings);
std::unique_ptr<RegistryStore> MakePosixRegistryStore(const PlatformSettings& settings);
std::unique_ptr<WindowSystem> MakePosixWindowSystem(const PlatformSettings& settings);
std::unique_ptr<Machine> MakePosixMachine(const PlatformSettings& settings);

class PosixPlatform : public SystemPlatform {
public:
    explicit PosixPlatform(PlatformSettings settings);
};

}  // namespace kiv
