// Keeps books of its own of what a printer says that it did, by the lines of its documents, and throws when
// the two disagree.
#pragma once

#include "virtual_printer/fiscal/draft.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace virtual_printer {

inline void require(bool holds, const std::string& what)
{
    if (!holds) {
        throw std::logic_error(what);
    }
}

class Bookkeeper
{
public:
    explicit Bookkeeper(const State& start)
        : expected(*start.standing), numberOfLast(start.standing->receipts)
    {
    }

    // What the lines of a receipt, open or done, say about its sums.
    static void checkLines(const Document& receipt)
    {
        ByVat byVat;
        ByVat returned;
        Cents total = 0;
        int voided = 0;
        for (const Line& line : receipt.lines) {
            checkSign(line);
            if (isSold(line)) {
                total += line.sum;
                byVat[line.vat] += line.sum;
            }
            if (line.kind == Line::Kind::itemReturn) {
                returned[line.vat] -= line.sum;
            }
            voided += line.kind == Line::Kind::itemVoid ? 1 : line.isVoided ? -1 : 0;
        }
        require(total == receipt.total, "the total is not the sum of the lines");
        require(withoutZeros(byVat) == withoutZeros(receipt.byVat),
                "the VAT sums are not those of the lines");
        require(voided == 0, "not every void has its item");
        for (const auto& [vat, sum] : byVat) {
            require(sum + returned[vat] >= 0, "without its returns a VAT letter is below zero");
        }
        require(total >= 0 || !returned.empty(), "a total is below zero without a return");
    }

    // What its payments and their change come to, by type and in all.
    static void checkPayments(const Document& receipt, Cents paid)
    {
        ByPayment byPayment;
        Cents sum = 0;
        for (const Line& line : receipt.lines) {
            if (line.kind == Line::Kind::payment) {
                byPayment[line.number] += line.sum;
                sum += line.sum;
            } else if (line.kind == Line::Kind::change) {
                byPayment[1] -= line.sum;
                sum -= line.sum;
            }
        }
        require(sum == paid, "payments less change are not what was paid");
        require(withoutZeros(byPayment) == withoutZeros(receipt.byPayment),
                "the payments by type are not those of the lines");
    }

    void enter(const Document& document)
    {
        require(document.closure == expected.closures + 1, "a document is not of its day");
        require(document.moment >= lastMoment, "a document is older than the one before");
        lastMoment = document.moment;
        ++expected.documents;
        switch (document.kind) {
        case Document::Kind::receipt:
            enterReceipt(document);
            break;
        case Document::Kind::cancelledReceipt:
            require(document.number == 0 && document.byPayment.empty(), "a cancelled receipt counts");
            checkLines(document);
            ++expected.day.cancelled;
            break;
        case Document::Kind::drawer:
            require(document.byPayment.size() == 1 && document.byPayment.begin()->second == document.total,
                    "a movement of the drawer is not its total");
            expected.drawer[document.byPayment.begin()->first] += document.total;
            ++expected.day.drawerMovements;
            break;
        case Document::Kind::closure:
            isClosing = true;
            break;
        case Document::Kind::report:
            break;
        }
    }

    void enter(const Closure& closure) const
    {
        require(closure.number == expected.closures + 1, "a closure has the wrong number");
        require(same(closure.sums, expected.day), "a closure has not the sums of its day");
        require(withoutZeros(closure.drawer) == withoutZeros(expected.drawer),
                "a closure has not what is in the drawer");
    }

    // After the documents of a command were entered.
    void checkStanding(const Standing& standing)
    {
        if (isClosing) {
            expected.ever.add(expected.day);
            expected.day = Sums();
            ++expected.closures;
            isClosing = false;
            require(!standing.dayIsOpen, "a closed day goes on");
        }
        require(same(standing.day, expected.day), "the day is not the sum of its documents");
        require(same(standing.ever, expected.ever), "what was ever sold is not the sum of the days");
        require(withoutZeros(standing.drawer) == withoutZeros(expected.drawer),
                "the drawer is not what was moved");
        require(standing.receipts == expected.receipts && standing.closures == expected.closures &&
                    standing.documents == expected.documents,
                "documents are counted wrongly");
        for (const auto& [type, sum] : standing.drawer) {
            require(sum >= 0, "more was taken out of the drawer than was in it");
        }
        require(sumOf(standing.day.byPayment) == sumOf(standing.day.byVat),
                "the day's payments are not its turnover");
    }

    static bool isSold(const Line& line)
    {
        using enum Line::Kind;
        return line.kind == item || line.kind == itemVoid || line.kind == itemReturn ||
               line.kind == itemNegative || line.kind == discount || line.kind == voucher ||
               line.kind == downPayment;
    }

private:
    static void checkSign(const Line& line)
    {
        using enum Line::Kind;
        if (line.kind == item) {
            require(line.sum >= 0, "an item takes away");
        }
        if (line.kind == itemVoid || line.kind == itemReturn || line.kind == itemNegative ||
            line.kind == voucher || line.kind == downPayment) {
            require(line.sum <= 0, "what takes away adds");
        }
    }

    void enterReceipt(const Document& receipt)
    {
        require(receipt.number == ++numberOfLast, "a receipt has not the next number");
        checkLines(receipt);
        checkPayments(receipt, receipt.total);
        Sums sums;
        for (const Line& line : receipt.lines) {
            if (isSold(line)) {
                sums.byVat[line.vat] += line.sum;
            }
            if (line.kind == Line::Kind::discount) {
                sums.discounts -= line.sum;
            } else if (line.kind == Line::Kind::itemReturn) {
                sums.returns -= line.sum;
            } else if (line.kind == Line::Kind::total) {
                require(line.sum == receipt.total, "another total is printed");
            } else if (line.kind == Line::Kind::vatSum) {
                checkVat(receipt, line);
            }
        }
        sums.byPayment = receipt.byPayment;
        sums.receipts = 1;
        expected.day.add(sums);
        expected.receipts = receipt.number;
        for (const auto& [type, sum] : receipt.byPayment) {
            expected.drawer[type] += sum;
        }
    }

    // The base with its VAT is the sum, but for the rounding of the base: half a cent of it.
    static void checkVat(const Document& receipt, const Line& line)
    {
        constexpr Cents whole = 100;
        require(line.sum == receipt.byVat.at(line.vat), "another VAT sum is printed");
        require(2 * std::abs(line.base * (whole + line.number) - line.sum * whole) <= whole + line.number,
                "the VAT is not of its rate");
    }

    template <typename Map>
    static Map withoutZeros(Map sums)
    {
        std::erase_if(sums, [](const auto& sum) { return sum.second == 0; });
        return sums;
    }

    template <typename Map>
    static Cents sumOf(const Map& sums)
    {
        Cents whole = 0;
        for (const auto& [key, sum] : sums) {
            whole += sum;
        }
        return whole;
    }

    static bool same(Sums one, Sums other)
    {
        for (Sums* sums : {&one, &other}) {
            sums->byVat = withoutZeros(sums->byVat);
            sums->byPayment = withoutZeros(sums->byPayment);
        }
        return one == other;
    }

    Standing expected;
    int numberOfLast;
    Moment lastMoment = Moment::min();
    bool isClosing = false;
};

} // namespace virtual_printer
