// The steps of a connection that are to be taken later, each at its time. A fault that goes takes its own
// along and lets those come that it has only put off.
#pragma once

#include "virtual_printer/faults/steps.h"

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace virtual_printer {

class PutOffSteps : public std::enable_shared_from_this<PutOffSteps>
{
public:
    using Taker = std::function<void(const Step&)>;

    // `printer` says which one it is, as a reset makes it another; `perform` takes a step, `lose` hears of
    // one that is never taken.
    PutOffSteps(boost::asio::any_io_executor timers, std::function<std::uint64_t()> printer, Taker perform,
                Taker lose)
        : executor(std::move(timers)), presentPrinter(std::move(printer)), take(std::move(perform)),
          drop(std::move(lose))
    {
    }

    void add(Step step);
    void endFault(std::uint64_t number);
    // All of them, but for those that stay.
    void forget(const std::function<bool(const Step&)>& stays);

private:
    struct Later
    {
        Step step;
        std::uint64_t printer;
        boost::asio::steady_timer timer;
    };

    void await(std::uint64_t place);
    void performNow(std::uint64_t place);
    void hurry(std::uint64_t place, std::uint64_t fault);
    void lose(std::uint64_t place);

    boost::asio::any_io_executor executor;
    std::function<std::uint64_t()> presentPrinter;
    Taker take;
    Taker drop;
    std::map<std::uint64_t, Later> pending; // in the order of the steps
    std::uint64_t following = 1;
};

} // namespace virtual_printer
