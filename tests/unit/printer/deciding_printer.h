// A printer that only decides: what is accepted becomes its state, and nothing is written, answered or shown.
// Its day is open, its VAT letters A to D are 23, 19, 5 and 0 percent.
#pragma once

#include "device/command.h"
#include "virtual_printer/fiscal/decide.h"

#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

using telvofm::Command;

class DecidingPrinter
{
public:
    DecidingPrinter()
    {
        Settings settings;
        settings.vat = {VatRate{23, {}}, VatRate{19, {}}, VatRate{5, {}}, VatRate{0, {}}};
        settings.payments = {{1, {"Hotovost", 1, true}},
                             {2, {"Karta", 1, false}},
                             {3, {"Kupony", 500, false}},
                             {5, {"Cudzia mena", 1, true}},
                             {6, {"Poukaz", 0, false}}};
        state.settings = std::make_shared<const Settings>(std::move(settings));
        Standing standing;
        standing.dayIsOpen = true;
        standing.dayBegan = now;
        state.standing = std::make_shared<const Standing>(standing);
    }

    Refusal send(Command command, std::vector<std::string> fields)
    {
        Decision decision = decide(state, {1, static_cast<unsigned char>(command), std::move(fields)}, now);
        if (decision.refusal == Refusal::none) {
            state = decision.draft.next;
            documents.insert(documents.end(), decision.draft.documents.begin(),
                             decision.draft.documents.end());
            shown = std::move(decision.draft.shown);
        }
        return decision.refusal;
    }

    Refusal begin() { return send(Command::paragonBegin, {"0", "1", "0", "0", "1", "0"}); }
    Refusal end() { return send(Command::paragonEnd, {"0", "0"}); }
    Refusal sell(const std::string& name, const std::string& total, const std::string& vat = "A",
                 const std::string& amount = "1.000", const std::string& price = "")
    {
        return item(Command::itemSale, name, total, vat, amount, price);
    }
    Refusal item(Command command, const std::string& name, const std::string& total,
                 const std::string& vat = "A", const std::string& amount = "1.000",
                 const std::string& price = "")
    {
        std::vector<std::string> fields = {"0",  name, total, vat, amount, price.empty() ? total : price,
                                           "ks "};
        if (command == Command::itemVoid || command == Command::itemReturn) {
            fields.emplace_back(command == Command::itemReturn ? "17" : "");
        }
        return send(command, std::move(fields));
    }
    // `total` is the receipt's or what is due.
    Refusal pay(const std::string& type, const std::string& total, const std::string& paid,
                const std::string& rate = "0")
    {
        return send(Command::payment, {"0", type, total, paid, rate, "          "});
    }
    Refusal drawer(const std::string& operation, const std::string& amount, const std::string& type = "1")
    {
        return send(Command::depositeInDrawer, {"0", "zaloha", operation, amount, type});
    }

    void setHardware(bool paperIsOut, bool coverIsOpen)
    {
        Hardware hardware;
        hardware.paperIsOut = paperIsOut;
        hardware.coverIsOpen = coverIsOpen;
        state.hardware = std::make_shared<const Hardware>(hardware);
    }
    void changeLife(Life life)
    {
        Standing changed = *state.standing;
        changed.life = life;
        state.standing = std::make_shared<const Standing>(std::move(changed));
    }
    template <typename Change>
    void changeSettings(Change change)
    {
        Settings settings = *state.settings;
        change(settings);
        state.settings = std::make_shared<const Settings>(std::move(settings));
    }

    [[nodiscard]] const Document& receipt() const { return state.receipt->document; }
    [[nodiscard]] Cents total() const { return receipt().total; }
    [[nodiscard]] Cents due() const { return state.receipt->due(); }
    [[nodiscard]] const Line& lastLine() const { return receipt().lines.back(); }
    [[nodiscard]] const Standing& standing() const { return *state.standing; }

    State state;
    Moment now = std::chrono::local_days(std::chrono::year(2026) / 1 / 31) + std::chrono::hours(12);
    std::vector<Document> documents;
    std::vector<Shown> shown; // by the last command that was accepted
};

} // namespace virtual_printer
