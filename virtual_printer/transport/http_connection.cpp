#include "virtual_printer/transport/http_connection.h"

#include "virtual_printer/control/message.h"

#include <utility>

namespace virtual_printer {
namespace {

HttpAnswer joined(const Pieces& pieces)
{
    HttpAnswer answer{.status = 200, .body = {}, .contentType = pieces.contentType};
    for (bool isMore = true; isMore;) {
        const Piece piece = pieces.next();
        answer.body += piece.text;
        isMore = !piece.isLast;
    }
    return answer;
}

} // namespace

void HttpConnection::start(boost::asio::ip::tcp::socket open, std::function<void()> afterwards)
{
    take(std::move(open), std::move(afterwards));
    beginRequest();
}

void HttpConnection::turnAway(boost::asio::ip::tcp::socket open, std::function<void()> afterwards)
{
    constexpr int unavailable = 503;
    take(std::move(open), std::move(afterwards));
    isLast = true;
    send(errorAnswer(unavailable, "All " + std::to_string(limits.connections) +
                                      " connections wait for something or follow a trace; end one of them."));
}

void HttpConnection::take(boost::asio::ip::tcp::socket open, std::function<void()> afterwards)
{
    reminder.emplace(open.get_executor());
    socket = std::make_shared<BoundedSocket>(std::move(open), [this, afterwards = std::move(afterwards)] {
        reminder->cancel();
        later.reset();
        stream.reset();
        pieces.reset();
        afterwards();
    });
}

void HttpConnection::close()
{
    const auto self = shared_from_this(); // whoever kept it lets it go
    socket->close();
}

void HttpConnection::lookAgain()
{
    if (later) {
        lookAtWait(false);
    } else if (stream && !socket->isWriting()) {
        sendMore();
    }
}

void HttpConnection::beginRequest()
{
    isIdling = true;
    socket->limit(limits.request);
    goOn();
}

// Answers the request that is whole by now; without one it reads on.
void HttpConnection::goOn()
{
    HttpRequestReader::Next next = reader.next();
    if (const auto* nothing = std::get_if<HttpRequestReader::NothingYet>(&next)) {
        if (nothing->waitsForLeave) {
            socket->write("HTTP/1.1 100 Continue\r\n\r\n", limits.request, [self = shared_from_this()] {
                self->socket->limit(self->limits.request);
                self->read();
            });
        } else {
            read();
        }
        return;
    }
    isIdling = false;
    if (const auto* unreadable = std::get_if<HttpRequestReader::Unreadable>(&next)) {
        isLast = true;
        send(errorAnswer(unreadable->status, unreadable->sentence));
        return;
    }
    const auto& [request, knowsPieces, endsConnection] = std::get<HttpRequestReader::Whole>(next);
    takesPieces = knowsPieces;
    isLast = endsConnection;
    isHead = request.method == "HEAD";
    begin(handler(request));
}

void HttpConnection::read()
{
    socket->read([self = shared_from_this()](std::string_view bytes) {
        self->heard = std::chrono::steady_clock::now();
        self->reader.take(bytes);
        self->goOn();
    });
}

void HttpConnection::begin(Outcome outcome)
{
    if (const auto* answer = std::get_if<HttpAnswer>(&outcome)) {
        send(*answer);
    } else if (auto* wait = std::get_if<Later>(&outcome)) {
        beginWait(std::move(*wait));
    } else if (auto* inPieces = std::get_if<Pieces>(&outcome)) {
        beginPieces(std::move(*inPieces));
    } else {
        beginStream(std::get<Stream>(std::move(outcome)));
    }
}

void HttpConnection::send(const HttpAnswer& answer)
{
    socket->write(headOf(answer, behind()) + (isHead ? "" : answer.body), limits.answer,
                  [self = shared_from_this()] { self->hasAnswered(); });
}

BehindAnswer HttpConnection::behind() const
{
    return isLast ? BehindAnswer::connectionEnds : BehindAnswer::connectionStays;
}

void HttpConnection::hasAnswered()
{
    if (isLast) {
        socket->hangUp();
    } else {
        beginRequest();
    }
}

void HttpConnection::beginPieces(Pieces begun)
{
    if (!takesPieces) {
        send(joined(begun));
        return;
    }
    pieces = std::move(begun);
    sendNextPiece(headOf(*pieces, behind()));
}

// `before` goes with it.
void HttpConnection::sendNextPiece(const std::string& before)
{
    Piece piece;
    try {
        piece = pieces->next();
    } catch (const std::exception&) {
        close(); // without the last chunk: the client sees that there is more
        return;
    }
    socket->write(before + chunkOf(piece), limits.answer, [self = shared_from_this(), isEnd = piece.isLast] {
        if (isEnd) {
            self->pieces.reset();
            self->hasAnswered();
        } else {
            self->sendNextPiece("");
        }
    });
}

void HttpConnection::beginWait(Later wait)
{
    later = std::move(wait);
    socket->limitNothing();
    remindAfter(later->limit);
    noticeHangUp();
}

// What goes wrong with one client's wait is that client's affair.
void HttpConnection::lookAtWait(bool isOver)
{
    try {
        if (const auto answer = later->look(isOver)) {
            finishWait(*answer);
        }
    } catch (const std::exception& failure) {
        finishWait(errorAnswer(status::internalError, std::string(failure.what())));
    }
}

void HttpConnection::finishWait(const HttpAnswer& answer)
{
    later.reset();
    reminder->cancel();
    send(answer);
}

void HttpConnection::beginStream(Stream begun)
{
    stream = std::move(begun);
    noticeHangUp();
    sendPiece(headOf(*stream));
}

void HttpConnection::sendMore()
{
    try {
        if (std::string piece = stream->more(); !piece.empty()) {
            sendPiece(std::move(piece));
        }
    } catch (const std::exception&) {
        close(); // its status has been sent
    }
}

void HttpConnection::sendPiece(std::string piece)
{
    socket->write(std::move(piece), limits.answer, [self = shared_from_this()] {
        self->remindAfter(self->limits.heartbeat);
        self->sendMore();
    });
}

// Nobody reads from a client that waits. One that goes away meanwhile is noticed all the same.
void HttpConnection::noticeHangUp()
{
    socket->noticeHangUp([self = shared_from_this()] {
        if (self->later || self->stream) {
            self->close();
        }
    });
}

void HttpConnection::remindAfter(std::chrono::milliseconds duration)
{
    reminder->expires_after(duration);
    reminder->async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        // One that is set anew may have its last call on the way.
        if (!failure && self->reminder->expiry() <= std::chrono::steady_clock::now()) {
            self->remind();
        }
    });
}

// The time of a wait is over; or a stream gets a comment now and then, by which a client whose machine has
// gone away without a word is noticed.
void HttpConnection::remind()
{
    if (later) {
        lookAtWait(true);
    } else if (stream && !socket->isWriting()) {
        sendPiece(":\n\n");
    }
}

} // namespace virtual_printer
