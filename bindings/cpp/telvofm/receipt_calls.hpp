// The calls of one receipt and its questions to the printer: none is made that could go into another one, and
// none while the outcome of an earlier one is open. For telvofm::Receipt.
#pragma once

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

    // Before a begin: asks what the printer has open. Fails when it is this one, and when the outcome of an
    // earlier call is open.
    Outcome startAfresh()
    {
        if (Outcome known = requireNoDoubt(); !known) {
            return known;
        }
        std::optional<std::string> last;
        bool isOneOpen = false;
        if (const Questions& questions = session_.questions(); questions.canBeAsked) {
            const Result<std::string> number = session_.variable(questions.lastReceipt);
            const Result<std::string> state = session_.variable(questions.state);
            if (!number || !state) {
                return failed(number ? state.error() : number.error());
            }
            last = *number;
            isOneOpen = *state != questions.closed;
        }
        if (isOneOpen && isOpen()) {
            return failed(alreadyBegun("paragonBegin"));
        }
        // From here on whatever is open is this one, if it is known that none was.
        begin_ = last && !isOneOpen ? session_.nextBegin() : 0;
        isTaken_ = isOver_ = false;
        isAnotherOpen_ = isOneOpen;
        numberBefore_ = std::move(last);
        failure_.reset();
        doubt_.reset();
        return Done();
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
        begin_ = session_.nextBegin();
        numberBefore_ = std::move(numberBefore);
        doubt_ = failure_ = doubt("recover", "The till was interrupted in this receipt.");
    }

    // The last receipt's number before the begin; none when the printer cannot be asked.
    [[nodiscard]] const std::optional<std::string>& numberBefore() const { return numberBefore_; }
    // Since before the begin: whatever is open is not this one.
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

    Outcome check(std::string_view call, const std::string& question, Decimal expected,
                  const std::string& what)
    {
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

private:
    Session session_;            // as it was lent: it may have ended
    unsigned begin_ = 0;         // of all in the session; 0 for none
    bool isTaken_ = false;       // by the printer, which answered begin with 0
    bool isOver_ = false;        // ended, cancelled, or recovered without a person: nothing of it is open
    bool isAnotherOpen_ = false; // since before this one
    std::optional<std::string> numberBefore_;
    std::optional<Failure> failure_;
    std::optional<Failure> doubt_; // after which nothing more is sold into it
};

} // namespace telvofm::inside
