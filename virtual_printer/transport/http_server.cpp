#include "virtual_printer/transport/http_server.h"

#include "virtual_printer/transport/socket_options.h"

#include <algorithm>
#include <array>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
#include <list>
#include <optional>
#include <stdexcept>

namespace virtual_printer {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::asio::ip::tcp;
using Failure = boost::system::error_code;

HttpRequest plain(http::request<http::string_body>&& request)
{
    const auto header = [&request](auto name) { return std::string(request[name]); };
    HttpRequest told;
    told.method = std::string(request.method_string());
    told.target = std::string(request.target());
    told.host = header(http::field::host);
    told.origin = header(http::field::origin);
    told.authorization = header(http::field::authorization);
    told.cookie = header(http::field::cookie);
    told.lastEventId = header("Last-Event-ID");
    told.body = std::move(request.body());
    return told;
}

// What a client has sent that is no request of ours.
HttpAnswer refusalOf(const Failure& failure, const HttpServer::Limits& limits)
{
    if (failure == http::error::body_limit) {
        return errorAnswer(413, "The body is larger than " + std::to_string(limits.body) +
                                    " bytes; send a smaller one.");
    }
    if (failure == http::error::header_limit || failure == http::error::buffer_overflow) {
        return errorAnswer(431, "The header is larger than " + std::to_string(limits.header) +
                                    " bytes; send a smaller one.");
    }
    return errorAnswer(400,
                       "This is no request that can be read (" + failure.message() + "); send HTTP/1.1.");
}

// One client. It lives as long as one of its operations.
class Client : public std::enable_shared_from_this<Client>
{
public:
    Client(tcp::socket socket, const HttpServer::Limits& bounds, const HttpServer::Handler& answering)
        : stream(std::move(socket)), timer(stream.get_executor()), limits(bounds), handler(answering),
          buffer(bounds.header + bounds.body)
    {
    }

    void start(std::function<void()> afterwards)
    {
        ended = std::move(afterwards);
        answerWithoutDelay(stream.socket());
        read();
    }

    // It has not sent a whole request, and nothing is being answered.
    [[nodiscard]] bool isIdle() const { return isReading; }

    void close()
    {
        Failure ignored;
        timer.cancel();
        stream.socket().close(ignored);
        std::exchange(ended, [] {})();
    }

    void lookAgain()
    {
        if (later) {
            if (auto answer = later->look(false)) {
                finishWait(std::move(*answer));
            }
        } else if (endless && !isWriting) {
            sendMore();
        }
    }

private:
    void read()
    {
        isReading = true;
        parser.emplace();
        parser->header_limit(static_cast<std::uint32_t>(limits.header));
        parser->body_limit(limits.body);
        stream.expires_after(limits.request);
        http::async_read(
            stream, buffer, *parser,
            [self = shared_from_this()](const Failure& failure, std::size_t) { self->take(failure); });
    }

    void take(const Failure& failure)
    {
        isReading = false;
        const bool isOfTheLink = failure && failure.category() == boost::asio::error::get_system_category();
        if (isOfTheLink || failure == http::error::end_of_stream || failure == http::error::partial_message ||
            failure == beast::error::timeout) {
            close();
            return;
        }
        if (failure) {
            isLast = true;
            send(refusalOf(failure, limits));
            return;
        }
        isLast = !parser->get().keep_alive();
        isHead = parser->get().method() == http::verb::head;
        version = parser->get().version();
        Outcome outcome = handler(plain(parser->release()));
        if (auto* answer = std::get_if<HttpAnswer>(&outcome)) {
            send(std::move(*answer));
        } else if (auto* wait = std::get_if<Later>(&outcome)) {
            beginWait(std::move(*wait));
        } else {
            beginStream(std::get<Stream>(std::move(outcome)));
        }
    }

