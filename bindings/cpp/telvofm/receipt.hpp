// A receipt, from its beginning to its end, and what happened to it when something failed.
#pragma once

#include "decimal.hpp"
#include "recovery.hpp"
#include "session.hpp"

#include <optional>
#include <string>
#include <utility>

namespace telvofm {

// Compares its own total with the printer's. Each step is true when it has worked, so that a receipt is a
// chain of && ; what failed then is failure(). After `refused` it goes on, after `outcomeUnknown` it takes
// nothing more. Texts are UTF-8 here and go out in Windows-1250; one that does not fit is a textError, and an
// amount with more decimals than money (2) or quantities (3) have is an amountError: nothing was sent.
class Receipt
{
public:
    // ---- Selling ----

    // Opens the receipt; what the numbers mean is the printer's matter. After a failure call recover() before
    // anything else: the printer may have opened it and refused the same request when it was sent again. The
    // outcome is unknown, too, when another receipt was open before, and while it is unknown what became of
    // the one that was begun before with this object.
    Outcome begin(int saleType = 1, int commission = 0, int receiptType = 0, int recapitulation = 1,
                  int picture = 0)
    {
        if (doubt_ && !isOver_) {
            return failed(*doubt_);
        }
        startAfresh();
        const Questions& questions = session_.questions();
        if (questions.canBeAsked) {
            const Result<std::string> last = session_.variable(questions.lastReceipt);
            const Result<std::string> state = session_.variable(questions.state);
            if (!last || !state) {
                return failed(last ? state.error() : last.error());
            }
            numberBefore_ = *last;
            isAnotherOpen_ = *state != questions.closed;
        }
        Outcome begun =
            send("paragonBegin", paragonBegin, 0, saleType, commission, receiptType, recapitulation, picture);
        isBegun_ = begun || begun.error().kind != Kind::notExecuted;
        return begun && isAnotherOpen_ ? doubted(doubt("paragonBegin", "Another receipt was open before."))
                                       : begun;
    }

    // Sells an item: `total` for `quantity` of `unit` at `unitPrice` each, under the printer's letter of a
    // VAT rate. The library sends no more than 3 bytes of `unit`.
    Outcome sell(std::string_view name, Decimal total, std::string_view vat, Decimal quantity,
                 Decimal unitPrice, std::string_view unit)
    {
        return line(
            total,
            [&](const std::string& money, const std::string& amount, const std::string& price) {
                return send("itemSale_str", itemSale_str, 0, name, money, vat, amount, price, unit);
            },
            total, quantity, unitPrice);
    }

    // Takes an item of this receipt back, which was sold with the same arguments.
    Outcome takeBack(std::string_view name, Decimal total, std::string_view vat, Decimal quantity,
                     Decimal unitPrice, std::string_view unit)
    {
        return line(
            -total,
            [&](const std::string& money, const std::string& amount, const std::string& price) {
                return send("itemVoid_str", itemVoid_str, 0, name, money, vat, amount, price, unit, "");
            },
            total, quantity, unitPrice);
    }

    // A discount of a sum on the item that was sold last; `operation` is the printer's number for that.
    Outcome discount(std::string_view description, Decimal amount, std::string_view vat, int operation = 0)
    {
        return line(
            -amount,
            [&](const std::string& money, const std::string&, const std::string&) {
                return send("itemDiscount_str", itemDiscount_str, 0, description, operation, money, vat);
            },
            amount, 0, 0);
    }

