#include "virtual_printer/transport/tcp_link.h"

#include "virtual_printer/transport/socket_options.h"

#include <algorithm>
#include <stdexcept>

namespace virtual_printer {

using boost::asio::ip::tcp;

namespace {

// How long a fault wants connections to be refused, from the start on.
std::chrono::milliseconds refusalOf(const Faults& faults)
{
    std::chrono::milliseconds duration{0};
    for (const Armed& one : faults.list()) {
        if (one.fault.kind == FaultKind::connectionRefused) {
            duration = std::max(duration, *one.fault.duration);
        }
    }
    return duration;
}

} // namespace

TcpLink::TcpLink(boost::asio::io_context& context, const Address& wanted, Station& at, const Codes& refusals,
                 SecondTill second)
    : acceptor(context), refusing(context), station(at), codes(refusals), policy(second)
{
    try {
        // The first address that the host has.
        const auto found = tcp::resolver(context).resolve(wanted.host, "", tcp::resolver::passive);
        bind(tcp::endpoint(found.begin()->endpoint().address(), wanted.port));
        const auto duration = refusalOf(station.faults);
        if (duration.count() > 0) {
            refuseFor(duration);
        } else {
            listen();
        }
    } catch (const boost::system::system_error& failure) {
        throw std::runtime_error("cannot listen on " + toText(wanted) + ": " + failure.code().message() +
                                 "; name an address of this machine with a free port, or 0 for any");
    }
    station.faults.watch([this](const Armed& armed, Faults::Event event) {
        if (event == Faults::Event::disarmed) {
            endFault(armed);
        } else if (armed.fault.kind == FaultKind::connectionRefused) {
            refuseFor(*armed.fault.duration);
        }
    });
}

void TcpLink::bind(const tcp::endpoint& place)
{
    acceptor.open(place.protocol());
    shareAddressAfterwards(acceptor);
    acceptor.bind(place);
    endpoint = acceptor.local_endpoint();
}

void TcpLink::refuseFor(std::chrono::milliseconds duration)
{
    acceptor.close();
    bind(endpoint); // nobody else's meanwhile
    isRefusing = true;
    refusing.expires_after(duration);
    refusing.async_wait([this](const boost::system::error_code& failure) {
        if (!failure && isRefusing && refusing.expiry() <= std::chrono::steady_clock::now()) {
            listen();
        }
    });
}

void TcpLink::listen()
{
    isRefusing = false;
    acceptor.listen();
    accept();
}

// What it still does ends.
void TcpLink::endFault(const Armed& armed)
{
    const FaultKind kind = armed.fault.kind;
    if (isRefusing && (kind == FaultKind::connectionRefused || kind == FaultKind::powerLoss)) {
        refusing.cancel();
        listen();
    }
    if (kind == FaultKind::halfOpen) {
        abandoned.clear();
    }
    if (present) {
        present->endFault(armed.number);
    }
}

std::string TcpLink::address() const
{
    return toText(Address{endpoint.address().to_string(), endpoint.port()});
}

void TcpLink::accept()
{
    acceptor.async_accept([this](const boost::system::error_code& failure, tcp::socket till) {
        if (!failure) {
            receive(std::move(till));
        }
        if (acceptor.is_open() && failure != boost::asio::error::operation_aborted) {
            accept();
        }
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
    LinkActions<tcp::socket> actions;
    actions.prepareToRead = acknowledgeAtOnce;
    actions.makeEndAnError = [](tcp::socket& socket) {
        boost::system::error_code ignored;
        socket.set_option(boost::asio::socket_base::linger(true, 0), ignored);
    };
    actions.refuseConnections = [this](std::chrono::milliseconds duration) { refuseFor(duration); };
    present =
        std::make_shared<Till>(std::move(till), station, CodePage::windows1250, codes, std::move(actions));
    present->start([this] { goWithPresent(); });
}

// The present till has gone, and the next one comes.
void TcpLink::goWithPresent()
{
    constexpr std::size_t mostAbandoned = 100;
    if (present->isAbandoned()) {
        abandoned.push_back(present);
        if (abandoned.size() > mostAbandoned) {
            abandoned.pop_front();
        }
    }
    present.reset();
    if (!waiting.empty()) {
        tcp::socket next = std::move(waiting.front());
        waiting.pop_front();
        serve(std::move(next));
    }
}

} // namespace virtual_printer
