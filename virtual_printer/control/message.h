// Requests to the control interface and what comes of them, as plain values: everything in this room knows
// them and no socket (transport/http_server.h).
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace virtual_printer {

using Json = nlohmann::ordered_json;

// Those that answers here have besides 200.
namespace status {
constexpr int badRequest = 400;
constexpr int unauthorized = 401;
constexpr int forbidden = 403;
constexpr int notFound = 404;
constexpr int wrongMethod = 405;
constexpr int conflict = 409;
constexpr int gone = 410;
constexpr int internalError = 500;
} // namespace status

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

// An answer without an end. Whoever holds it asks for more after each change, but never before the last piece
// has gone: a slow reader fills no memory. Empty: nothing new yet.
struct Stream
{
    std::string contentType;
    std::function<std::string()> more;
};

using Outcome = std::variant<HttpAnswer, Later, Stream>;

// Why a request cannot be answered as it wishes: the status, and a sentence that says what, why and what to
// do.
class ControlRefusal : public std::runtime_error
{
public:
    ControlRefusal(int code, const std::string& sentence) : runtime_error(sentence), status(code) {}

    int status;
};

// As UTF-8 whatever it holds.
HttpAnswer jsonAnswer(const Json& content, int status = 200);
HttpAnswer errorAnswer(int status, const std::string& sentence);

// A path with its parts and a query with its values, with their percent signs decoded.
struct Target
{
    explicit Target(const std::string& text);

    std::vector<std::string> path;
    std::map<std::string, std::string> query;
};

} // namespace virtual_printer
