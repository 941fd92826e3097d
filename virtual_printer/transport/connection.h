// One till on a byte stream: reads what it sends, takes the steps that the session gives upon it, each at its
// time, and shows what has happened after the till has its answer. Anything that the stream reports ends the
// connection.
#pragma once

#include "virtual_printer/printers/station.h"
#include "virtual_printer/printers/till_session.h"
#include "virtual_printer/transport/held_lines.h"
#include "virtual_printer/transport/put_off_steps.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

// What a kind of link does beyond bytes.
template <typename Stream>
struct LinkActions
{
    std::function<void(Stream&)> prepareToRead = [](Stream&) {};
    std::function<void(Stream&)> makeEndAnError = [](Stream&) {};
    std::function<void(const RefuseConnections&)> refuseConnections = [](const RefuseConnections&) {};
    std::function<void(Stream&, const SetLines&)> setLines = [](Stream&, const SetLines&) {};
};

template <typename Stream>
class Connection : public std::enable_shared_from_this<Connection<Stream>>
{
public:
    Connection(Stream open, Station& at, CodePage texts, const Codes& codes, LinkActions<Stream> beyondBytes)
        : stream(std::move(open)), station(at), session(at, texts, codes), actions(std::move(beyondBytes))
    {
    }

    // `afterwards` is called once, when the till has gone.
    void start(std::function<void()> afterwards)
    {
        const auto self = this->shared_from_this(); // a fault may end it at once
        ended = std::move(afterwards);
        putOff = std::make_shared<PutOffSteps>(
            stream.get_executor(), [this] { return station.trace.begin(); },
            [weak = this->weak_from_this()](const Step& step) {
                if (const auto connection = weak.lock()) {
                    connection->performLate(step);
                }
            },
            [weak = this->weak_from_this()](const Step& step) {
                if (const auto connection = weak.lock()) {
                    connection->session.hasLost(step);
                }
            });
        take(session.greet());
        goOn();
    }

    Stream& link() { return stream; }
    // The till believes that it is connected, and nobody listens.
    [[nodiscard]] bool isAbandoned() const { return end == End::abandon; }
    [[nodiscard]] bool isAbandonedBy(std::uint64_t fault) const
    {
        return isAbandoned() && abandonedBy == fault;
    }

    // It has ended without being told to.
    [[nodiscard]] bool hasFailed() const { return hasFinished && end == End::none; }

    // A fault is taken away: what it has not done yet does not come any more, what it has only put off comes,
    // and who was left alone is heard again.
    void endFault(std::uint64_t number)
    {
        const auto self = this->shared_from_this(); // what comes now may end it
        session.endFault(number);
        putOff->endFault(number);
        if (isAbandonedBy(number)) {
            end = End::none;
            hasFinished = false;
            goOn();
        }
    }

    // As a printer on a serial line that somebody has switched off, whether or not anybody listens there.
    void switchOff(std::uint64_t fault, std::chrono::milliseconds duration)
    {
        if (!hasFinished || isAbandoned()) {
            take(session.switchOff(fault, duration, std::chrono::steady_clock::now()));
        }
    }

    // Ends it from this side.
    void close()
    {
        boost::system::error_code ignored;
        stream.close(ignored);
    }

private:
    enum class End
    {
        none,
        close,
        reset,
        abandon
    };

    struct Outgoing
    {
        std::string bytes;
        std::vector<std::uint64_t> acknowledges; // the exchanges whose answers are whole with them
    };

    void read()
    {
        if (end != End::none || isReading) {
            return;
        }
        isReading = true;
        actions.prepareToRead(stream);
        stream.async_read_some(boost::asio::buffer(received), [self = this->shared_from_this()](
                                                                  const boost::system::error_code& failure,
                                                                  std::size_t count) {
            self->isReading = false;
            if (failure == boost::asio::error::operation_aborted && self->stream.is_open()) {
                self->goOn(); // who was left alone meanwhile may be heard again already
                return;
            }
            if (self->isAbandoned()) {
                return; // what comes is heard by nobody
            }
            if (failure) {
                self->finish();
                return;
            }
            self->take(self->session.take({self->received.data(), count}, std::chrono::steady_clock::now()));
            self->goOn();
        });
    }

