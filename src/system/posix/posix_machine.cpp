#include <sys/utsname.h>

#include <charconv>
#include <optional>
#include <string>

#include "frame/errors.hpp"
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
            if (ec != std::errc() || p != end) raise(kTypeMismatch);
            return bits;
        }
        const std::string machine = uname().machine;
        return machine.find("64") != std::string::npos || machine == "s390x" ? Integer{64} : Integer{32};
    }

private:
    std::optional<std::string> pin(const std::string& name) const {
        const auto it = pins_.find(name);
        return it == pins_.end() ? std::nullopt : std::optional<std::string>(it->second);
    }
    static utsname uname() {
        utsname u{};
        if (::uname(&u) != 0) raise(kInvalidCall);
        return u;
    }

    std::map<std::string, std::string> pins_;
};

}  // namespace

std::unique_ptr<Machine> makePosixMachine(const PlatformSettings& settings) {
    return std::make_unique<PosixMachine>(settings);
}

}  // namespace kiv
