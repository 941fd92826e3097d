// Whole requests out of the bytes that a client sends, in whatever pieces they come. It knows no socket, and
// keeps no more than its limits say.
#pragma once

#include "virtual_printer/control/http_exchange.h"
#include "virtual_printer/transport/http_limits.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace virtual_printer {

class HttpRequestReader
{
public:
    struct NothingYet
    {
        bool waitsForLeave = false; // the client sends its body when it is told to go on; said once
    };
    struct Whole
    {
        HttpRequest request;
        bool takesPieces = false; // its version of HTTP knows them
        bool isLast = false;      // the client wants the connection to end behind the answer
    };
    // It is no request of ours, and what follows is none either.
    struct Unreadable
    {
        int status;
        std::string sentence;
    };
    using Next = std::variant<NothingYet, Whole, Unreadable>;

    explicit HttpRequestReader(const HttpLimits& bounds);
    HttpRequestReader(const HttpRequestReader&) = delete;
    HttpRequestReader& operator=(const HttpRequestReader&) = delete;
    ~HttpRequestReader();

    void take(std::string_view bytes) { waiting += bytes; }
    // More than one request may have come at once: ask until there is nothing.
    Next next();

private:
    class Parser;

    [[nodiscard]] Unreadable tooLargeHeader() const;

    const HttpLimits& limits;
    std::unique_ptr<Parser> parser; // of the request that has begun
    std::string waiting;            // that it has not taken yet
};

} // namespace virtual_printer
