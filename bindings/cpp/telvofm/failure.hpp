// What can go wrong, as a value that says whether the printer has carried the command out.
#pragma once

#include "tables.hpp"

#include <algorithm>
#include <string>

namespace telvofm {

// What kind of failure it is; after `outcomeUnknown` a receipt takes nothing more.
enum class Kind
{
    refused,        // the printer understood the call and refused it
    notExecuted,    // nothing reached the printer: none, this session or this receipt is not open
    outcomeUnknown, // it may have been carried out, or not, or twice
    textError,      // a text that cannot be sent; nothing was sent
    amountError,    // an amount that cannot be sent; nothing was sent
    libraryError    // the library is one of another interface; nothing was sent
};

// What did not succeed.
struct Failure
{
    Kind kind;
    std::string call;     // the function of telvofm.h, empty if none was called
    int code;             // what it returned
    std::string name;     // the code's name
    std::string happened; // what that means
    Executed executed;
    std::string advice; // what to do

    // All of it as one text for a log or a cashier.
    [[nodiscard]] std::string text() const
    {
        if (call.empty()) {
            return happened;
        }
        const char* const said = executed == Executed::yes  ? "It was carried out."
                                 : executed == Executed::no ? "It was not carried out."
                                                            : "Whether it was carried out is unknown.";
        return call + ": code " + std::to_string(code) + " (" + name + "): " + happened + " " + said + " " +
               advice;
    }
};

// Over TCP the library sends a request again that met silence for three seconds, and the printer may then
// refuse what it has already done: a refusal that took longer than this many seconds is not believed.
inline constexpr double slow = 2.5;

// The failure of a call that returned a code after so many seconds.
inline Failure failureOf(std::string_view call, int code, double seconds)
{
    constexpr CodeMeaning undocumented{
        0,
        0,
        "undocumented",
        "The library returned a code that it does not document.",
        Executed::unknown,
        "Ask the printer for its last receipt and totals before you repeat the call."};
    const auto found =
        std::find_if(tables::codes.begin(), tables::codes.end(), [code](const CodeMeaning& meaning) {
            return meaning.first <= code && code <= meaning.last;
        });
    const CodeMeaning& meaning = found == tables::codes.end() ? undocumented : *found;
    const Executed executed = code > 0 && seconds > slow ? Executed::unknown : meaning.executed;
    const Kind kind = executed != Executed::no ? Kind::outcomeUnknown
                      : code > 0               ? Kind::refused
                                               : Kind::notExecuted;
    return {
        kind,     std::string(call),          code, std::string(meaning.name), std::string(meaning.happened),
        executed, std::string(meaning.advice)};
}

// The failure of a call that returned 0 and left the printer with other totals than it should.
inline Failure doubt(std::string_view call, std::string happened)
{
    return {Kind::outcomeUnknown, std::string(call), 0, "totals", std::move(happened),
            Executed::unknown,    "Call recover()."};
}

// The failure of a call on a session that has ended.
inline Failure closed(std::string_view call)
{
    return {Kind::notExecuted, std::string(call),      -1, "notOpen", "This session is closed.",
            Executed::no,      "Open another session."};
}

// The failure of a call on a receipt that is none of the printer's now.
inline Failure notOurs(std::string_view call)
{
    return {Kind::notExecuted,
            std::string(call),
            -1,
            "notOpen",
            "This receipt was not begun, is over, or another one may be open.",
            Executed::no,
            "To cancel another one call destroyParagon through the session."};
}

// The failure of what would go into another receipt than the one that it is called on.
inline Failure notBegun(std::string_view call)
{
    return {Kind::notExecuted,
            std::string(call),
            -1,
            "notOpen",
            "This receipt is not open: its begin has not worked, or it is over.",
            Executed::no,
            "Call recover() if begin failed, and begin it again."};
}

// The failure of a second begin of a receipt that is open.
inline Failure alreadyBegun(std::string_view call)
{
    return {Kind::notExecuted,
            std::string(call),
            -1,
            "notOpen",
            "This receipt is open already, and goes on.",
            Executed::no,
            "End it or cancel it first."};
}

// The failure of a begin while a receipt is open that is not this one.
inline Failure anotherOpen(std::string_view call)
{
    return {
        Kind::notExecuted, std::string(call), -1, "notOpen", "Another receipt is open, and is left alone.",
        Executed::no,      "Call recover()."};
}

// Of a question that was not answered, for a sentence: what failed, or that the answer is none.
inline std::string reason(const Failure& question)
{
    return question.code != 0 ? question.call + ": code " + std::to_string(question.code)
                              : question.happened.substr(0, question.happened.size() - 1);
}

// The failure of a begin when the printer does not say whether a receipt is open.
inline Failure unanswered(std::string_view call, const Failure& question)
{
    return {Kind::notExecuted,
            std::string(call),
            -1,
            "notOpen",
            "The printer does not say whether a receipt is open (" + reason(question) + ").",
            Executed::no,
            "Begin it again when the printer answers."};
}

// The failure of what is refused before any call.
inline Failure wrongArgument(Kind kind, std::string sentence)
{
    return {kind, "", 0, "", std::move(sentence), Executed::no, ""};
}

} // namespace telvofm
