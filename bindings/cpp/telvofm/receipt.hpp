// A receipt, from its beginning to its end, and what happened to it when something failed.
#pragma once

#include "decimal.hpp"
#include "line.hpp"
#include "receipt_calls.hpp"
#include "recovery.hpp"
#include "session.hpp"

#include <optional>
#include <string>
#include <utility>

namespace telvofm {

// Compares its own total with the printer's. Each step is true when it has worked, so that a receipt is a
// chain of && ; what failed then is failure(). After `refused` it goes on, after `outcomeUnknown` it takes
// nothing more. Texts are UTF-8 here and go out in Windows-1250; one that does not fit is a textError, and an
// amount with more decimals than money (2) or quantities (3) have is an amountError: nothing was sent. Nor is
// anything, and it is notExecuted, when begin() has not worked, when the receipt is over, and when another
// object of the session has begun one since: what is open then is not this one.
class Receipt
{
public:
    // ---- Selling ----

    // Opens the receipt; what the numbers mean is the printer's matter. After a failure call recover() before
    // anything else: the printer may have opened it and refused the same request when it was sent again. It
    // is notExecuted, too, while any receipt is open, and when the printer does not say whether one is; it is
    // asked again over a new connection before, which forgets the settings and pictures of the session. The
    // outcome is unknown, too, while it is unknown what became of the one that was begun before with this
    // object.
    Outcome begin(int saleType = 1, int commission = 0, int receiptType = 0, int recapitulation = 1,
                  int picture = 0)
    {
        if (Outcome known = calls_.requireNoDoubt(); !known) {
            return known;
        }
        if (!calls_.isOpen()) {
            startAfresh();
        }
        Result<std::optional<std::string>> numberBefore = calls_.askBeforeBegin();
        if (!numberBefore) {
            return numberBefore.error();
        }
        startAfresh();
        calls_.expect(std::move(*numberBefore));
        Outcome begun = calls_.send("paragonBegin", paragonBegin, 0, saleType, commission, receiptType,
                                    recapitulation, picture);
        isBegun_ = begun || begun.error().kind != Kind::notExecuted;
        if (begun) {
            calls_.take();
        }
        return begun;
    }

    // Sells an item: `total` for `quantity` of `unit` at `unitPrice` each, under the printer's letter of a
    // VAT rate. The library sends no more than 3 bytes of `unit`.
    Outcome sell(std::string_view name, Decimal total, std::string_view vat, Decimal quantity,
                 Decimal unitPrice, std::string_view unit)
    {
        return send(total, inside::lineOf(vat, total, quantity, unitPrice), "itemSale_str",
                    [&](const inside::Line& line) {
                        return calls_.send("itemSale_str", itemSale_str, 0, name, line.money, vat,
                                           line.quantity, line.unitPrice, unit);
                    });
    }

    // Takes an item of this receipt back, which was sold with the same arguments.
    Outcome takeBack(std::string_view name, Decimal total, std::string_view vat, Decimal quantity,
                     Decimal unitPrice, std::string_view unit)
    {
        return send(-total, inside::lineOf(vat, total, quantity, unitPrice), "itemVoid_str",
                    [&](const inside::Line& line) {
                        return calls_.send("itemVoid_str", itemVoid_str, 0, name, line.money, vat,
                                           line.quantity, line.unitPrice, unit, "");
                    });
    }

    // A discount of a sum on the item that was sold last; `operation` is the printer's number for that.
    Outcome discount(std::string_view description, Decimal amount, std::string_view vat, int operation = 0)
    {
        return send(-amount, inside::lineOf(vat, amount, 0, 0), "itemDiscount_str",
                    [&](const inside::Line& line) {
                        return calls_.send("itemDiscount_str", itemDiscount_str, 0, description, operation,
                                           line.money, vat);
                    });
    }

    // Takes a payment: `amount` under the printer's payment type. More than is due is given back. The library
    // sends no more than 10 bytes of `description`. An amount of 0 is an amountError, as any is when it is
    // paid in full, and a printer whose total or due is not the till's leaves the outcome unknown.
    Outcome pay(int type, Decimal amount, std::string_view description)
    {
        if (amount == Decimal()) {
            return calls_.failed(
                wrongArgument(Kind::amountError, "a payment of 0 can mean all that is due; say the amount"));
        }
        const Result<std::string> money = amount.text(2);
        const Result<std::string> total = total_.text(2);
        if (!money || !total) {
            return calls_.failed(money ? total.error() : money.error());
        }
        if (Outcome open = calls_.requireOpen("payment_str"); !open) {
            return open;
        }
        if (paid_ != Decimal() && due() == Decimal()) {
            return calls_.failed(wrongArgument(Kind::amountError, "nothing is left to pay"));
        }
        if (!isCompared_) {
            if (Outcome compared = calls_.check("payment_str", questions().total, total_, "the total");
                !compared) {
                return compared;
            }
            isCompared_ = true;
        }
        Outcome payed = calls_.send("payment_str", payment_str, 0, type, *total, *money, "0", description);
        const bool counts = payed || payed.error().kind == Kind::outcomeUnknown; // as it was meant
        const bool isRefused = !payed && payed.error().kind == Kind::refused;
        if (counts || isRefused) { // refused, it may have been taken before: the printer's totals tell
            isFinished_ = due(amount) == Decimal();
        }
        if (counts) {
            paid_ += amount;
        }
        if (!payed && !isRefused) {
            return payed;
        }
        const Outcome compared = calls_.check("payment_str", questions().due, due(), "what is due");
        return compared ? payed : compared;
    }

