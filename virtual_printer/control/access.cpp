#include "virtual_printer/control/access.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace virtual_printer {
namespace {

// Where the port begins behind the name, with its colon; the end when there is none.
std::size_t endOfName(std::string_view host)
{
    const std::size_t colon = host.rfind(':');
    const bool isPort = colon != std::string_view::npos && host.find(']', colon) == std::string_view::npos;
    return isPort ? colon : host.size();
}

std::string_view nameIn(std::string_view host)
{
    return host.substr(0, endOfName(host));
}

// As whoever asks has it, also behind a tunnel.
std::uint16_t portIn(std::string_view host)
{
    constexpr std::uint16_t usual = 80;
    const std::string_view digits = host.substr(std::min(endOfName(host) + 1, host.size()));
    std::uint16_t port = 0;
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), port);
    return parsed.ec == std::errc() && parsed.ptr == digits.data() + digits.size() ? port : usual;
}

// A browser has the cookies of a host for all of its ports: those of two programs have two names.
std::string nameOfCookie(std::string_view host)
{
    return "telvofm_token_" + std::to_string(portIn(host));
}

std::string inSmallLetters(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

// 127 and three more numbers: all of these addresses lead nowhere but here.
bool isLoopback(std::string_view address)
{
    constexpr std::string_view network = "127.";
    if (!address.starts_with(network)) {
        return false;
    }
    address.remove_prefix(network.size());
    for (const std::string_view behind : {".", ".", ""}) {
        std::uint8_t number = 0;
        const auto parsed = std::from_chars(address.data(), address.data() + address.size(), number);
        address.remove_prefix(static_cast<std::size_t>(parsed.ptr - address.data()));
        if (parsed.ec != std::errc() || address.substr(0, 1) != behind) {
            return false;
        }
        address.remove_prefix(behind.size());
    }
    return true;
}

bool isOfThisMachine(std::string_view host)
{
    const std::string name = inSmallLetters(std::string(nameIn(host)));
    return name == "localhost" || name == "[::1]" || isLoopback(name);
}

std::string cookieIn(std::string_view header, std::string_view name)
{
    while (!header.empty()) {
        const std::size_t size = std::min(header.find(';'), header.size());
        std::string_view cookie = header.substr(0, size);
        cookie.remove_prefix(std::min(cookie.find_first_not_of(' '), cookie.size()));
        if (cookie.starts_with(name) && cookie.substr(name.size()).starts_with('=')) {
            return std::string(cookie.substr(name.size() + 1));
        }
        header.remove_prefix(std::min(size + 1, header.size()));
    }
    return {};
}

std::string bearerIn(std::string_view header)
{
    constexpr std::string_view scheme = "Bearer ";
    return header.starts_with(scheme) ? std::string(header.substr(scheme.size())) : std::string();
}

} // namespace

std::optional<HttpAnswer> Access::refuse(const HttpRequest& request) const
{
    const bool isOfThisProgram =
        request.origin.empty() || inSmallLetters(request.origin) == inSmallLetters("http://" + request.host);
    if (!isOfThisProgram) {
        return errorAnswer(status::forbidden,
                           "The page " + request.origin +
                               " is not of this program and may not use it; open a page of " + request.host +
                               " itself.");
    }
    if (token.empty()) {
        if (!isOfThisMachine(request.host)) {
            return errorAnswer(status::forbidden,
                               "The host \"" + request.host +
                                   "\" is no name of this machine itself; ask for 127.0.0.1 or localhost, or "
                                   "start the program with --token.");
        }
        return std::nullopt;
    }
    if (request.method == "POST" && request.target == "/session") {
        return std::nullopt; // it brings the token along
    }
    if (isToken(bearerIn(request.authorization)) ||
        isToken(cookieIn(request.cookie, nameOfCookie(request.host)))) {
        return std::nullopt;
    }
    HttpAnswer answer = errorAnswer(
        status::unauthorized, "The token is missing or wrong; send the one that the program was started "
                              "with, as the header Authorization: Bearer TOKEN.");
    answer.headers.emplace_back("WWW-Authenticate", "Bearer");
    return answer;
}

HttpAnswer Access::logIn(const std::string& offered, std::string_view host) const
{
    if (!token.empty() && !isToken(offered)) {
        throw ControlRefusal(status::unauthorized,
                             "The token is wrong; send the one that the program was started with.");
    }
    HttpAnswer answer = jsonAnswer({{"done", true}});
    if (!token.empty()) {
        answer.headers.emplace_back("Set-Cookie",
                                    nameOfCookie(host) + "=" + token + "; Path=/; HttpOnly; SameSite=Strict");
    }
    return answer;
}

// How long it takes tells nothing about where the first difference lies.
bool Access::isToken(const std::string& offered) const
{
    unsigned difference = offered.size() == token.size() ? 0 : 1;
    for (std::size_t at = 0; at < token.size() && at < offered.size(); ++at) {
        difference |= static_cast<unsigned>(static_cast<unsigned char>(offered[at] ^ token[at]));
    }
    return !token.empty() && difference == 0;
}

} // namespace virtual_printer
