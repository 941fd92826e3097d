// One till on a byte stream: reads what it sends, takes the steps that the session gives upon it, each at its
// time, and shows what has happened after the till has its answer. Anything that the stream reports ends the
// connection.
#pragma once

#include "virtual_printer/printers/station.h"
#include "virtual_printer/printers/till_session.h"

#include <algorithm>
#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <functional>
#include <map>
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
        session.endFault(number);
        std::vector<std::uint64_t> putOff; // going on with one may end them all
        for (const auto& [place, later] : pending) {
            if (isPutOffBy(later.step, number)) {
                putOff.push_back(place);
            }
        }
        for (const std::uint64_t place : putOff) {
            hurry(place, number);
        }
        if (isAbandonedBy(number)) {
            end = End::none;
            hasFinished = false;
            goOn();
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
                performLater(std::move(step));
            }
        }
    }

    // A step that is put off, of the printer that a reset may have made another.
    struct Later
    {
        Step step;
        std::uint64_t printer;
        boost::asio::steady_timer timer;
    };

    void performLater(Step step)
    {
        boost::asio::steady_timer timer(stream.get_executor(), step.after);
        pending.emplace(followingLater, Later{std::move(step), station.trace.begin(), std::move(timer)});
        await(followingLater++);
    }

    void await(std::uint64_t place)
    {
        pending.at(place).timer.async_wait(
            [self = this->shared_from_this(), place](const boost::system::error_code& failure) {
                if (!failure) {
                    self->performNow(place);
                }
            });
    }

    // Of another printer than the one that it is of, only the lines are still to come back.
    void performNow(std::uint64_t place)
    {
        const auto node = pending.extract(place);
        if (node.empty()) {
            return;
        }
        const Later& later = node.mapped();
        if (later.printer != station.trace.begin() && !std::holds_alternative<SetLines>(later.step.action)) {
            return;
        }
        perform(later.step);
        if (!isWriting) {
            goOn();
        }
    }

    static bool isPutOffBy(const Step& step, std::uint64_t fault)
    {
        return std::any_of(step.putOff.begin(), step.putOff.end(),
                           [fault](const PutOff& one) { return one.fault == fault; });
    }

    // The fault that has put it off has gone: it is due so much earlier, or never.
    void hurry(std::uint64_t place, std::uint64_t fault)
    {
        const auto found = pending.find(place);
        if (found == pending.end()) {
            return;
        }
        Step& step = found->second.step;
        std::chrono::milliseconds earlier{0};
        bool isGone = false;
        for (const PutOff& one : step.putOff) {
            if (one.fault == fault) {
                isGone = isGone || !one.by;
                earlier += one.by.value_or(std::chrono::milliseconds(0));
            }
        }
        std::erase_if(step.putOff, [fault](const PutOff& one) { return one.fault == fault; });
        if (std::holds_alternative<SetLines>(step.action) || (!isGone && step.putOff.empty())) {
            performNow(place);
        } else if (isGone) {
            pending.erase(found);
        } else {
            found->second.timer.expires_at(found->second.timer.expiry() - earlier);
            await(place);
        }
    }

    // Nothing comes any more, and no line stays off.
    void forgetSteps()
    {
        const bool leavesLines = std::any_of(pending.begin(), pending.end(), [](const auto& one) {
            return std::holds_alternative<SetLines>(one.second.step.action);
        });
        pending.clear();
        if (leavesLines) {
            actions.setLines(stream, {});
        }
    }

    void perform(const Step& step)
    {
        const Action& action = step.action;
        if (const auto* send = std::get_if<Send>(&action)) {
            waiting += send->bytes;
            if (send->acknowledges != 0) {
                acknowledged.push_back(send->acknowledges);
            }
        } else if (const auto* lines = std::get_if<SetLines>(&action)) {
            actions.setLines(stream, *lines);
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

    // Sends what waits; when nothing does, shows what has happened, ends as it was told to, or reads on.
    void goOn()
    {
        if (isWriting) {
            return;
        }
        if (!waiting.empty()) {
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
            stream, boost::asio::buffer(sending),
            [self = this->shared_from_this()](const boost::system::error_code& failure, std::size_t) {
                self->isWriting = false;
                if (failure) {
                    self->station.show();
                    self->finish();
                    return;
                }
                for (const std::uint64_t number : std::exchange(self->acknowledged, {})) {
                    self->session.hasAcknowledged(number, std::chrono::steady_clock::now());
                }
                self->goOn();
            });
    }

    void finish()
    {
        hasFinished = true;
        forgetSteps();
        session.hasGone();
        if (end == End::reset) {
            actions.makeEndAnError(stream);
        }
        if (end != End::abandon) {
            close();
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
    std::string waiting;
    std::string sending;
    std::vector<std::uint64_t> acknowledged; // when all that waits has been sent
    std::map<std::uint64_t, Later> pending;  // in the order of the steps
    std::uint64_t followingLater = 1;
    std::uint64_t abandonedBy = 0; // the fault
    std::function<void()> ended = [] {};
};

} // namespace virtual_printer