    // Ends the receipt; number() is its number then, or empty if the printer cannot be asked. `picture` is
    // the printer's number of one, 0 for none.
    Outcome end(int picture = 0)
    {
        if (Outcome open = calls_.requireOpen("paragonEnd"); !open) {
            return open;
        }
        isFinished_ = true;
        Outcome ended = calls_.send("paragonEnd", paragonEnd, 0, picture);
        if (!ended) {
            return ended;
        }
        if (!questions().canBeAsked) {
            calls_.finish();
            return ended;
        }
        const Result<std::string> number = calls_.checkEnd(total_);
        if (!number) {
            return number.error();
        }
        finish(inside::soldAs(*number, total_));
        return ended;
    }

    // Cancels the receipt; the printer prints the description. It is notExecuted, too, when the receipt was
    // not begun, is over, or when what is open may be another one: that is left alone. The outcome is
    // unknown, too, when a receipt is open behind it, or another one is the last.
    Outcome cancel(std::string_view description = "")
    {
        if (isBegun_ && !calls_.session().isOpen()) {
            return calls_.failed(closed("destroyParagon"));
        }
        if (!isBegun_ || calls_.isOver() || !calls_.hasBegunLast()) {
            return calls_.failed(notOurs("destroyParagon"));
        }
        Outcome cancelled = calls_.send("destroyParagon", destroyParagon, 0, description);
        if (cancelled) {
            cancelled = calls_.checkCancel();
        }
        if (cancelled) {
            finish({Verdict::notSold, "the receipt is cancelled", ""});
        }
        return cancelled;
    }

    // ---- Looking ----

    // Of the receipt that is sold, empty before.
    [[nodiscard]] const std::string& number() const { return number_; }
    // The last receipt's number before this one began.
    [[nodiscard]] const std::optional<std::string>& numberBefore() const { return calls_.numberBefore(); }
    // What is sold so far; yours to correct after calls of your own.
    [[nodiscard]] Decimal& total() { return total_; }
    // What is paid so far.
    [[nodiscard]] Decimal paid() const { return paid_; }
    // What failed last, or null.
    [[nodiscard]] const Failure* failure() const { return calls_.failure(); }

    // ---- Recovering ----

    // Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it
    // should be, and cancelled otherwise. May be called again: what is certain, as behind an end() or a
    // cancel() that worked, stays as it was said, and the printer is not asked again. When the session has
    // ended it asks nobody, whoever has opened another: a person has to look.
    Recovery recover()
    {
        if (outcome_) {
            return *outcome_;
        }
        const inside::KnownReceipt known{
            isBegun_,   calls_.isAnotherOpen(), calls_.hasBegunLast(), calls_.numberBefore(), total_, paid_,
            isFinished_};
        Recovery recovery = inside::recovered(calls_.session(), known);
        if (isBegun_ && recovery.verdict != Verdict::askAPerson) {
            finish(recovery);
        }
        return recovery;
    }

private:
    friend class Session;

    explicit Receipt(Session session) : calls_(std::move(session)) {}

    [[nodiscard]] const Questions& questions() { return calls_.session().questions(); }

    // What an earlier receipt of this object has left.
    void startAfresh()
    {
        calls_.forget();
        outcome_.reset();
        isBegun_ = isCompared_ = isFinished_ = false;
        number_.clear();
        total_ = paid_ = Decimal();
    }

    // It is certain what has become of it.
    void finish(Recovery outcome)
    {
        number_ = outcome.number;
        outcome_ = std::move(outcome);
        calls_.finish();
    }

    // What is sent with this line counts `value` then.
    template <typename Send>
    Outcome send(Decimal value, const Result<inside::Line>& line, std::string_view call, Send sendLine)
    {
        if (!line) {
            return calls_.failed(line.error());
        }
        if (Outcome open = calls_.requireOpen(call); !open) {
            return open;
        }
        Outcome sent = sendLine(*line);
        if (sent) {
            total_ += value;
        }
        return sent;
    }

    // What is left to pay, or to pay out, after this amount too; more than that is given back.
    [[nodiscard]] Decimal due(Decimal amount = {}) const
    {
        const Decimal left = total_ - paid_ - amount;
        const Decimal nothing;
        return total_ > nothing   ? std::max(left, nothing)
               : total_ < nothing ? std::min(left, nothing)
                                  : nothing;
    }

    inside::ReceiptCalls calls_;
    std::optional<Recovery> outcome_; // when it is certain
    bool isBegun_ = false;            // or may be
    bool isCompared_ = false;         // its total with the printer's, before the first payment
    bool isFinished_ = false;         // as far as the till goes: paid in full, refused or not, or told to end
    std::string number_;
    Decimal total_;
    Decimal paid_;
};

inline Receipt Session::receipt()
{
    return Receipt(lent());
}

inline Receipt Session::interruptedReceipt(std::string numberBefore, Decimal total)
{
    Receipt receipt(lent());
    receipt.isBegun_ = true;
    receipt.calls_.interrupt(std::move(numberBefore));
    receipt.total_ = receipt.paid_ = total;
    receipt.isFinished_ = total != Decimal(); // a till that has kept no total says 0
    return receipt;
}

} // namespace telvofm
