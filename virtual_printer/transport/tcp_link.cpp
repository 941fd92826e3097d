#include "virtual_printer/transport/tcp_link.h"

#include "virtual_printer/transport/socket_options.h"

#include <stdexcept>

namespace virtual_printer {

using boost::asio::ip::tcp;

TcpLink::TcpLink(boost::asio::io_context& context, const Address& wanted, Station& at, const Codes& refusals,
                 SecondTill second)
    : acceptor(context), station(at), codes(refusals), policy(second)
{
    try {
        // The first address that the host has.
        const auto found = tcp::resolver(context).resolve(wanted.host, "", tcp::resolver::passive);
        const tcp::endpoint place(found.begin()->endpoint().address(), wanted.port);
        acceptor.open(place.protocol());
        shareAddressAfterwards(acceptor);
        acceptor.bind(place);
        acceptor.listen();
    } catch (const boost::system::system_error& failure) {
        throw std::runtime_error("cannot listen on " + toText(wanted) + ": " + failure.code().message() +
                                 "; name an address of this machine with a free port, or 0 for any");
    }
    accept();
}

std::string TcpLink::address() const
{
    const tcp::endpoint place = acceptor.local_endpoint();
    return toText(Address{place.address().to_string(), place.port()});
}

void TcpLink::accept()
{
    acceptor.async_accept([this](const boost::system::error_code& failure, tcp::socket till) {
        if (!failure) {
            receive(std::move(till));
        }
        accept();
    });
}

void TcpLink::receive(tcp::socket till)
{
    if (!present) {
        serve(std::move(till));
        return;
    }
    if (hasHungUp(present->link())) {
        waiting.push_back(std::move(till)); // for the moment that its end takes to come
        return;
    }
    switch (policy) {
    case SecondTill::busy:
        return; // its socket closes here
    case SecondTill::takeover:
        waiting.clear(); // also what another one has not yet taken over
        waiting.push_back(std::move(till));
        present->close();
        return;
    case SecondTill::wait:
        constexpr std::size_t longestQueue = 100;
        if (waiting.size() < longestQueue) {
            waiting.push_back(std::move(till));
        }
        return;
    }
}

void TcpLink::serve(tcp::socket till)
{
    answerWithoutDelay(till);
    noticeDeadTills(till);
    present =
        std::make_shared<Till>(std::move(till), station, CodePage::windows1250, codes, acknowledgeAtOnce);
    present->start([this] {
        present.reset();
        if (!waiting.empty()) {
            tcp::socket next = std::move(waiting.front());
            waiting.pop_front();
            serve(std::move(next));
        }
    });
}

} // namespace virtual_printer
