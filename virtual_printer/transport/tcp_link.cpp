#include "virtual_printer/transport/tcp_link.h"

#include "virtual_printer/transport/socket_options.h"

#include <algorithm>
#include <stdexcept>

namespace virtual_printer {

using boost::asio::ip::tcp;

namespace {

// Its close tells the till that the connection has failed.
void makeEndAnError(tcp::socket& till)
{
    boost::system::error_code ignored;
    till.set_option(boost::asio::socket_base::linger(true, 0), ignored);
}

} // namespace

TcpLink::TcpLink(boost::asio::io_context& context, const Address& wanted, Station& at,
                 const Codes& refusalCodes, SecondTill second)
    : acceptor(context), refusing(context), retrying(context), station(at), codes(refusalCodes),
      policy(second)
{
    try {
        // The first address that the host has.
        const auto found = tcp::resolver(context).resolve(wanted.host, "", tcp::resolver::passive);
        bind(tcp::endpoint(found.begin()->endpoint().address(), wanted.port));
        for (const Armed& one : station.faults.list()) {
            if (one.fault.kind == FaultKind::connectionRefused) {
                refuse({*one.fault.duration, one.number});
            }
        }
        if (refusals.empty()) {
            listen();
        }
    } catch (const boost::system::system_error& failure) {
        throw std::runtime_error("cannot listen on " + toText(wanted) + ": " + failure.code().message() +
                                 "; name an address of this machine with a free port, or 0 for any");
    }
    station.faults.watch([this](const Armed& armed, Faults::Event event) {
        if (event == Faults::Event::disarmed || event == Faults::Event::stopped) {
            endFault(armed);
        } else if (event == Faults::Event::armed && armed.fault.kind == FaultKind::connectionRefused) {
            refuse({*armed.fault.duration, armed.number});
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

void TcpLink::refuse(const RefuseConnections& refusal)
{
    const bool isOpen = refusals.empty();
    refusals[refusal.fault] = std::chrono::steady_clock::now() + refusal.duration;
    if (isOpen) {
        retrying.cancel();
        acceptor.close();
        bind(endpoint); // nobody else's meanwhile
        std::for_each(waiting.begin(), waiting.end(), makeEndAnError);
        waiting.clear();
    }
    awaitTheEndOfRefusals();
}

void TcpLink::awaitTheEndOfRefusals()
{
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(refusals, [now](const auto& one) { return one.second <= now; });
    if (refusals.empty()) {
        refusing.cancel();
        listen();
        return;
    }
    const auto last = std::max_element(refusals.begin(), refusals.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    refusing.expires_at(last->second);
    refusing.async_wait([this](const boost::system::error_code& failure) {
        if (!failure && !refusals.empty()) {
            awaitTheEndOfRefusals();
        }
    });
}

void TcpLink::listen()
{
    acceptor.listen();
    accept();
}

// What it still does ends.
void TcpLink::endFault(const Armed& armed)
{
    if (refusals.erase(armed.number) != 0) {
        awaitTheEndOfRefusals();
    }
    std::erase_if(abandoned, [&armed](const auto& till) { return till->isAbandonedBy(armed.number); });
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
        if (failure == boost::asio::error::operation_aborted) {
            return;
        }
        if (failure) { // no more files can be opened, above all
            acceptLater();
            return;
        }
        accept(); // first: a fault of this till may close the port
        receive(std::move(till));
    });
}

void TcpLink::acceptLater()
{
    constexpr std::chrono::milliseconds aMoment{100};
    retrying.expires_after(aMoment);
    retrying.async_wait([this](const boost::system::error_code& failure) {
        if (!failure) {
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
    actions.makeEndAnError = makeEndAnError;
    actions.refuseConnections = [this](const RefuseConnections& refusal) { refuse(refusal); };
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
