// What the answers of this room are made of: JSON, statuses, sentences; and the parts of what was asked for.
#pragma once

#include "virtual_printer/control/http_exchange.h"

#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
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
    std::string repeated; // the name of a value that is there twice
};

} // namespace virtual_printer