    void send(HttpAnswer answer)
    {
        response = {static_cast<http::status>(answer.status), version};
        response.set(http::field::content_type, answer.contentType);
        response.set(http::field::cache_control, "no-store");
        response.set("X-Content-Type-Options", "nosniff");
        for (const auto& [name, value] : answer.headers) {
            response.set(name, value);
        }
        response.keep_alive(!isLast);
        response.content_length(answer.body.size());
        if (!isHead) {
            response.body() = std::move(answer.body);
        }
        stream.expires_after(limits.answer);
        http::async_write(stream, response, [self = shared_from_this()](const Failure& failure, std::size_t) {
            if (failure) {
                self->close();
            } else if (self->isLast) {
                self->hangUp();
            } else {
                self->read();
            }
        });
    }

    // A socket that is closed over unread bytes takes back what it has sent: they are read before.
    void hangUp()
    {
        Failure ignored;
        stream.socket().shutdown(tcp::socket::shutdown_send, ignored);
        constexpr std::chrono::seconds longest{2};
        stream.expires_after(longest);
        drain();
    }

    void drain()
    {
        stream.async_read_some(boost::asio::buffer(rest),
                               [self = shared_from_this()](const Failure& failure, std::size_t count) {
                                   self->drained += count;
                                   constexpr std::size_t patience = std::size_t{16} * 1024 * 1024;
                                   if (failure || self->drained > patience) {
                                       self->close();
                                   } else {
                                       self->drain();
                                   }
                               });
    }

    void beginWait(Later wait)
    {
        later = std::move(wait);
        stream.expires_never();
        timer.expires_after(later->limit);
        timer.async_wait([self = shared_from_this()](const Failure& failure) {
            if (!failure && self->later) {
                self->finishWait(self->later->look(true).value_or(errorAnswer(500, "The wait has no end.")));
            }
        });
        noticeHangUp();
    }

    void finishWait(HttpAnswer answer)
    {
        later.reset();
        timer.cancel();
        send(std::move(answer));
    }

    // Nobody reads from a client that waits. One that goes away meanwhile is noticed all the same.
    void noticeHangUp()
    {
        stream.socket().async_wait(
            tcp::socket::wait_read, [self = shared_from_this()](const Failure& failure) {
                if (!failure && (self->later || self->endless) && hasHungUp(self->stream.socket())) {
                    self->close();
                }
            });
    }

    void beginStream(Stream begun)
    {
        endless = std::move(begun);
        pending = "HTTP/1.1 200 OK\r\nContent-Type: " + endless->contentType +
                  "\r\nCache-Control: no-store\r\nConnection: close\r\n\r\n";
        noticeHangUp();
        write();
    }

    void sendMore()
    {
        pending = endless->more();
        if (!pending.empty()) {
            write();
        }
    }

    void write()
    {
        isWriting = true;
        timer.cancel();
        stream.expires_after(limits.answer);
        boost::asio::async_write(stream, boost::asio::buffer(pending),
                                 [self = shared_from_this()](const Failure& failure, std::size_t) {
                                     self->isWriting = false;
                                     if (failure) {
                                         self->close();
                                         return;
                                     }
                                     self->stream.expires_never();
                                     self->beat();
                                     self->sendMore();
                                 });
    }

    // A comment now and then: a client whose machine has gone away without a word is noticed by it.
    void beat()
    {
        timer.expires_after(limits.heartbeat);
        timer.async_wait([self = shared_from_this()](const Failure& failure) {
            if (!failure && !self->isWriting) {
                self->pending = ":\n\n";
                self->write();
            }
        });
    }

    beast::tcp_stream stream;
    boost::asio::steady_timer timer;
    const HttpServer::Limits& limits;
    const HttpServer::Handler& handler;
    beast::flat_buffer buffer;
    std::optional<http::request_parser<http::string_body>> parser;
    http::response<http::string_body> response;
    std::optional<Later> later;
    std::optional<Stream> endless;
    std::string pending;
    std::array<char, 4096> rest{};
    std::size_t drained = 0;
    unsigned version = 11;
    bool isReading = false;
    bool isWriting = false;
    bool isLast = false;
    bool isHead = false;
    std::function<void()> ended = [] {};
};

bool isOfThisMachineOnly(const boost::asio::ip::address& address)
{
    return address.is_loopback();
}

} // namespace

