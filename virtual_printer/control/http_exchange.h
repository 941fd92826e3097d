// Requests to the control interface and what comes of them, as plain values: everything in this room knows
// them and no socket, and whoever has the socket (transport/http_server.h) knows nothing else.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace virtual_printer {

struct HttpRequest
{
    std::string method;
    std::string target; // path and query, as they came
    std::string body;
    // The headers that mean something; empty when they are not there.
    std::string host;
    std::string origin;
    std::string authorization;
    std::string cookie;
    std::string lastEventId;
};

struct HttpAnswer
{
    int status = 200;
    std::string body;
    std::string contentType = "application/json";
    std::vector<std::pair<std::string, std::string>> headers{};
};

// There is no answer yet. Whoever holds it looks again after each change, and once more when the time is
// over: then there is one.
struct Later
{
    std::chrono::milliseconds limit{0};
    std::function<std::optional<HttpAnswer>(bool isOver)> look;
};

// An answer that is long to make: it is asked for piece by piece, each when the last one has gone, and
// whoever else wants something is served in between. A piece that cannot be made any more throws; then the
// connection ends before the answer does, and the client sees that.
struct Piece
{
    std::string text;
    bool isLast = false;
};
struct Pieces
{
    std::string contentType;
    std::function<Piece()> next;
};

// An answer without an end. Whoever holds it asks for more after each change, but never before the last piece
// has gone: a slow reader fills no memory. Empty: nothing new yet.
struct Stream
{
    std::string contentType;
    std::function<std::string()> more;
};

using Outcome = std::variant<HttpAnswer, Later, Pieces, Stream>;

} // namespace virtual_printer
