#include "virtual_printer/transport/http_answer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace virtual_printer {
namespace {

// For people who look at the wire; programs go by the number.
std::string_view reasonOf(int status)
{
    using Reason = std::pair<int, std::string_view>;
    constexpr std::array reasons = {Reason{200, "OK"},
                                    Reason{201, "Created"},
                                    Reason{400, "Bad Request"},
                                    Reason{401, "Unauthorized"},
                                    Reason{403, "Forbidden"},
                                    Reason{404, "Not Found"},
                                    Reason{405, "Method Not Allowed"},
                                    Reason{409, "Conflict"},
                                    Reason{410, "Gone"},
                                    Reason{413, "Content Too Large"},
                                    Reason{422, "Unprocessable Content"},
                                    Reason{431, "Request Header Fields Too Large"},
                                    Reason{500, "Internal Server Error"},
                                    Reason{503, "Service Unavailable"}};
    const auto* const found = std::find_if(reasons.begin(), reasons.end(),
                                           [status](const Reason& reason) { return reason.first == status; });
    return found == reasons.end() ? "" : found->second;
}

std::string startOf(int status, const std::string& contentType)
{
    return "HTTP/1.1 " + std::to_string(status) + " " + std::string(reasonOf(status)) +
           "\r\nContent-Type: " + contentType + "\r\nX-Content-Type-Options: nosniff\r\n";
}

constexpr std::string_view notKept = "Cache-Control: no-store\r\n";

std::string_view connectionOf(BehindAnswer behind)
{
    return behind == BehindAnswer::connectionEnds ? "Connection: close\r\n" : "Connection: keep-alive\r\n";
}

} // namespace

std::string headOf(const HttpAnswer& answer, BehindAnswer behind)
{
    std::string head = startOf(answer.status, answer.contentType);
    const bool saysHowLong = std::any_of(answer.headers.begin(), answer.headers.end(),
                                         [](const auto& header) { return header.first == "Cache-Control"; });
    head += saysHowLong ? "" : notKept;
    for (const auto& [name, value] : answer.headers) {
        head.append(name).append(": ").append(value).append("\r\n");
    }
    head += connectionOf(behind);
    return head + "Content-Length: " + std::to_string(answer.body.size()) + "\r\n\r\n";
}

std::string headOf(const Pieces& pieces, BehindAnswer behind)
{
    constexpr int fine = 200;
    return startOf(fine, pieces.contentType).append(notKept).append(connectionOf(behind)) +
           "Transfer-Encoding: chunked\r\n\r\n";
}

std::string chunkOf(const Piece& piece)
{
    constexpr int hexadecimal = 16;
    std::array<char, sizeof(std::size_t) * 2> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), piece.text.size(), hexadecimal);
    // An empty chunk would be the end.
    std::string chunk =
        piece.text.empty() ? "" : std::string(digits.data(), end.ptr) + "\r\n" + piece.text + "\r\n";
    return chunk + (piece.isLast ? "0\r\n\r\n" : "");
}

std::string headOf(const Stream& stream)
{
    constexpr int fine = 200;
    return startOf(fine, stream.contentType).append(notKept) + "Connection: close\r\n\r\n";
}

} // namespace virtual_printer
