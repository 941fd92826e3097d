// What has become of a receipt when something failed: what the printer is asked, and what follows from its
// answers.
#pragma once

#include "decimal.hpp"
#include "session.hpp"

#include <optional>
#include <string>

namespace telvofm {

// What has become of a receipt.
enum class Verdict
{
    sold,      // nothing is to be sold again
    notSold,   // none is open: it can be sold again
    askAPerson // the printer does not say; a person has to look at the paper
};

// What the printer says has become of a receipt, and why in one sentence.
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
    bool isAnotherOpen;                      // since before this one
    bool hasBegunLast;                       // of the receipts of its session
    std::optional<std::string> numberBefore; // the last receipt's; none when the printer cannot be asked
    Decimal total;
    Decimal paid;
    bool isFinished; // as far as the till goes: paid in full, refused or not, or told to end
};

// What the printer says.
struct Standing
{
    std::string number;
    std::string lastTotal;
    bool isClosed;
    std::string total;
    std::string due;
};

inline Result<Standing> standing(Session& session)
{
    const Questions& questions = session.questions();
    std::string answers[5];
    std::size_t next = 0;
    for (const std::string* question :
         {&questions.lastReceipt, &questions.lastTotal, &questions.state, &questions.total, &questions.due}) {
        Result<std::string> answer = session.variable(*question);
        if (!answer) {
            return answer.error();
        }
        answers[next++] = *answer;
    }
    return Standing{answers[0], answers[1], answers[2] == questions.closed, answers[3], answers[4]};
}

// Ends or cancels the open receipt. Whether that worked is asked afterwards.
inline void finish(Session& session, const KnownReceipt& known, const Standing& now)
{
    const bool isPaid =
        known.isFinished && Decimal::parse(now.total) == known.total && Decimal::parse(now.due) == Decimal();
    if (isPaid) {
        const bool isEmpty = known.total == Decimal() && known.paid == Decimal();
        const Outcome ended = session.call("paragonEnd", paragonEnd, session.device(), 0, 0);
        if (ended || ended.error().kind != Kind::refused || !isEmpty) {
            return;
        }
    }
    destroyParagon(session.device(), 0, "");
}

inline Recovery judge(const KnownReceipt& known, const Standing& now)
{
    const std::string total = known.total.text(2).value_or("an amount");
    if (now.isClosed && now.number == known.numberBefore) {
        return {Verdict::notSold,
                "receipt " + now.number + " is still the last one, and none is open; it can be sold again",
                ""};
    }
    if (now.isClosed && Decimal::parse(now.lastTotal) == known.total) {
        return {Verdict::sold, "receipt " + now.number + ", total " + total, now.number};
    }
    return {Verdict::askAPerson,
            "the printer's last receipt is " + now.number + " with " + now.lastTotal +
                (now.isClosed ? "" : ", and one is open") + "; the till sold " + total + " after receipt " +
                *known.numberBefore + "; look at the paper before it is sold again",
            ""};
}

// Asks the printer what has become of a receipt. If it is still open it is ended when it is paid as it should
// be, and cancelled otherwise, as an empty one is whose end is refused.
inline Recovery askedRecovery(Session& session, const KnownReceipt& known)
{
    Outcome reopened = session.reopen();
    Result<Standing> now = reopened.and_then([&session](Done&) { return standing(session); });
    if (now && now->number == known.numberBefore && !now->isClosed) {
        finish(session, known, *now);
        now = standing(session);
    }
    if (!now) {
        return {Verdict::askAPerson,
                "the printer does not say what it has done; look at its paper before this receipt is sold "
                "again (" +
                    now.error().call + ": code " + std::to_string(now.error().code) + ")",
                ""};
    }
    return judge(known, *now);
}

// The same, unless the receipt or its session is not what is open.
inline Recovery recovered(Session& session, const KnownReceipt& known)
{
    if (!known.isBegun) {
        return {Verdict::notSold, "the receipt was not begun, or is cancelled", ""};
    }
    if (!session.isOpen()) {
        return {Verdict::askAPerson,
                "the session of this receipt is closed; look at the printer's paper before it is sold again, "
                "or recover it as an interrupted receipt of another session",
                ""};
    }
    if (known.isAnotherOpen) {
        return {Verdict::askAPerson,
                "another receipt was open before this one began, and is left alone; end it with paragonEnd "
                "or cancel it with destroyParagon, called through the session, before this one is sold again",
                ""};
    }
    if (!known.numberBefore) {
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
