// What has become of a receipt when something failed: what the printer is asked, and what follows from its
// answers.
#pragma once

#include "answers.hpp"
#include "decimal.hpp"
#include "session.hpp"

#include <optional>
#include <string>
#include <vector>

namespace telvofm {

// What has become of a receipt.
enum class Verdict
{
    sold,      // nothing is to be sold again
    notSold,   // none is open: it can be sold again
    askAPerson // the printer does not say; a person has to look at the paper
};

// What has become of a receipt, and why in one sentence.
struct Recovery
{
    Verdict verdict;
    std::string sentence;
    std::string number; // if it is sold

    // "sold: ", "not sold: " or "ask a person: ", and the sentence.
    [[nodiscard]] std::string text() const
    {
        const char* const said = verdict == Verdict::sold      ? "sold: "
                                 : verdict == Verdict::notSold ? "not sold: "
                                                               : "ask a person: ";
        return said + sentence;
    }
};

namespace inside {

// What the till knows of a receipt.
struct KnownReceipt
{
    bool isBegun;                            // or may be
    bool isAnotherOpen;                      // so that this one was not begun
    bool hasBegunLast;                       // of the receipts of its session
    std::optional<std::string> numberBefore; // the last receipt's; none when the printer cannot be asked
    Decimal total;
    Decimal paid;
    bool isFinished; // as far as the till goes: paid in full, refused or not, or told to end
};

inline Recovery soldAs(const std::string& number, Decimal total)
{
    return {Verdict::sold, "receipt " + number + ", total " + total.text(2).value_or("an amount"), number};
}

// Ends or cancels the receipt if it is open. Whether that worked is asked afterwards.
inline Outcome finish(Session& session, const KnownReceipt& known)
{
    const Questions& questions = session.questions();
    const Result<std::vector<std::string>> now = withLastNumber(session, {questions.state});
    if (!now) {
        return now.error();
    }
    if (now->front() != known.numberBefore || now->back() == questions.closed) {
        return Done();
    }
    if (known.isFinished) {
        const Result<std::string> total = answer(session, questions.total);
        const Result<std::string> due = answer(session, questions.due);
        if (!total || !due) {
            return total ? due.error() : total.error();
        }
        if (Decimal::parse(*total) == known.total && Decimal::parse(*due) == Decimal()) {
            const bool isEmpty = known.total == Decimal() && known.paid == Decimal();
            const Outcome ended = session.call("paragonEnd", paragonEnd, session.device(), 0, 0);
            if (ended || ended.error().kind != Kind::refused || !isEmpty) {
                return Done();
            }
        }
    }
    destroyParagon(session.device(), 0, "");
    return Done();
}

inline Result<Recovery> judged(Session& session, const KnownReceipt& known)
{
    const Questions& questions = session.questions();
    const Result<std::vector<std::string>> now =
        withLastNumber(session, {questions.lastTotal, questions.state});
    if (!now) {
        return now.error();
    }
    const std::string& number = now->front();
    const std::string& lastTotal = (*now)[1];
    const bool isClosed = now->back() == questions.closed;
    if (isClosed && number == known.numberBefore) {
        return Recovery{
            Verdict::notSold,
            "receipt " + number + " is still the last one, and none is open; it can be sold again", ""};
    }
    if (isClosed && known.isFinished && Decimal::parse(lastTotal) == known.total) {
        return soldAs(number, known.total);
    }
    return Recovery{Verdict::askAPerson,
                    "the printer's last receipt is " + number + " with " + lastTotal +
                        (isClosed ? "" : ", and one is open") + "; the till sold " +
                        known.total.text(2).value_or("an amount") + " after receipt " + *known.numberBefore +
                        "; look at the paper before it is sold again",
                    ""};
}

// Asks the printer what has become of a receipt, over a new connection. If it is open it is ended when the
// till has finished it and it is paid as it should be, and cancelled otherwise, as an empty one is whose end
// is refused.
inline Recovery askedRecovery(Session& session, const KnownReceipt& known)
{
    Outcome reopened = session.reopen();
    Outcome finished = reopened.and_then([&](Done&) { return finish(session, known); });
    const Result<Recovery> recovery = finished.and_then([&](Done&) { return judged(session, known); });
    if (!recovery) {
        return {Verdict::askAPerson,
                "the printer does not say what it has done; look at its paper before this receipt is sold "
                "again (" +
                    reason(recovery.error()) + ")",
                ""};
    }
    return *recovery;
}

// The same, unless the receipt or its session is not what is open.
inline Recovery recovered(Session& session, const KnownReceipt& known)
{
    if (known.isAnotherOpen) {
        return {Verdict::askAPerson,
                "another receipt is open, and this one was not begun; end that one with paragonEnd or cancel "
                "it with destroyParagon, called through the session, before this one is sold",
                ""};
    }
    if (!known.isBegun) {
        return {Verdict::notSold, "the receipt was not begun", ""};
    }
    if (!session.isOpen()) {
        return {Verdict::askAPerson,
                "the session of this receipt is closed; look at the printer's paper before it is sold again, "
                "or recover it as an interrupted receipt of another session",
                ""};
    }
    if (!session.questions().canBeAsked || known.numberBefore.value_or("").empty()) {
        return {Verdict::askAPerson,
                "this printer cannot be asked; look at its paper before this receipt is sold again", ""};
    }
    if (!known.hasBegunLast) {
        return {Verdict::askAPerson,
                "another receipt was begun since, and is left alone; look at the printer's paper before this "
                "one is sold again",
                ""};
    }
    return askedRecovery(session, known);
}

} // namespace inside
} // namespace telvofm
