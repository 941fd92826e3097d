// A printer in each situation that commands are told apart by, brought there by commands.
#pragma once

#include "tests/unit/printer/deciding_printer.h"

#include <array>
#include <stdexcept>
#include <string_view>

namespace virtual_printer {

struct NamedSituation
{
    Situation situation;
    std::string_view name;
};

inline constexpr std::array situations = {
    NamedSituation{Situation::noDay, "noDay"},     NamedSituation{Situation::idle, "idle"},
    NamedSituation{Situation::open, "open"},       NamedSituation{Situation::paying, "paying"},
    NamedSituation{Situation::overdue, "overdue"}, NamedSituation{Situation::defiscalized, "defiscalized"}};

// One receipt of 10.00 under A stands behind a closure, another one in the day that runs. A receipt that is
// open has one item, "Chlieb" for 10.00 under A, of which 4.00 have been paid in cash while it is being paid.
inline DecidingPrinter printerIn(Situation situation)
{
    DecidingPrinter printer;
    const auto succeed = [](Refusal refusal) {
        if (refusal != Refusal::none) {
            throw std::logic_error("refused on the way into a situation: " +
                                   std::string(textOf(refusal).name));
        }
    };
    const auto sellOne = [&] {
        succeed(printer.begin());
        succeed(printer.sell("Chlieb", "10.00"));
        succeed(printer.pay("1", "10.00", "10.00"));
        succeed(printer.end());
    };
    sellOne();
    succeed(printer.send(Command::printReport, {"Z", "0"}));
    switch (situation) {
    case Situation::noDay:
        return printer;
    case Situation::defiscalized:
        succeed(printer.send(Command::defiscalizationFM, {"9999"}));
        return printer;
    default:
        break;
    }
    succeed(printer.send(Command::sellingDayBegin, {"0"}));
    sellOne();
    switch (situation) {
    case Situation::overdue:
        printer.now += std::chrono::hours(24) + std::chrono::seconds(1);
        break;
    case Situation::paying:
        succeed(printer.begin());
        succeed(printer.sell("Chlieb", "10.00"));
        succeed(printer.pay("1", "10.00", "4.00"));
        break;
    case Situation::open:
        succeed(printer.begin());
        succeed(printer.sell("Chlieb", "10.00"));
        break;
    default:
        break;
    }
    return printer;
}

} // namespace virtual_printer
