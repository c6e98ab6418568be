// The machine on POSIX: uname, the host name, the password database and the
// interfaces' addresses; the system folders are the Windows ones, under the
// drive mapping.
#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "frame/errors.hpp"
#include "frame/platform.hpp"
#include "frame/strings.hpp"
#include "system/posix/posix_platform.hpp"

namespace kiv {
namespace {

class PosixMachine final : public Machine {
public:
    explicit PosixMachine(const PlatformSettings& settings) : pins_(settings.pins) {}

    SystemVersion systemVersion() override {
        if (const auto pinned = pin("winver")) return {FromUtf8(*pinned), u""};
        return {u"Linux " + FromUtf8(uname().release), u""};
    }

    Integer systemBits() override {
        if (const auto pinned = pin("winbit")) {
            // A pinned bitness must be a whole number.
            Integer bits = 0;
            const char* end = pinned->data() + pinned->size();
            const auto [p, ec] = std::from_chars(pinned->data(), end, bits);
            if (ec != std::errc() || p != end) Raise(kTypeMismatch);
            return bits;
        }
        const std::string machine = uname().machine;
        return machine.find("64") != std::string::npos || machine == "s390x" ? Integer{64} : Integer{32};
    }

    String computerName() override {
        if (const auto pinned = pin("pcname")) return FromUtf8(*pinned);
        std::array<char, 256> name{};
        if (::gethostname(name.data(), name.size() - 1) != 0) Raise(kInvalidCall);
        const std::string host = name.data();
        return FromUtf8(host.substr(0, host.find('.')));
    }

    String userName() override {
        if (const auto pinned = pin("username")) return FromUtf8(*pinned);
        std::vector<char> buffer(16384);
        passwd entry{};
        passwd* found = nullptr;
        if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
            found->pw_name != nullptr && *found->pw_name != '\0')
            return FromUtf8(found->pw_name);
        const char* user = std::getenv("USER");
        return user != nullptr ? FromUtf8(user) : String();
    }

    String systemFolder(Long which, const String& user) override {
        const String home = u"C:\\Users\\" + user + u"\\";
        switch (which) {
            case 0: return u"C:\\Windows\\";
            case 1: return u"C:\\Program Files\\";
            case 2: {
                // Hosts write their scratch files there at once: it must exist.
                const String temp = home + u"AppData\\Local\\Temp\\";
                std::filesystem::create_directories(CurrentPlatform().files().nativePath(temp));
                return temp;
            }
            case 3: return u"C:\\Windows\\System32\\";
            case 4: return home + u"Documents\\";
            case 5: return home + u"Desktop\\";
            case 6: return u"C:\\Windows\\Fonts\\";
            case 7: return u"C:\\Program Files\\Common Files\\";
            case 8: return u"C:\\ProgramData\\Start Menu\\Programs\\Startup\\";
            case 9: return home + u"AppData\\Roaming\\Start Menu\\Programs\\Startup\\";
            default: return String();
        }
    }

    std::vector<String> localAddresses() override {
        if (const auto pinned = pin("ip")) return pinned->empty() ? std::vector<String>{} : std::vector{FromUtf8(*pinned)};
        ifaddrs* list = nullptr;
        if (::getifaddrs(&list) != 0) Raise(kInvalidCall);
        std::vector<String> out;
        std::set<std::string> seen;  // interfaces that gave their address already
        for (const ifaddrs* a = list; a != nullptr; a = a->ifa_next) {
            if (a->ifa_addr == nullptr || a->ifa_addr->sa_family != AF_INET || (a->ifa_flags & IFF_UP) == 0) continue;
            if (!seen.insert(a->ifa_name).second) continue;
            const auto* in = reinterpret_cast<const sockaddr_in*>(a->ifa_addr);
            const auto* b = reinterpret_cast<const unsigned char*>(&in->sin_addr.s_addr);
            if (!IsRoutableLocal(b[0], b[1])) continue;
            out.push_back(FromUtf8(std::to_string(b[0]) + "." + std::to_string(b[1]) + "." + std::to_string(b[2]) +
                                   "." + std::to_string(b[3])));
        }
        ::freeifaddrs(list);
        return out;
    }

    std::optional<ConnectionState> connection() override { return std::nullopt; }
    String programFor(const String&) override { return String(); }
    bool themeActive() override { return false; }

private:
    std::optional<std::string> pin(const std::string& name) const {
        const auto it = pins_.find(name);
        return it == pins_.end() ? std::nullopt : std::optional<std::string>(it->second);
    }
    static utsname uname() {
        utsname u{};
        if (::uname(&u) != 0) Raise(kInvalidCall);
        return u;
    }

    std::map<std::string, std::string> pins_;
};

}  // namespace

std::unique_ptr<Machine> MakePosixMachine(const PlatformSettings& settings) {
    return std::make_unique<PosixMachine>(settings);
}

}  // namespace kiv
