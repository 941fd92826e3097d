// A serial line with the till on it, opened anew after each hang-up. While faults want the printer to be
// switched off, it is silent and its lines are off: there is no port that could be closed.
#pragma once

#include "virtual_printer/transport/connection.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <map>

namespace virtual_printer {

template <typename Stream>
class SerialLine : public std::enable_shared_from_this<SerialLine<Stream>>
{
public:
    // What a kind of line does by itself.
    struct Kind
    {
        std::function<Stream()> open;
        std::function<void(Stream&, const SetLines&)> setLines;
        // Tills may come: its lines stand as the faults want them.
        std::function<void()> announce = [] {};
        std::function<void()> hasFailed = [] {}; // without being told to
    };

    SerialLine(boost::asio::io_context& shared, Station& at, const Codes& refusals, Kind own)
        : context(shared), station(at), codes(refusals), kind(std::move(own))
    {
    }

    void begin()
    {
        serve();
        for (const Armed& one : station.faults.list()) {
            take(one, Faults::Event::armed);
        }
        kind.announce();
        station.faults.watch([line = this->shared_from_this()](const Armed& one, Faults::Event event) {
            line->take(one, event);
        });
    }

private:
    void serve()
    {
        LinkActions<Stream> actions;
        actions.setLines = kind.setLines;
        till = std::make_shared<Connection<Stream>>(kind.open(), station, CodePage::cp852, codes,
                                                    std::move(actions));
        till->start([weak = this->weak_from_this()] { // held by the line: both would live for ever
            if (const auto self = weak.lock()) {
                self->goOn();
            }
        });
        const auto now = std::chrono::steady_clock::now();
        for (const auto& [fault, end] : offUntil) {
            if (end > now) {
                till->switchOff(fault, std::chrono::ceil<std::chrono::milliseconds>(end - now));
            }
        }
    }

    void take(const Armed& one, Faults::Event event)
    {
        if (event == Faults::Event::disarmed || event == Faults::Event::stopped) {
            offUntil.erase(one.number);
            till->endFault(one.number);
        } else if (event == Faults::Event::armed && one.fault.kind == FaultKind::connectionRefused) {
            offUntil[one.number] = std::chrono::steady_clock::now() + *one.fault.duration;
            till->switchOff(one.number, *one.fault.duration);
        }
    }

    void goOn()
    {
        if (till->hasFailed()) {
            kind.hasFailed();
        }
        if (!till->isAbandoned()) { // otherwise the line stays, and nobody listens
            boost::asio::post(context, [self = this->shared_from_this()] {
                self->serve();
                self->kind.announce();
            });
        }
    }

    boost::asio::io_context& context;
    Station& station;
    const Codes& codes;
    Kind kind;
    std::shared_ptr<Connection<Stream>> till;
    std::map<std::uint64_t, std::chrono::steady_clock::time_point> offUntil; // by the fault
};

} // namespace virtual_printer
