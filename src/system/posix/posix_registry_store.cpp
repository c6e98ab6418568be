#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "system/posix/posix_platform.hpp"
#include "system/registry/sqlite_registry.hpp"

namespace kiv {
namespace {

// The effective user's login name names the user's own hive.
std::string UserName() {
    if (const passwd* pw = getpwuid(geteuid()); pw != nullptr && pw->pw_name != nullptr) return pw->pw_name;
    if (const char* user = std::getenv("USER"); user != nullptr && *user != '\0') return user;
    return "default";
}

}  // namespace

std::unique_ptr<RegistryStore> MakePosixRegistryStore(const PlatformSettings& settings) {
    return std::make_unique<SqliteRegistry>(settings.registryFolder, UserName());
}

}  // namespace kiv
