// A receipt, from its beginning to its end, and what happened to it when something failed.
#pragma once

#include "decimal.hpp"
#include "session.hpp"

#include <optional>
#include <string>
#include <utility>

namespace telvofm {

enum class Verdict
{
    sold,
    notSold,
    askAPerson
};

// What the printer says has become of a receipt.
struct Recovery
{
    Verdict verdict;
    std::string sentence;
    std::string number; // if it is sold

    [[nodiscard]] std::string text() const
    {
        const char* const said = verdict == Verdict::sold      ? "sold: "
                                 : verdict == Verdict::notSold ? "not sold: "
                                                               : "ask a person: ";
        return said + sentence;
    }
};

// Compares its own total with the printer's. Each step is true when it has worked, so that a receipt is a
// chain of && ; what failed then is failure().
class Receipt
{
public:
    // ---- Selling ----

    // Opens the receipt; what the numbers mean is the printer's matter.
    Outcome begin(int saleType = 1, int commission = 0, int receiptType = 0, int recapitulation = 1,
                  int picture = 0)
    {
        if (session_.questions().canBeAsked) {
            Result<std::string> last = session_.variable(session_.questions().lastReceipt);
            if (!last) {
                return failed(last.error());
            }
            numberBefore_ = *last;
        }
        Outcome begun =
            send("paragonBegin", paragonBegin, 0, saleType, commission, receiptType, recapitulation, picture);
        isBegun_ = begun || begun.error().kind == Kind::outcomeUnknown;
        return begun;
    }

    // Sells an item: `total` for `quantity` of `unit` at `unitPrice` each.
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

    // Takes a payment: `amount` under the printer's payment type. More than is due is given back.
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
        if (payed || payed.error().kind == Kind::outcomeUnknown) { // then it counts as it was meant
            paid_ += amount;
            isFinished_ = due() == Decimal();
        }
        return payed ? check("payment_str", session_.questions().due, due(), "what is due") : payed;
    }

    // Ends the receipt; number() is its number then, or empty if the printer cannot be asked.
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
        return check("paragonEnd", session_.questions().lastTotal, total_, "the total of the last receipt");
    }

    // Cancels the receipt; the printer prints that.
    Outcome cancel(std::string_view description = "")
    {
        Outcome cancelled =
            session_.call("destroyParagon", destroyParagon, session_.device(), 0, description);
        isBegun_ = isBegun_ && !cancelled;
        return cancelled ? cancelled : failed(cancelled.error());
    }

    // ---- Looking ----

    [[nodiscard]] const std::string& number() const { return number_; }
    // The last receipt's number before this one began.
    [[nodiscard]] const std::optional<std::string>& numberBefore() const { return numberBefore_; }
    // What is sold so far; yours to correct after calls of your own.
    [[nodiscard]] Decimal& total() { return total_; }
    [[nodiscard]] Decimal paid() const { return paid_; }
    // What failed last, or null.
    [[nodiscard]] const Failure* failure() const { return failure_ ? &*failure_ : nullptr; }

    // ---- Recovering ----

    // Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it
    // should be, and cancelled otherwise. May be called again.
    Recovery recover()
    {
        if (!isBegun_) {
            return {Verdict::notSold, "the receipt was not begun, or is cancelled", ""};
        }
        if (!numberBefore_) {
            return {Verdict::askAPerson,
                    "this printer cannot be asked; look at its paper before this receipt is sold again", ""};
        }
        Outcome reopened = session_.reopen();
        Result<Standing> now = reopened.and_then([this](Done&) { return standing(); });
        if (now && now->number == *numberBefore_ && !now->isClosed) {
            finish(*now);
            now = standing();
        }
        if (!now) {
            return {Verdict::askAPerson,
                    "the printer does not say what it has done; look at its paper before this receipt is "
                    "sold again (" +
                        now.error().call + ": code " + std::to_string(now.error().code) + ")",
                    ""};
        }
        return judge(*now);
    }

private:
    friend class Session;

    explicit Receipt(Session& session) : session_(session) {}

    // What the printer says.
    struct Standing
    {
        std::string number;
        std::string lastTotal;
        bool isClosed;
        std::string total;
        std::string due;
    };

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

    // What is left to pay, or to pay out; more than that is given back.
    [[nodiscard]] Decimal due() const
    {
        const Decimal left = total_ - paid_;
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

    Result<Standing> standing()
    {
        const Questions& questions = session_.questions();
        std::string answers[5];
        std::size_t next = 0;
        for (const std::string* question : {&questions.lastReceipt, &questions.lastTotal, &questions.state,
                                            &questions.total, &questions.due}) {
            Result<std::string> answer = session_.variable(*question);
            if (!answer) {
                return answer.error();
            }
            answers[next++] = *answer;
        }
        return Standing{answers[0], answers[1], answers[2] == questions.closed, answers[3], answers[4]};
    }

    // Ends or cancels the open receipt. Whether that worked is asked afterwards.
    void finish(const Standing& now)
    {
        const bool isPaid =
            isFinished_ && Decimal::parse(now.total) == total_ && Decimal::parse(now.due) == Decimal();
        if (isPaid) {
            paragonEnd(session_.device(), 0, 0);
        } else {
            destroyParagon(session_.device(), 0, "");
        }
    }

    Recovery judge(const Standing& now)
    {
        const std::string total = total_.text(2).value_or("an amount");
        if (now.isClosed && now.number == *numberBefore_) {
            return {Verdict::notSold,
                    "receipt " + now.number +
                        " is still the last one, and none is open; it can be sold again",
                    ""};
        }
        if (now.isClosed && Decimal::parse(now.lastTotal) == total_) {
            number_ = now.number;
            return {Verdict::sold, "receipt " + number_ + ", total " + total, number_};
        }
        return {Verdict::askAPerson,
                "the printer's last receipt is " + now.number + " with " + now.lastTotal +
                    (now.isClosed ? "" : ", and one is open") + "; the till sold " + total +
                    " after receipt " + *numberBefore_ + "; look at the paper before it is sold again",
                ""};
    }

    Session& session_;
    bool isBegun_ = false;
    bool isCompared_ = false; // its total with the printer's, before the first payment
    bool isFinished_ = false; // as far as the till goes: paid in full, or told to end
    std::optional<std::string> numberBefore_;
    std::string number_;
    Decimal total_;
    Decimal paid_;
    std::optional<Failure> failure_;
    std::optional<Failure> doubt_; // after which nothing more is sold into it
};

inline Receipt Session::receipt()
{
    return Receipt(*this);
}

inline Receipt Session::interruptedReceipt(std::string numberBefore, Decimal total)
{
    Receipt receipt(*this);
    receipt.isBegun_ = receipt.isFinished_ = true;
    receipt.numberBefore_ = std::move(numberBefore);
    receipt.total_ = receipt.paid_ = total;
    receipt.doubt_ = doubt("recover", "The till was interrupted in this receipt.");
    return receipt;
}

} // namespace telvofm
