// The way of any bytes through the control interface up to its routes: requests out of bytes, who may ask,
// path and query, the body. In whatever pieces the bytes come, the requests in them are the same ones.
#include "virtual_printer/control/access.h"
#include "virtual_printer/control/body.h"
#include "virtual_printer/transport/http_answer.h"
#include "virtual_printer/transport/http_request_reader.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace virtual_printer;

void require(bool isSound)
{
    if (!isSound) {
        std::abort();
    }
}

// Small ones, so that short inputs reach them.
HttpLimits smallLimits()
{
    HttpLimits limits;
    limits.header = 256;
    limits.body = 512;
    return limits;
}

const HttpLimits limits = smallLimits();
const Access withoutToken{""};
const Access withToken{"0123456789abcdef"};

void answer(const HttpRequest& request)
{
    require(!request.method.empty() && !request.target.empty());
    require(request.body.size() <= limits.body);
    static_cast<void>(withoutToken.refuse(request));
    if (const auto refusal = withToken.refuse(request)) {
        require(refusal->status == 401 || refusal->status == 403);
        require(headOf(*refusal, BehindAnswer::connectionEnds).ends_with("\r\n\r\n"));
    } else {
        require(request.target == "/session" ||
                (request.authorization + request.cookie).find("0123456789abcdef") != std::string::npos);
    }
    const Target target(request.target);
    require(std::none_of(target.path.begin(), target.path.end(),
                         [](const std::string& part) { return part.empty(); }));
    try {
        const Json body = parseBody(request.body);
        require(body.is_object());
        const Members members(body, "");
        members.allow({"name", "limit", "now", "amount"});
        static_cast<void>(members.text("name", "", 0, 100));
        static_cast<void>(members.whole("limit", 1, 0, 1000));
        static_cast<void>(members.moment("now"));
        static_cast<void>(members.decimal("amount", 0, 2));
    } catch (const ControlRefusal& refusal) {
        require(std::string_view(refusal.what()).ends_with('.'));
    }
}

std::vector<HttpRequest> requestsIn(std::string_view bytes, std::size_t piece)
{
    HttpRequestReader reader(limits);
    std::vector<HttpRequest> requests;
    while (!bytes.empty()) {
        const std::string_view now = bytes.substr(0, piece);
        bytes.remove_prefix(now.size());
        reader.take(now);
        auto next = reader.next();
        for (; std::holds_alternative<HttpRequestReader::Whole>(next); next = reader.next()) {
            requests.push_back(std::get<HttpRequestReader::Whole>(next).request);
        }
        if (std::holds_alternative<HttpRequestReader::Unreadable>(next)) {
            break;
        }
    }
    return requests;
}

bool isSame(const HttpRequest& a, const HttpRequest& b)
{
    return a.method == b.method && a.target == b.target && a.body == b.body && a.host == b.host &&
           a.origin == b.origin && a.authorization == b.authorization && a.cookie == b.cookie &&
           a.lastEventId == b.lastEventId;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto atOnce = requestsIn(bytes, size);
    const auto inPieces = requestsIn(bytes, 7);
    // What is too large shows sooner or later, with the pieces.
    const std::size_t common = std::min(atOnce.size(), inPieces.size());
    require(std::equal(atOnce.begin(), atOnce.begin() + static_cast<std::ptrdiff_t>(common), inPieces.begin(),
                       isSame));
    for (const HttpRequest& request : atOnce) {
        answer(request);
    }
    return 0;
}
