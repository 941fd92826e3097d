// A printer's address on the network. It serves one till at a time, as the device does; what becomes of a
// second one is the user's choice.
#pragma once

#include "virtual_printer/printers/codes.h"
#include "virtual_printer/printers/station.h"
#include "virtual_printer/transport/address.h"
#include "virtual_printer/transport/connection.h"
#include "virtual_printer/transport/second_till.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>

namespace virtual_printer {

class TcpLink
{
public:
    // Listens from here on. Throws std::runtime_error with a sentence for the user.
    TcpLink(boost::asio::io_context& context, const Address& wanted, Station& at, const Codes& refusalCodes,
            SecondTill second);

    // As a till takes it; with the port that was found when 0 was asked for.
    [[nodiscard]] std::string address() const;

private:
    using Till = Connection<boost::asio::ip::tcp::socket>;

    void accept();
    // A moment later: what has failed would fail again at once.
    void acceptLater();
    void receive(boost::asio::ip::tcp::socket till);
    void serve(boost::asio::ip::tcp::socket till);
    void bind(const boost::asio::ip::tcp::endpoint& place);
    // As a printer that is switched off: its port is closed meanwhile, and who waits is sent away.
    void refuse(const RefuseConnections& refusal);
    // The port is open again when no fault wants it to be closed.
    void awaitTheEndOfRefusals();
    void listen();
    void endFault(const Armed& armed);
    void goWithPresent();

    boost::asio::ip::tcp::acceptor acceptor;
    boost::asio::ip::tcp::endpoint endpoint; // also while nobody listens
    boost::asio::steady_timer refusing;
    std::map<std::uint64_t, std::chrono::steady_clock::time_point> refusals; // the end, by the fault
    boost::asio::steady_timer retrying;
    Station& station;
    const Codes& codes;
    SecondTill policy;
    std::shared_ptr<Till> present;
    std::deque<boost::asio::ip::tcp::socket> waiting;
    std::deque<std::shared_ptr<Till>> abandoned; // kept open: their tills are to notice nothing
};

} // namespace virtual_printer
