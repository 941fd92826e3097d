// What a request changes, while it is decided: a copy of the state whose parts are copied when they are first
// touched, the documents that are done, and what is to be shown. The state that was is not touched.
#pragma once

#include "virtual_printer/fiscal/state.h"

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace virtual_printer {

// What a person in front of the printer notices.
struct Printed
{
    Line line;
};
struct DisplayShows
{
    std::string text;
};
struct DrawerOpens
{
};
using Shown = std::variant<Printed, DisplayShows, DrawerOpens>;

// A daily closure, as the fiscal memory keeps it for ever.
struct Closure
{
    int number = 0;
    Moment moment{};
    Sums sums;
    ByPayment drawer;
    PaymentNames paymentNames{}; // of the types in `sums`, as they were called then
    bool operator==(const Closure&) const = default;
};

class Draft
{
public:
    Draft(State before, Moment present) : now(present), next(std::move(before)) {}

    const Moment now;

    [[nodiscard]] const State& state() const { return next; }
    // Each copies its part when it is first asked for.
    Standing& standing() { return own(ownStanding, next.standing); }
    Settings& settings() { return own(ownSettings, next.settings); }
    Receipt& receipt() { return own(ownReceipt, next.receipt); }
    Pictures& pictures() { return own(ownPictures, next.pictures); }
    Hardware& hardware() { return own(ownHardware, next.hardware); }
    Upload& upload() { return own(ownUpload, next.upload); }

    void beginReceipt(Receipt receipt);
    // No receipt is open any more; the document is what it has come to.
    void endReceipt();

    void show(Shown event);
    // A line on the paper that belongs to no document.
    void print(Line line) { shown.emplace_back(Printed{std::move(line)}); }
    // A line of the open receipt, also on the paper.
    void printInReceipt(Line line);
    // A document that is done: the journal keeps it.
    void keep(Document document) { documents.push_back(std::move(document)); }
    void keep(Closure closure) { closures.push_back(std::move(closure)); }

    State next;
    std::vector<Document> documents;
    std::vector<Closure> closures;
    std::vector<Shown> shown;
    // What is done to the memories beyond keeping: initialized, restored, backed up.
    enum class Service
    {
        none,
        clearJournal,  // initELJ
        clearClosures, // initFM, before fiscalization or after defiscalization
        restore        // restoreBCKP
    };
    Service service = Service::none;

private:
    template <typename Part>
    static Part& own(std::shared_ptr<Part>& mine, std::shared_ptr<const Part>& shared)
    {
        if (!mine || mine != shared) {
            mine = shared ? std::make_shared<Part>(*shared) : std::make_shared<Part>();
            shared = mine;
        }
        return *mine;
    }

    std::shared_ptr<Standing> ownStanding;
    std::shared_ptr<Settings> ownSettings;
    std::shared_ptr<Receipt> ownReceipt;
    std::shared_ptr<Pictures> ownPictures;
    std::shared_ptr<Hardware> ownHardware;
    std::shared_ptr<Upload> ownUpload;
};

} // namespace virtual_printer