    // Takes a payment: `amount` under the printer's payment type. More than is due is given back. The library
    // sends no more than 10 bytes of `description`. An amount of 0 is an amountError, and a printer whose
    // total or due is not the till's leaves the outcome unknown.
    Outcome pay(int type, Decimal amount, std::string_view description)
    {
        if (amount == Decimal()) {
            return failed(
                wrongArgument(Kind::amountError, "a payment of 0 can mean all that is due; say the amount"));
        }
        const Result<std::string> money = amount.text(2);
        const Result<std::string> total = total_.text(2);
        if (!money || !total) {
            return failed(money ? total.error() : money.error());
        }
        if (!isCompared_) {
            if (Outcome compared = check("payment_str", session_.questions().total, total_, "the total");
                !compared) {
                return compared;
            }
            isCompared_ = true;
        }
        Outcome payed = send("payment_str", payment_str, 0, type, *total, *money, "0", description);
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
        const Outcome compared = check("payment_str", session_.questions().due, due(), "what is due");
        return compared ? payed : compared;
    }

    // Ends the receipt; number() is its number then, or empty if the printer cannot be asked. `picture` is
    // the printer's number of one, 0 for none.
    Outcome end(int picture = 0)
    {
        isFinished_ = true;
        if (Outcome ended = send("paragonEnd", paragonEnd, 0, picture);
            !ended || !session_.questions().canBeAsked) {
            return ended;
        }
        const Result<std::string> last = ask("paragonEnd", session_.questions().lastReceipt);
        if (!last) {
            return last.error();
        }
        if (*last == numberBefore_) {
            return doubted(doubt("paragonEnd", "The printer's last receipt is still " + *last + "."));
        }
        number_ = *last;
        Outcome compared =
            check("paragonEnd", session_.questions().lastTotal, total_, "the total of the last receipt");
        isOver_ = compared.has_value();
        return compared;
    }

    // Cancels the receipt; the printer prints the description. It is notExecuted, too, when the receipt was
    // not begun, is over, or was begun while another was open: that one is left alone.
    Outcome cancel(std::string_view description = "")
    {
        if (!isBegun_ || isAnotherOpen_ || isOver_) {
            return failed(notOurs("destroyParagon"));
        }
        Outcome cancelled =
            session_.call("destroyParagon", destroyParagon, session_.device(), 0, description);
        isBegun_ = !cancelled;
        isOver_ = cancelled.has_value();
        return cancelled ? cancelled : failed(cancelled.error());
    }

    // ---- Looking ----

    // Of the receipt that is sold, empty before.
    [[nodiscard]] const std::string& number() const { return number_; }
    // The last receipt's number before this one began.
    [[nodiscard]] const std::optional<std::string>& numberBefore() const { return numberBefore_; }
    // What is sold so far; yours to correct after calls of your own.
    [[nodiscard]] Decimal& total() { return total_; }
    // What is paid so far.
    [[nodiscard]] Decimal paid() const { return paid_; }
    // What failed last, or null.
    [[nodiscard]] const Failure* failure() const { return failure_ ? &*failure_ : nullptr; }

    // ---- Recovering ----

    // Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it
    // should be, and cancelled otherwise; one that was open before this one began is left alone. May be
    // called again. When the session has ended it asks nobody, whoever has opened another: a person has to
    // look.
    Recovery recover()
    {
        if (!isBegun_) {
            return {Verdict::notSold, "the receipt was not begun, or is cancelled", ""};
        }
        if (!session_.isOpen()) {
            return {Verdict::askAPerson,
                    "the session of this receipt is closed; look at the printer's paper before it is sold "
                    "again, or "
                    "recover it as an interrupted receipt of another session",
                    ""};
        }
        if (isAnotherOpen_) {
            return {
                Verdict::askAPerson,
                "another receipt was open before this one began, and is left alone; end it with paragonEnd "
                "or cancel it with destroyParagon, called through the session, before this one is sold "
                "again",
                ""};
        }
        if (!numberBefore_) {
            return {Verdict::askAPerson,
                    "this printer cannot be asked; look at its paper before this receipt is sold again", ""};
        }
        const inside::KnownReceipt known{*numberBefore_, total_, paid_, isFinished_};
        Recovery recovery = inside::askedRecovery(session_, known);
        isOver_ = isOver_ || recovery.verdict != Verdict::askAPerson;
        number_ = recovery.number.empty() ? number_ : recovery.number;
        return recovery;
    }

private:
    friend class Session;

