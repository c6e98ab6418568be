#include "system/windows/windows_platform.hpp"

namespace kiv {
namespace {

// Seams with no operations yet: each gets its Win32 implementation (advapi32,
// the private-profile functions, user32) in its own file when its operations
// land. The host's numbered files of a VB host are not reachable from a DLL.
class NoFileTable final : public FileTable {};
class NoProfileFiles final : public ProfileFiles {};
class NoRegistryStore final : public RegistryStore {};
class NoWindowSystem final : public WindowSystem {};

}  // namespace

WindowsPlatform::WindowsPlatform(PlatformSettings settings)
    : settings_(std::move(settings)),
      host_(makeWindowsHost(settings_)),
      files_(makeWindowsFileSystem(settings_)),
      fileTable_(std::make_unique<NoFileTable>()),
      profiles_(std::make_unique<NoProfileFiles>()),
      registry_(std::make_unique<NoRegistryStore>()),
      windows_(std::make_unique<NoWindowSystem>()),
      machine_(makeWindowsMachine(settings_)) {}

std::shared_ptr<Platform> makeSystemPlatform(PlatformSettings settings) {
    return std::make_shared<WindowsPlatform>(std::move(settings));
}

}  // namespace kiv
