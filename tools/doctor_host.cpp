// The doctor's look at a printer on the network.
#include "tools/doctor.h"
#include "tools/host_probe.h"

#include <algorithm>

namespace telvofm::tools {
namespace {

struct HostAndPort
{
    std::string host;
    std::string port;
};

// As the library reads it: at the first colon, with a port of its own when there is none.
HostAndPort split(const std::string& address)
{
    const std::size_t colon = address.find(':');
    const std::string port = colon == std::string::npos ? "" : address.substr(colon + 1);
    return {address.substr(0, colon), port.empty() ? "64000" : port};
}

// Of several addresses of a host the best, as the library takes the first that connects.
HostState bestOf(const std::vector<SocketAddress>& addresses)
{
    HostState best = HostState::unreachable;
    for (const SocketAddress& address : addresses) {
        best = std::min(best, probeHost(address));
        if (best < HostState::refused) {
            break;
        }
    }
    return best;
}

Finding findingOn(HostState state, const std::string& name, const std::string& port)
{
    switch (state) {
    case HostState::answers:
        return {"host", Health::good, name + " answers as a printer does.", {}};
    case HostState::silent:
        return {"host", Health::unknown,
                name + " takes the connection and does not answer the printer's probe.",
                "It may be a printer that knows no probe, or another device: check the address."};
    case HostState::closes:
        return {"host", Health::bad, name + " closes the connection at once.",
                "Another till holds the printer, as a rule: end it, or wait until it closes."};
    case HostState::refused:
        return {"host", Health::bad, "Nothing listens at " + name + ".",
                "Check that the printer is on and takes connections on port " + port + "."};
    case HostState::unreachable:
        break;
    }
    return {"host", Health::bad, name + " cannot be reached.",
            "Check the address, the cable, the firewall, and that the printer is on."};
}

} // namespace

Findings examineHost(const std::string& address)
{
    const auto [host, port] = split(address);
    if (!Socket::startUp()) {
        return {{"host", Health::bad, "This system's network cannot be used.", "Start the computer again."}};
    }
    Findings findings;
    const auto addresses = Socket::resolve(host, port);
    if (addresses && !addresses->empty()) {
        const std::string name = host + ":" + port;
        findings.push_back(findingOn(bestOf(*addresses), name, port));
    } else {
        findings.push_back({"host", Health::bad, "The name " + host + " with port " + port + " is not known.",
                            "Check how it is written, or give the printer's address in numbers."});
    }
    Socket::cleanUp();
    return findings;
}

} // namespace telvofm::tools
