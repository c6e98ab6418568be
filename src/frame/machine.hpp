// Facts of the machine: system version and bitness, computer and user names,
// network addresses and connection, system folders, file associations,
// visual theme. A fact pinned in the platform settings (kiv --pin) is
// answered exactly as pinned.
#pragma once

#include <optional>
#include <vector>

#include "frame/value.hpp"

namespace kiv {

struct SystemVersion {
    String name;         // "Windows 10 10.0.19045", "Linux 6.1.0-18-amd64"
    String servicePack;  // the platform's service-pack buffer as read, NULs included; "" when none
};

// How the machine reaches its Internet provider, as the platform reports it.
struct ConnectionState {
    bool connected = false;
    unsigned long flags = 0;  // OFFLINE &H20, MODEM &H1, LAN &H2, PROXY &H4
};

class Machine {
public:
    virtual ~Machine() = default;
    // Each raises a run-time error when the fact cannot be read.
    virtual SystemVersion systemVersion() = 0;
    virtual Integer systemBits() = 0;  // 32 or 64
    // The short network name of the computer (pin pcname).
    virtual String computerName() = 0;
    // The login name of the user running the process, "" when unknown (pin username).
    virtual String userName() = 0;
    // The Windows path of a system folder (En_SysDir 0..9), "" for another
    // number. USER is the user's name for the platforms that build the
    // per-user folders from it.
    virtual String systemFolder(Long which, const String& user) = 0;
    // The IPv4 addresses in dotted decimal of the interfaces that are up, the
    // first of each, in the platform's order, loopback (127/8) and link-local
    // (169.254/16) left out. A pinned ip is the one answer ("" pins none).
    virtual std::vector<String> localAddresses() = 0;
    // Nothing on platforms that have no such report; callers then judge by
    // the local addresses.
    virtual std::optional<ConnectionState> connection() = 0;
    // The full path of the program that opens files of EXTENSION (".txt"), or "".
    virtual String programFor(const String& extension) = 0;
    virtual bool themeActive() = 0;
};

// Whether an IPv4 address A.B.x.x reaches beyond this machine's own links.
constexpr bool IsRoutableLocal(unsigned a, unsigned b) { return a != 127 && !(a == 169 && b == 254); }

}  // namespace kiv
