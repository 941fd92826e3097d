// Everything that the printer decides by, as one value. Deciding makes a new one and leaves the old one
// alone; parts that are large are shared between both, and a part that was not touched is the same object:
// by that the memory sees what it has to write.
#pragma once

#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/fiscal/settings.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace virtual_printer {

enum class Life
{
    training, // from the factory until it is fiscalized
    fiscal,
    defiscalized // can only be read
};

std::string nameOf(Life life);

// The sums of a day, of a closure, or of all days.
struct Sums
{
    ByVat byVat;
    ByPayment byPayment;
    int receipts = 0;
    int cancelled = 0; // receipts that were begun and not sold
    Cents discounts = 0;
    Cents returns = 0;
    int drawerMovements = 0;

    [[nodiscard]] Cents turnover() const;
    void add(const Sums& other);
    bool operator==(const Sums&) const = default;
};

// What the day that runs has come to, and what goes on over the days. It is small, and nearly every document
// changes it.
struct Standing
{
    Life life = Life::fiscal;
    std::string dkp; // the registration code
    bool dayIsOpen = false;
    Moment dayBegan{};
    Moment lastDocument{};
    int saleMode = 0;
    Sums day;
    Sums ever;                           // of the days that are closed
    ByPayment drawer;                    // what lies in the drawer, by payment type
    int receipts = 0;                    // the number of the last receipt
    int closures = 0;                    // the number of the last closure
    int documents = 0;                   // in the journal
    std::chrono::seconds clockOffset{0}; // of the printer's clock from the one it was started with

    bool operator==(const Standing&) const = default;
};

// The receipt that is being made.
struct Receipt
{
    Document document;
    bool isBeingPaid = false;
    Cents paid = 0;
    int lastItem = -1; // the line that an item discount is on; -1 for none
    bool printsVatTable = true;

    [[nodiscard]] Cents due() const { return document.total - paid; }
    bool operator==(const Receipt&) const = default;
};

// Not kept: what is so while the printer runs.
struct Hardware
{
    bool paperIsOut = false;
    bool paperIsLow = false;
    bool coverIsOpen = false;
    bool drawerIsOpen = false; // until a person closes it
    std::string display;       // of the customer
    std::string operatorDisplay;

    bool operator==(const Hardware&) const = default;
};

// A request that was accepted and whose data comes in blocks behind it. Not kept.
struct Upload
{
    unsigned char command = 0;           // 0: none is expected
    std::vector<std::int64_t> numbers{}; // what the request said
    std::string received{};              // of the picture or text that comes
    std::size_t bytes = 0;               // that have come in all
    int pictures = 0;                    // that have come whole

    bool operator==(const Upload&) const = default;
};

// The most closures that the fiscal memory holds for ever.
inline constexpr int mostClosures = 2'000;

struct State
{
    std::shared_ptr<const Standing> standing = std::make_shared<const Standing>();
    std::shared_ptr<const Settings> settings = std::make_shared<const Settings>();
    std::shared_ptr<const Receipt> receipt; // none when no receipt is open
    std::shared_ptr<const Pictures> pictures = std::make_shared<const Pictures>();
    std::shared_ptr<const Hardware> hardware = std::make_shared<const Hardware>();
    std::shared_ptr<const Upload> upload = std::make_shared<const Upload>();
};

} // namespace virtual_printer
