// The calls of one receipt and its questions to the printer: none is made that could go into another one, and
// none while the outcome of an earlier one is open. For telvofm::Receipt.
#pragma once

#include "answers.hpp"
#include "decimal.hpp"
#include "session.hpp"

#include <optional>
#include <string>
#include <utility>

namespace telvofm::inside {

class ReceiptCalls
{
public:
    explicit ReceiptCalls(Session session) : session_(std::move(session)) {}

    [[nodiscard]] Session& session() { return session_; }
    [[nodiscard]] const Failure* failure() const { return failure_ ? &*failure_ : nullptr; }

    // ---- What is open ----

    // What an earlier receipt has left.
    void forget()
    {
        begin_ = 0;
        isTaken_ = isOver_ = isAnotherOpen_ = false;
        numberBefore_.reset();
        failure_.reset();
        doubt_.reset();
    }

    // Before a begin: the last receipt's number while none is open, and nothing when the printer cannot be
    // asked. One wrong answer is not believed, and a connection that is dead or has shifted is opened again.
    Result<std::optional<std::string>> askBeforeBegin()
    {
        if (!session_.questions().canBeAsked) {
            return std::optional<std::string>();
        }
        Standing now = standing();
        if (now && !isClosed(*now) && isOpen()) {
            return failedBegin(alreadyBegun("paragonBegin"));
        }
        if (!now || !isClosed(*now)) {
            if (const Outcome reopened = session_.reopen(); !reopened) {
                return failedBegin(reopened.error());
            }
            now = standing();
        }
        if (!now) {
            const Failure& wrong = now.error();
            return failedBegin(wrong.kind == Kind::outcomeUnknown ? unanswered("paragonBegin", wrong)
                                                                  : wrong);
        }
        if (!isClosed(*now)) {
            if (isOpen()) {
                return failedBegin(alreadyBegun("paragonBegin"));
            }
            isAnotherOpen_ = true;
            return failedBegin(anotherOpen("paragonBegin"));
        }
        return std::optional(now->front());
    }

    // Whatever is open from here on is this one, if it is known that none was, behind that number.
    void expect(std::optional<std::string> numberBefore)
    {
        begin_ = numberBefore ? session_.nextBegin() : 0;
        numberBefore_ = std::move(numberBefore);
    }

    // The printer has begun it.
    void take()
    {
        begin_ = session_.nextBegin();
        isTaken_ = true;
    }

    // The till was switched off in it.
    void interrupt(std::string numberBefore)
    {
        expect(std::move(numberBefore));
        doubt_ = failure_ = doubt("recover", "The till was interrupted in this receipt.");
    }

    // The last receipt's number before the begin; none when the printer cannot be asked.
    [[nodiscard]] const std::optional<std::string>& numberBefore() const { return numberBefore_; }
    // So that this one was not begun.
    [[nodiscard]] bool isAnotherOpen() const { return isAnotherOpen_; }

    void finish() { isOver_ = true; }
    [[nodiscard]] bool isOver() const { return isOver_; }

    // Of the receipts of the session: whatever is open is this one.
    [[nodiscard]] bool hasBegunLast() const { return begin_ != 0 && begin_ == session_.lastBegin(); }
    [[nodiscard]] bool isOpen() const { return isTaken_ && !isOver_ && hasBegunLast(); }

    Outcome requireNoDoubt() { return doubt_ && !isOver_ ? failed(*doubt_) : Outcome(Done()); }

    // What is sent goes into whatever receipt the printer has open.
    Outcome requireOpen(std::string_view call)
    {
        Outcome required = requireNoDoubt();
        if (required && !session_.isOpen()) {
            return failed(closed(call));
        }
        return required && !isOpen() ? failed(notBegun(call)) : required;
    }

    // ---- Calling and asking ----

    // One call; whatever leaves its outcome open is remembered.
    template <typename Function, typename... Arguments>
    Outcome send(std::string_view name, Function function, const Arguments&... arguments)
    {
        Outcome sent = session_.call(name, function, session_.device(), arguments...);
        if (sent) {
            return sent;
        }
        return sent.error().kind == Kind::outcomeUnknown ? doubted(sent.error()) : failed(sent.error());
    }

    // Whether the printer has this amount too, if it can be asked.
    Outcome check(std::string_view call, const std::string& question, Decimal expected,
                  const std::string& what)
    {
        if (!session_.questions().canBeAsked) {
            return Done();
        }
        const Result<std::string> said = answer(session_, question);
        return said ? compare(call, *said, expected, what) : doubtedAnswer(call, said.error());
    }

    // Whether the last receipt is another one now, of this total, whose number is given.
    Result<std::string> checkEnd(Decimal total)
    {
        const Result<std::vector<std::string>> last =
            withLastNumber(session_, {session_.questions().lastTotal});
        if (!last) {
            return doubtedAnswer("paragonEnd", last.error()).error();
        }
        if (last->front() == numberBefore_) {
            return doubted(doubt("paragonEnd", "The printer's last receipt is still " + last->front() + "."))
                .error();
        }
        const Outcome compared = compare("paragonEnd", last->back(), total, "the total of the last receipt");
        return compared ? Result<std::string>(last->front()) : compared.error();
    }

    // Whether none is open and the last receipt is that of before, if the printer can be asked.
    Outcome checkCancel()
    {
        if (!session_.questions().canBeAsked) {
            return Done();
        }
        const Standing now = standing();
        if (!now) {
            return doubtedAnswer("destroyParagon", now.error());
        }
        if (now->front() != numberBefore_ || !isClosed(*now)) {
            return doubted(doubt("destroyParagon", "The printer's last receipt is " + now->front() +
                                                       ", and its state " + now->back() + "."));
        }
        return Done();
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

private:
    // The last receipt's number and the state.
    using Standing = Result<std::vector<std::string>>;
    Standing standing() { return withLastNumber(session_, {session_.questions().state}); }
    [[nodiscard]] bool isClosed(const std::vector<std::string>& standing) const
    {
        return standing.back() == session_.questions().closed;
    }

    Result<std::optional<std::string>> failedBegin(const Failure& failure) { return failed(failure).error(); }

    Outcome doubtedAnswer(std::string_view call, const Failure& failure)
    {
        return doubted(doubt(call, "The printer does not say what it has done (" + reason(failure) + ")."));
    }

    Outcome compare(std::string_view call, const std::string& said, Decimal expected, const std::string& what)
    {
        if (Decimal::parse(said) == expected) {
            return Done();
        }
        return doubted(doubt(call, "For the printer " + what + " is \"" + said + "\", for the till " +
                                       expected.text(2).value_or("another") +
                                       ": something was carried out twice, or not at all."));
    }

    Session session_;            // as it was lent: it may have ended
    unsigned begin_ = 0;         // of all in the session; 0 for none
    bool isTaken_ = false;       // by the printer, which answered begin with 0
    bool isOver_ = false;        // ended, cancelled, or recovered without a person: nothing of it is open
    bool isAnotherOpen_ = false; // so that this one was not begun
    std::optional<std::string> numberBefore_;
    std::optional<Failure> failure_;
    std::optional<Failure> doubt_; // after which nothing more is sold into it
};

} // namespace telvofm::inside
