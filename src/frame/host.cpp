#include "frame/host.hpp"

namespace kiv {
namespace {
std::shared_ptr<Host>& Installed() {
    static std::shared_ptr<Host> host;
    return host;
}
}  // namespace

Host& currentHost() {
    std::shared_ptr<Host>& h = Installed();
    if (!h) h = makeSystemHost();
    return *h;
}

void installHost(std::shared_ptr<Host> host) { Installed() = std::move(host); }

}  // namespace kiv
