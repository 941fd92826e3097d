// A till that sends whatever the dice say. It looks at the printer's state so that most of what it sends is
// legal and receipts get long; the rest is nonsense of every kind.
#pragma once

#include "virtual_printer/fiscal/decide.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

namespace virtual_printer {

class RandomTill
{
public:
    // The same number sends the same request to the same state.
    static Request next(const State& state, Moment now, std::uint32_t number)
    {
        return RandomTill(state, number).choose(situationOf(state, now));
    }

private:
    using Command = telvofm::Command;
    using Texts = std::vector<std::string>;

    RandomTill(const State& seen, std::uint32_t number) : state(seen), dice(number) {}

    int roll(int sides) { return std::uniform_int_distribution<int>(0, sides - 1)(dice); }
    bool oneIn(int sides) { return roll(sides) == 0; }
    std::string pick(std::initializer_list<const char*> texts)
    {
        return *(texts.begin() + roll(static_cast<int>(texts.size())));
    }
    Cents between(Cents least, Cents most)
    {
        return least >= most ? most : std::uniform_int_distribution<Cents>(least, most)(dice);
    }

    Request choose(Situation situation)
    {
        if (oneIn(20)) {
            return nonsense();
        }
        switch (situation) {
        case Situation::noDay:
            return request(Command::sellingDayBegin, {"0"});
        case Situation::overdue:
            return request(Command::printReport, {"Z", "0"});
        case Situation::idle:
            return betweenReceipts();
        case Situation::open:
            return inReceipt();
        case Situation::paying:
            return inPayment();
        case Situation::defiscalized:
            break;
        }
        return nonsense();
    }

