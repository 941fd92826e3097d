// One client of the HTTP server: reads its requests, one after the other, and sends what comes of each, now,
// later or without an end.
#pragma once

#include "virtual_printer/control/http_exchange.h"
#include "virtual_printer/transport/bounded_socket.h"
#include "virtual_printer/transport/http_answer.h"
#include "virtual_printer/transport/http_request_reader.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <functional>
#include <memory>
#include <optional>

namespace virtual_printer {

class HttpConnection : public std::enable_shared_from_this<HttpConnection>
{
public:
    using Handler = std::function<Outcome(const HttpRequest&)>;

    HttpConnection(const HttpLimits& bounds, const Handler& answering) : limits(bounds), handler(answering) {}

    // `afterwards` is called once, when the client has gone; the connection is to be kept until then.
    void start(boost::asio::ip::tcp::socket open, std::function<void()> afterwards);
    // There is no room for it: it is told so, and that is all.
    void turnAway(boost::asio::ip::tcp::socket open, std::function<void()> afterwards);
    // It has not sent a whole request, and nothing is being answered.
    [[nodiscard]] bool isIdle() const { return isIdling; }
    [[nodiscard]] std::chrono::steady_clock::time_point lastHeard() const { return heard; }
    void close();
    // Something has changed: a wait may be over, a stream may have more.
    void lookAgain();

private:
    void take(boost::asio::ip::tcp::socket open, std::function<void()> afterwards);
    void beginRequest();
    void goOn();
    void begin(Outcome outcome);
    void send(const HttpAnswer& answer);
    void read();
    void beginWait(Later wait);
    void lookAtWait(bool isOver);
    void finishWait(const HttpAnswer& answer);
    void hasAnswered();
    [[nodiscard]] BehindAnswer behind() const;
    void beginPieces(Pieces begun);
    void sendNextPiece(const std::string& before);
    void beginStream(Stream begun);
    void sendMore();
    void sendPiece(std::string piece);
    void noticeHangUp();
    void remindAfter(std::chrono::milliseconds duration);
    void remind();

    const HttpLimits& limits;
    const Handler& handler;
    HttpRequestReader reader{limits};
    std::shared_ptr<BoundedSocket> socket;
    std::optional<boost::asio::steady_timer> reminder; // the end of a wait, or a stream's next heartbeat
    std::optional<Later> later;
    std::optional<Pieces> pieces;
    std::optional<Stream> stream;
    std::chrono::steady_clock::time_point heard = std::chrono::steady_clock::now();
    bool isIdling = false;
    bool isHead = false; // its answer has no body
    bool takesPieces = false;
    bool isLast = false; // nothing is read behind this answer
};

} // namespace virtual_printer
