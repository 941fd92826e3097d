#include "virtual_printer/transport/http_server.h"

#include "virtual_printer/transport/http_connection.h"
#include "virtual_printer/transport/socket_options.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <list>
#include <stdexcept>
#include <utility>

namespace virtual_printer {

using boost::asio::ip::tcp;

namespace {

tcp::endpoint placeOf(boost::asio::io_context& context, const Address& wanted)
{
    const auto found = tcp::resolver(context).resolve(wanted.host, "", tcp::resolver::passive);
    return {found.begin()->endpoint().address(), wanted.port};
}

std::runtime_error cannotListen(const Address& wanted, const boost::system::system_error& failure)
{
    return std::runtime_error("cannot listen on " + toText(wanted) + ": " + failure.code().message() +
                              "; name an address of this machine with a free port, or 0 for any");
}

} // namespace

void requireLoopback(boost::asio::io_context& context, const Address& wanted)
{
    try {
        if (placeOf(context, wanted).address().is_loopback()) {
            return;
        }
    } catch (const boost::system::system_error& failure) {
        throw cannotListen(wanted, failure);
    }
    throw std::runtime_error("others can reach " + toText(wanted) +
                             "; give a secret of their own to those who may with --token, or name 127.0.0.1");
}

class HttpServer::Listener : public std::enable_shared_from_this<Listener>
{
public:
    Listener(boost::asio::io_context& shared, const Address& wanted, Handler answering)
        : context(shared), acceptor(shared), timer(shared), handler(std::move(answering))
    {
        try {
            const tcp::endpoint place = placeOf(shared, wanted);
            acceptor.open(place.protocol());
            shareAddressAfterwards(acceptor);
            acceptor.bind(place);
            acceptor.listen();
        } catch (const boost::system::system_error& failure) {
            throw cannotListen(wanted, failure);
        }
    }

    [[nodiscard]] std::string address() const
    {
        const tcp::endpoint place = acceptor.local_endpoint();
        return toText(Address{place.address().to_string(), place.port()});
    }

    void accept()
    {
        acceptor.async_accept(
            [self = shared_from_this()](const boost::system::error_code& failure, tcp::socket socket) {
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
        timer.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
            if (!failure) {
                self->accept();
            }
        });
    }

    void serve(tcp::socket socket)
    {
        constexpr std::size_t mostTurnedAway = 16; // at once; more of them hear nothing
        const bool isRoom = clients.size() < limits.connections || makeRoom();
        if (clients.size() >= limits.connections + mostTurnedAway) {
            return; // its socket closes here
        }
        clients.push_back(std::make_shared<HttpConnection>(limits, handler));
        const auto client = clients.back();
        auto afterwards = [weak = weak_from_this(), gone = std::weak_ptr(client)] {
            if (const auto self = weak.lock()) {
                self->clients.remove(gone.lock());
            }
        };
        if (isRoom) {
            client->start(std::move(socket), std::move(afterwards));
        } else {
            client->turnAway(std::move(socket), std::move(afterwards));
        }
    }

    // The one that has been silent for longest, and is owed nothing, goes.
    bool makeRoom()
    {
        std::shared_ptr<HttpConnection> silent;
        for (const auto& client : clients) {
            if (client->isIdle() && (!silent || client->lastHeard() < silent->lastHeard())) {
                silent = client;
            }
        }
        if (silent) {
            silent->close();
        }
        return silent != nullptr;
    }

    boost::asio::io_context& context;
    tcp::acceptor acceptor;
    boost::asio::steady_timer timer;
    Handler handler;
    Limits limits;
    std::list<std::shared_ptr<HttpConnection>> clients;
    bool isLooking = false;
};

HttpServer::HttpServer(boost::asio::io_context& context, const Address& wanted, Handler handler)
    : listener(std::make_shared<Listener>(context, wanted, std::move(handler)))
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