    void take(Steps steps)
    {
        for (Step& step : steps) {
            if (step.after.count() == 0) {
                perform(step);
            } else {
                putOff->add(std::move(step));
            }
        }
    }

    // The printer has no power: it says nothing any more.
    void forgetSteps()
    {
        actions.setLines(stream, lines.forget());
        putOff->forget([this](const Step& step) { return lines.isAwaited(step); });
    }

    // The end of the line: nothing comes any more, and no line stays off.
    void letGo()
    {
        putOff->forget([](const Step&) { return false; });
        if (std::exchange(lines, {}).areHeld()) {
            actions.setLines(stream, {});
        }
    }

    void perform(const Step& step)
    {
        const Action& action = step.action;
        if (const auto* send = std::get_if<Send>(&action)) {
            waiting.bytes += send->bytes;
            if (send->acknowledges != 0) {
                waiting.acknowledges.push_back(send->acknowledges);
            }
        } else if (const auto* wanted = std::get_if<SetLines>(&action)) {
            actions.setLines(stream, lines.take(*wanted));
        } else if (const auto* refusal = std::get_if<RefuseConnections>(&action)) {
            actions.refuseConnections(*refusal);
        } else if (std::holds_alternative<ForgetSteps>(action)) {
            forgetSteps();
        } else {
            const auto* abandonment = std::get_if<AbandonLink>(&action);
            abandonedBy = abandonment == nullptr ? 0 : abandonment->fault;
            end = std::holds_alternative<ResetLink>(action) ? End::reset
                  : abandonment != nullptr                  ? End::abandon
                                                            : End::close;
        }
        if (step.ends != 0) {
            session.hasEnded(step.ends);
        }
    }

    void performLate(const Step& step)
    {
        perform(step);
        if (!isWriting) {
            goOn();
        }
    }

    // Sends what waits; when nothing does, shows what has happened, ends as it was told to, or reads on.
    void goOn()
    {
        if (isWriting) {
            return;
        }
        if (!waiting.bytes.empty()) {
            write();
            return;
        }
        station.show();
        if (hasFinished) {
            return;
        }
        if (end != End::none) {
            finish();
        } else {
            read();
        }
    }

    void write()
    {
        isWriting = true;
        sending = std::exchange(waiting, {});
        boost::asio::async_write(
            stream, boost::asio::buffer(sending.bytes),
            [self = this->shared_from_this()](const boost::system::error_code& failure, std::size_t) {
                self->isWriting = false;
                if (failure) {
                    self->station.show();
                    self->finish();
                    return;
                }
                for (const std::uint64_t number : self->sending.acknowledges) {
                    self->session.hasAcknowledged(number, std::chrono::steady_clock::now());
                }
                self->goOn();
            });
    }

    void finish()
    {
        hasFinished = true;
        letGo();
        session.hasGone();
        if (end == End::reset) {
            actions.makeEndAnError(stream);
        }
        if (end != End::abandon) {
            close();
        } else {
            boost::system::error_code ignored;
            stream.cancel(ignored); // a read that began before
        }
        // Who is left alone may be heard again, and then go.
        const auto afterwards = end == End::abandon ? ended : std::exchange(ended, [] {});
        afterwards();
    }

    Stream stream;
    Station& station;
    TillSession session;
    LinkActions<Stream> actions;
    std::array<char, 4096> received{};
    bool isReading = false;
    bool isWriting = false;
    bool hasFinished = false;
    End end = End::none;
    Outgoing waiting;
    Outgoing sending;
    std::shared_ptr<PutOffSteps> putOff;
    HeldLines lines;
    std::uint64_t abandonedBy = 0; // the fault
    std::function<void()> ended = [] {};
};

} // namespace virtual_printer