    Request betweenReceipts()
    {
        const int chance = roll(20);
        if (chance == 0) {
            return request(Command::printReport, {pick({"Z", "Z", "X", "1"}), "0"});
        }
        if (chance <= 3) {
            return request(Command::depositeInDrawer,
                           {"0", "", pick({"0", "0", "1"}), amount(between(1, 20'000)), type()});
        }
        return request(Command::paragonBegin, {"0", "1", "0", "0", pick({"0", "1"}), "0"});
    }

    Request inReceipt()
    {
        const Receipt& receipt = *state.receipt;
        const int chance = receipt.document.byVat.empty() ? 0 : roll(32);
        if (chance < 11) {
            return item(Command::itemSale);
        }
        switch (chance) {
        case 11:
        case 12:
        case 13:
            return voiding();
        case 14:
            return item(Command::itemReturn);
        case 15:
        case 16:
            return item(Command::itemNegative);
        case 17:
        case 18:
        case 19:
            return itemDiscount();
        case 20:
        case 21:
        case 22:
            return subtotalDiscount();
        case 23:
        case 24:
            return takingOff();
        case 25:
            return request(Command::subTotal, {"0", "", "0"});
        case 26:
            return request(Command::setInvoiceNumber, {pick({"F-1", "F-2", ""})});
        case 27:
            return oneIn(4) ? request(Command::destroyParagon, {"0", ""}) : item(Command::itemSale);
        default:
            return receipt.due() == 0 ? request(Command::paragonEnd, {"0", "0"}) : paying();
        }
    }

    Request inPayment()
    {
        if (state.receipt->due() == 0 ? !oneIn(8) : oneIn(20)) {
            return request(Command::paragonEnd, {"0", "0"});
        }
        return oneIn(20) ? request(Command::destroyParagon, {"0", ""}) : paying();
    }

    Request item(Command command)
    {
        const Cents price = oneIn(30) ? between(-500, 999'999'999) : between(0, 3'000);
        const Thousandths quantity = oneIn(3) ? between(oneIn(20) ? -100 : 1, 20'000) : 1'000;
        Cents total = scaled(price, quantity, 1'000);
        if (oneIn(15)) {
            total += between(-3, 3);
        }
        Texts fields = {"0",
                        pick({"Chlieb", "Syr", "Caj", "Med"}),
                        amount(total),
                        vat(),
                        thousandths(quantity),
                        amount(price),
                        "ks "};
        if (command == Command::itemReturn) {
            fields.push_back(pick({"17", "18", "19", ""}));
        }
        return request(command, std::move(fields));
    }

    // Mostly of a line that was sold.
    Request voiding()
    {
        std::vector<Line> sold;
        for (const Line& line : state.receipt->document.lines) {
            if (line.kind == Line::Kind::item) {
                sold.push_back(line);
            }
        }
        if (sold.empty()) {
            return item(Command::itemSale);
        }
        const Line& line = sold[static_cast<std::size_t>(roll(static_cast<int>(sold.size())))];
        return request(Command::itemVoid,
                       {"0", line.text, amount(oneIn(20) ? line.sum + 1 : line.sum), std::string(1, line.vat),
                        thousandths(line.quantity), amount(line.unitPrice), "ks ", ""});
    }

    Request itemDiscount()
    {
        const std::vector<Line>& lines = state.receipt->document.lines;
        const std::string operation = pick({"0", "0", "0", "1", "1", "2", "3", "4"});
        const Cents value = between(0, oneIn(4) ? 10'100 : std::abs(lines.back().sum));
        if (oneIn(2)) {
            return request(Command::itemDiscount,
                           {"0", "", operation, amount(value), pick({"", "", " ", "A"})});
        }
        const Cents result = oneIn(3) ? lines.back().sum - value : 0;
        return request(Command::itemDiscount2, {"0", "", operation, amount(value), "", amount(result)});
    }

    Request subtotalDiscount()
    {
        const Cents total = state.receipt->document.total;
        const std::string operation = pick({"0", "0", "0", "1", "1", "2", "3"});
        const Cents value = between(1, oneIn(4) ? 10'100 : std::max<Cents>(total, 1));
        const std::string letter = oneIn(2) ? " " : vat();
        if (oneIn(2)) {
            return request(Command::subTotalDiscount, {"0", "", operation, amount(value), letter});
        }
        const Cents result = oneIn(3) ? total - value : 0;
        return request(Command::subTotalDiscount2,
                       {"0", "", operation, amount(value), amount(result), letter});
    }

    Request takingOff()
    {
        const std::string size = pick({"1.00", "1.00", "2.00", "0.50", "0", "-1"});
        const std::string price = amount(between(0, 1'500));
        if (oneIn(2)) {
            return request(Command::redeemVoucher, {"Poukazka", size, vat(), price, "P-1"});
        }
        return request(Command::deductDownPayment, {"Zaloha", size, vat(), price});
    }

    Request paying()
    {
        const Receipt& receipt = *state.receipt;
        const Cents due = receipt.due();
        const Cents total = oneIn(30) ? due + 1 : oneIn(2) ? due : receipt.document.total;
        const Cents part = due < 0 ? -between(0, -due) : between(0, due);
        const std::array<Cents, 5> sums = {0, due, part, part, due + between(0, 5'000)};
        const Cents paid = sums.at(static_cast<std::size_t>(roll(static_cast<int>(sums.size()))));
        const std::string rate =
            oneIn(3) ? pick({"+0", "1.0000", "0.0400", "+25.0000", "+0.0371", "-1"}) : "0";
        if (oneIn(4)) {
            return request(Command::payment2, {"0", type(), amount(total), amount(paid), rate, "",
                                               oneIn(4) ? amount(paid) : "0"});
        }
        return request(Command::payment, {"0", type(), amount(total), amount(paid), rate, ""});
    }

    // Any command with fields that suit their kinds, or do not. What begins the printer anew or sets its
    // clock is left out: the sums would begin anew with it.
    Request nonsense()
    {
        constexpr std::array leftOut = {Command::initFP,      Command::initFM,
                                        Command::initELJ,     Command::fiscalization,
                                        Command::setDateTime, Command::defiscalizationFM,
                                        Command::restoreBCKP};
        const auto rules = commandRules();
        const CommandRule& rule = rules[static_cast<std::size_t>(roll(static_cast<int>(rules.size())))];
        if (std::find(leftOut.begin(), leftOut.end(), rule.command) != leftOut.end()) {
            return request(Command::paragonBegin, {"0"});
        }
        Texts fields;
        for (const Field& field : rule.fields) {
            fields.push_back(fieldOf(field.kind));
        }
        return request(rule.command, std::move(fields));
    }

    std::string fieldOf(FieldKind kind)
    {
        switch (kind) {
        case FieldKind::secret:
            return pick({"0000", "9999", "x"});
        case FieldKind::text:
        case FieldKind::any:
            return pick({"Chlieb", "", "17", "\xC5\xBE", "\xFF"});
        case FieldKind::letter:
        case FieldKind::letterOrEmpty:
            return pick({"A", "B", "Z", "X", " ", ""});
        case FieldKind::date:
        case FieldKind::dateOrEmpty:
            return pick({"", "2026-01-31", "31.01.2026 12:00", "soon"});
        default:
            return pick({"0", "1", "2", "5", "12.50", "-1", "100", "0.001", "many"});
        }
    }

    std::string vat() { return oneIn(25) ? pick({"E", "I", " "}) : pick({"A", "A", "B", "C", "D"}); }
    std::string type() { return oneIn(12) ? pick({"3", "4", "0"}) : pick({"1", "1", "2", "5"}); }
    static std::string amount(Cents cents) { return formatCents(cents); }
    static std::string thousandths(Thousandths quantity) { return formatThousandths(quantity); }

    static Request request(Command command, Texts fields)
    {
        return {1, static_cast<unsigned char>(command), std::move(fields)};
    }

    const State& state;
    std::minstd_rand dice;
};

} // namespace virtual_printer
