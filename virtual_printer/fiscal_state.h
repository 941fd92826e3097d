// The receipt that is being made: closed, open, or being paid. It prints as it goes, keeps money in whole
// cents, and refuses what does not fit its state.
#pragma once

#include "virtual_printer/device_language.h"
#include "virtual_printer/paper.h"
#include "virtual_printer/refusal.h"
#include "virtual_printer/storage.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace virtual_printer {

class FiscalState
{
public:
    // `clock` tells the date and time as they are printed.
    FiscalState(Paper& printedOn, Storage& keptIn, std::function<std::string()> clock)
        : paper(printedOn), storage(keptIn), now(std::move(clock))
    {
    }

    Refusal beginDay();
    // The day's sums go to the fiscal memory as a closure, whose text the journal keeps.
    Refusal closeDay();
    Refusal beginReceipt();
    // `sign` is 1 for goods that leave the shop and -1 for those that come back.
    Refusal addItem(const Request& request, int sign);
    Refusal voidItem(const Request& request);
    // Discounts are taken as sums that lower the total.
    Refusal addDiscount(const std::string& description, const std::string& value);
    Refusal printSubtotal();
    Refusal pay(const Request& request);
    Refusal endReceipt();
    Refusal cancelReceipt(const std::string& description);
    Refusal drawer(const Request& request);
    // A line of the receipt that carries further data. `identifier` is what receipts can be looked up by.
    Refusal note(const std::string& text, std::string Document::*identifier = nullptr);
    Refusal printCopyOfLast();

    [[nodiscard]] bool isReceiptOpen() const { return state != State::closed; }

private:
    enum class State
    {
        closed,
        open,
        paying
    };

    struct Item
    {
        std::string name;
        std::int64_t total;
        char vat;
    };

    [[nodiscard]] Refusal requireOpen() const;
    void printTotal(std::string_view label);
    void forgetReceipt();

    Paper& paper;
    Storage& storage;
    std::function<std::string()> now;
    State state = State::closed;
    bool dayIsOpen = false;
    Document document; // the receipt as the journal will have it
    std::vector<Item> items;
    std::map<char, std::int64_t> totals;
    std::int64_t total = 0;
    std::int64_t paid = 0;
};

} // namespace virtual_printer