    explicit Receipt(Session session) : session_(std::move(session)) {}

    // Without what an earlier receipt of this object has left.
    void startAfresh()
    {
        isBegun_ = isOver_ = isAnotherOpen_ = isCompared_ = isFinished_ = false;
        numberBefore_.reset();
        number_.clear();
        total_ = paid_ = Decimal();
        failure_.reset();
        doubt_.reset();
    }

    template <typename Function, typename... Arguments>
    Outcome send(std::string_view name, Function function, const Arguments&... arguments)
    {
        if (doubt_) {
            return failed(*doubt_);
        }
        Outcome sent = session_.call(name, function, session_.device(), arguments...);
        if (sent) {
            return sent;
        }
        return sent.error().kind == Kind::outcomeUnknown ? doubted(sent.error()) : failed(sent.error());
    }

    // A line that counts `value` when it has been sent; its amounts as money, quantity and unit price.
    template <typename Send>
    Outcome line(Decimal value, Send sendLine, Decimal money, Decimal quantity, Decimal unitPrice)
    {
        const Result<std::string> moneyText = money.text(2);
        const Result<std::string> quantityText = quantity.text(3);
        const Result<std::string> priceText = unitPrice.text(2);
        for (const Result<std::string>* text : {&moneyText, &quantityText, &priceText}) {
            if (!*text) {
                return failed(text->error());
            }
        }
        Outcome sent = sendLine(*moneyText, *quantityText, *priceText);
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

    Outcome check(std::string_view call, const std::string& question, Decimal expected,
                  const std::string& what)
    {
        if (doubt_) {
            return failed(*doubt_);
        }
        if (!session_.questions().canBeAsked) {
            return Done();
        }
        const Result<std::string> answer = ask(call, question);
        if (!answer) {
            return answer.error();
        }
        if (Decimal::parse(*answer) != expected) {
            return doubted(doubt(call, "For the printer " + what + " is \"" + *answer + "\", for the till " +
                                           expected.text(2).value_or("another") +
                                           ": something was carried out twice, or not at all."));
        }
        return Done();
    }

    Result<std::string> ask(std::string_view call, const std::string& question)
    {
        Result<std::string> answer = session_.variable(question);
        if (!answer) {
            return doubted(doubt(call, "The printer does not say what it has done (" + answer.error().call +
                                           ": code " + std::to_string(answer.error().code) + ")."))
                .error();
        }
        return answer;
    }

    Outcome failed(const Failure& failure)
    {
        failure_ = failure;
        return failure;
    }

    // A failure after which nothing more is sold into this receipt.
    Outcome doubted(const Failure& failure)
    {
        doubt_ = failure;
        return failed(failure);
    }

    Session session_;            // as it was lent: it may have ended
    bool isBegun_ = false;       // or may be
    bool isOver_ = false;        // ended, cancelled, or recovered without a person: nothing of it is open
    bool isAnotherOpen_ = false; // since before this one: whatever is open is not ours
    bool isCompared_ = false;    // its total with the printer's, before the first payment
    bool isFinished_ = false;    // as far as the till goes: paid in full, refused or not, or told to end
    std::optional<std::string> numberBefore_;
    std::string number_;
    Decimal total_;
    Decimal paid_;
    std::optional<Failure> failure_;
    std::optional<Failure> doubt_; // after which nothing more is sold into it
};

inline Receipt Session::receipt()
{
    return Receipt(lent());
}

inline Receipt Session::interruptedReceipt(std::string numberBefore, Decimal total)
{
    Receipt receipt(lent());
    receipt.isBegun_ = receipt.isFinished_ = true;
    receipt.numberBefore_ = std::move(numberBefore);
    receipt.total_ = receipt.paid_ = total;
    receipt.doubt_ = doubt("recover", "The till was interrupted in this receipt.");
    return receipt;
}

} // namespace telvofm
