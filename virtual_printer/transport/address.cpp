#include "virtual_printer/transport/address.h"

#include <charconv>
#include <stdexcept>

namespace virtual_printer {
namespace {

std::runtime_error noAddress(std::string_view text, std::string_view why)
{
    return std::runtime_error(
        std::string(text)
            .append(" is no address to listen on: ")
            .append(why)
            .append("; write it as 127.0.0.1:9100, or with port 0 for any that is free"));
}

} // namespace

Address parseAddress(std::string_view text)
{
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || colon + 1 == text.size()) {
        throw noAddress(text, "it has no port");
    }
    std::string_view host = text.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) {
        host = host.substr(1, host.size() - 2);
    } else if (host.find(':') != std::string_view::npos) {
        throw noAddress(text, "a host with colons stands in brackets, as [::1]:9100");
    }
    if (host.empty()) {
        throw noAddress(text, "it has no host");
    }
    std::uint16_t port = 0;
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data() + colon + 1, end, port);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        throw noAddress(text, "its port is no number from 0 to 65535");
    }
    return {std::string(host), port};
}

std::string toText(const Address& address)
{
    const bool hasColons = address.host.find(':') != std::string::npos;
    return (hasColons ? "[" + address.host + "]" : address.host) + ":" + std::to_string(address.port);
}

} // namespace virtual_printer
