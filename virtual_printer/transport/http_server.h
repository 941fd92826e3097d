// HTTP on the printers' own thread, for a handler that knows no socket. What a client may cost is bounded:
// the size of a request, the time that it may take, the number of connections; a client that says nothing
// makes way for one that comes.
#pragma once

#include "virtual_printer/control/http_exchange.h"
#include "virtual_printer/transport/address.h"
#include "virtual_printer/transport/http_limits.h"

#include <boost/asio/io_context.hpp>
#include <functional>
#include <memory>
#include <string>

namespace virtual_printer {

// Throws std::runtime_error with a sentence for the user when others than this machine can reach the address.
void requireLoopback(boost::asio::io_context& context, const Address& wanted);

class HttpServer
{
public:
    using Limits = HttpLimits;
    using Handler = std::function<Outcome(const HttpRequest&)>;

    // Listens from here on, until the context goes. Throws std::runtime_error with a sentence for the user.
    HttpServer(boost::asio::io_context& context, const Address& wanted, Handler handler);

    [[nodiscard]] std::string address() const;
    // Something has changed: waits may be over, streams may have more.
    void lookAgain();

private:
    class Listener;
    std::shared_ptr<Listener> listener;
};

} // namespace virtual_printer