class HttpServer::Listener : public std::enable_shared_from_this<Listener>
{
public:
    Listener(boost::asio::io_context& shared, const Address& wanted, bool mayBeReached, Handler answering)
        : context(shared), acceptor(shared), timer(shared), handler(std::move(answering))
    {
        try {
            const auto found = tcp::resolver(shared).resolve(wanted.host, "", tcp::resolver::passive);
            const tcp::endpoint place(found.begin()->endpoint().address(), wanted.port);
            if (!mayBeReached && !isOfThisMachineOnly(place.address())) {
                throw std::runtime_error(
                    "others can reach " + toText(wanted) +
                    "; give a secret of their own to those who may with --token, or name "
                    "127.0.0.1");
            }
            acceptor.open(place.protocol());
            shareAddressAfterwards(acceptor);
            acceptor.bind(place);
            acceptor.listen();
        } catch (const boost::system::system_error& failure) {
            throw std::runtime_error("cannot listen on " + toText(wanted) + ": " + failure.code().message() +
                                     "; name an address of this machine with a free port, or 0 for any");
        }
    }

    [[nodiscard]] std::string address() const
    {
        const tcp::endpoint place = acceptor.local_endpoint();
        return toText(Address{place.address().to_string(), place.port()});
    }

    void accept()
    {
        acceptor.async_accept([self = shared_from_this()](const Failure& failure, tcp::socket socket) {
            if (failure) {
                self->acceptLater();
                return;
            }
            self->serve(std::move(socket));
            self->accept();
        });
    }

    // Those that come together are one.
    void lookAgain()
    {
        if (std::exchange(isLooking, true)) {
            return;
        }
        boost::asio::post(context, [self = shared_from_this()] {
            self->isLooking = false;
            const auto all = self->clients; // one that ends leaves the list
            for (const auto& client : all) {
                client->lookAgain();
            }
        });
    }

private:
    // The system has no room for another connection: it may have some soon.
    void acceptLater()
    {
        constexpr std::chrono::milliseconds pause{100};
        timer.expires_after(pause);
        timer.async_wait([self = shared_from_this()](const Failure& failure) {
            if (!failure) {
                self->accept();
            }
        });
    }

    void serve(tcp::socket socket)
    {
        if (clients.size() >= limits.connections) {
            const auto idle = std::find_if(clients.begin(), clients.end(),
                                           [](const auto& client) { return client->isIdle(); });
            if (idle == clients.end()) {
                return; // its socket closes here
            }
            (*idle)->close(); // the one that has been here longest
        }
        clients.push_back(std::make_shared<Client>(std::move(socket), limits, handler));
        const std::weak_ptr<Client> client = clients.back();
        clients.back()->start([weak = weak_from_this(), client] {
            if (const auto self = weak.lock()) {
                self->clients.remove(client.lock());
            }
        });
    }

    boost::asio::io_context& context;
    tcp::acceptor acceptor;
    boost::asio::steady_timer timer;
    Handler handler;
    Limits limits;
    std::list<std::shared_ptr<Client>> clients;
    bool isLooking = false;
};

HttpServer::HttpServer(boost::asio::io_context& context, const Address& wanted, bool mayBeReached,
                       Handler handler)
    : listener(std::make_shared<Listener>(context, wanted, mayBeReached, std::move(handler)))
{
    listener->accept();
}

std::string HttpServer::address() const
{
    return listener->address();
}

void HttpServer::lookAgain()
{
    listener->lookAgain();
}

} // namespace virtual_printer
