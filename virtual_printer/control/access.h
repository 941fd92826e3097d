// Who may use the control interface. A browser on the same machine may be made to send requests by any page
// that it shows: such a page names itself in Origin, and one whose name was made to lead here (DNS rebinding)
// in Host.
#pragma once

#include "virtual_printer/control/message.h"

#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

class Access
{
public:
    static constexpr std::size_t shortestToken = 16;

    // Without a token only requests to a name of this machine itself are answered: localhost or a loopback
    // address.
    explicit Access(std::string wanted) : token(std::move(wanted)) {}

    // The answer to a request that may not pass.
    [[nodiscard]] std::optional<HttpAnswer> refuse(const HttpRequest& request) const;

    // The token as a cookie that a page of ours can have, with the port of this host in its name; a wrong one
    // is refused.
    [[nodiscard]] HttpAnswer logIn(const std::string& offered, std::string_view host) const;

private:
    [[nodiscard]] bool isToken(const std::string& offered) const;

    std::string token;
};

} // namespace virtual_printer
