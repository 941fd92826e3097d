// The only file that includes the library for HTTP, of which it takes the parser alone: everything else of it
// costs a multiple of this file's time to compile.
#include "virtual_printer/transport/http_request_reader.h"

#include <array>
#include <boost/beast/http/basic_parser.hpp>
#include <utility>

namespace virtual_printer {

namespace http = boost::beast::http;
using Failure = boost::beast::error_code;
using View = boost::beast::string_view;

constexpr int firstWithPieces = 11; // HTTP/1.1

// It calls these functions with what it finds.
class HttpRequestReader::Parser : public http::basic_parser<true>
{
public:
    explicit Parser(const HttpLimits& limits)
    {
        header_limit(static_cast<std::uint32_t>(limits.header));
        body_limit(limits.body);
        eager(true);
    }

    HttpRequest request{};
    bool waitsForLeave = false;
    bool knowsPieces = false;

private:
    void on_request_impl(http::verb /*method*/, View method, View target, int version,
                         Failure& /*failure*/) override
    {
        request.method = std::string(method);
        request.target = std::string(target);
        knowsPieces = version >= firstWithPieces;
    }

    // Of a header that comes twice the first counts; with two hosts it is no request at all.
    void on_field_impl(http::field field, View name, View value, Failure& failure) override
    {
        if (field == http::field::host && !request.host.empty()) {
            failure = http::error::bad_field;
        }
        waitsForLeave =
            waitsForLeave || (field == http::field::expect && boost::beast::iequals(value, "100-continue"));
        const std::array<std::pair<http::field, std::string*>, 4> known = {
            {{http::field::host, &request.host},
             {http::field::origin, &request.origin},
             {http::field::authorization, &request.authorization},
             {http::field::cookie, &request.cookie}}};
        for (const auto& [which, text] : known) {
            if (field == which && text->empty()) {
                *text = std::string(value);
            }
        }
        if (boost::beast::iequals(name, "Last-Event-ID") && request.lastEventId.empty()) {
            request.lastEventId = std::string(value);
        }
    }

    std::size_t on_body_impl(View piece, Failure& /*failure*/) override
    {
        request.body.append(piece.data(), piece.size());
        return piece.size();
    }

    std::size_t on_chunk_body_impl(std::uint64_t /*remaining*/, View piece, Failure& failure) override
    {
        return on_body_impl(piece, failure);
    }

    void on_response_impl(int /*status*/, View /*reason*/, int /*version*/, Failure& /*failure*/) override {}
    void on_header_impl(Failure& /*failure*/) override {}
    void on_body_init_impl(const boost::optional<std::uint64_t>& /*length*/, Failure& /*failure*/) override {}
    void on_chunk_header_impl(std::uint64_t /*size*/, View /*extensions*/, Failure& /*failure*/) override {}
    void on_finish_impl(Failure& /*failure*/) override {}
};

HttpRequestReader::HttpRequestReader(const HttpLimits& bounds)
    : limits(bounds), parser(std::make_unique<Parser>(bounds))
{
}

HttpRequestReader::~HttpRequestReader() = default;

HttpRequestReader::Unreadable HttpRequestReader::tooLargeHeader() const
{
    return {431,
            "The header is larger than " + std::to_string(limits.header) + " bytes; send a smaller one."};
}

HttpRequestReader::Next HttpRequestReader::next()
{
    Failure failure;
    if (!waiting.empty()) {
        waiting.erase(0, parser->put({waiting.data(), waiting.size()}, failure));
    }
    if (failure == http::error::body_limit) {
        return Unreadable{413, "The body is larger than " + std::to_string(limits.body) +
                                   " bytes; send a smaller one."};
    }
    if (failure == http::error::header_limit) {
        return tooLargeHeader();
    }
    if (failure && failure != http::error::need_more) {
        return Unreadable{400,
                          "This is no request that can be read (" + failure.message() + "); send HTTP/1.1."};
    }
    if (!parser->is_done()) {
        // What it does not take is a header, also one between the pieces of a body, which it does not bound.
        if (waiting.size() > limits.header) {
            return tooLargeHeader();
        }
        const bool waitsForLeave =
            parser->is_header_done() && waiting.empty() && parser->request.body.empty();
        return NothingYet{waitsForLeave && std::exchange(parser->waitsForLeave, false)};
    }
    Whole whole{std::move(parser->request), parser->knowsPieces, !parser->keep_alive()};
    parser = std::make_unique<Parser>(limits);
    return whole;
}

} // namespace virtual_printer
