// The connection to a printer, and every function of the library with texts in UTF-8.
#pragma once

#include "telvofm.h"

#include "arguments.hpp"
#include "text.hpp"

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace telvofm {

static_assert(sizeof(void*) == 8, "TelvoFM is a 64-bit library: build your program for a 64-bit system");

class Decimal;
class Receipt;

// The printer's own names of the variables that a receipt asks for. These are those of the virtual printer.
struct Questions
{
    std::string lastReceipt = "LAST_RECEIPT";
    std::string lastTotal = "LAST_TOTAL";
    std::string state = "STATE";
    std::string closed = "closed"; // what `state` is while no receipt is open
    std::string total = "TOTAL";
    std::string due = "DUE";
    bool canBeAsked = true; // false for a printer that knows none of this
};

namespace inside {

class ReceiptCalls;

} // namespace inside

// A printer that is connected for as long as this lives. A program has one at a time: a second one beside it
// is refused. What fails is a Failure of the kind refused, notExecuted or outcomeUnknown. Texts are UTF-8
// here and go out in Windows-1250; one that does not fit is a textError, and nothing was sent.
class Session
{
public:
    // "192.168.1.10:9100", or "COM3" for a serial port; `device` is the printer's own address, whose low byte
    // is sent. Fails when no printer answers, while another session is open, with questions of which some are
    // missing, and with a library of another interface.
    static Result<Session> open(std::string_view address, int device = 1, Questions questions = {})
    {
        constexpr int version = 106; // of the interface that this header is for
        if (getVersion() != version) {
            return wrongArgument(Kind::libraryError,
                                 "the library that was found has version " + std::to_string(getVersion()) +
                                     " of the interface, and telvofm.hpp needs " + std::to_string(version) +
                                     "; take both from the same release");
        }
        // With some of the names recovery would take another receipt for its own.
        const auto names = {questions.lastReceipt, questions.lastTotal, questions.state,
                            questions.closed,      questions.total,     questions.due};
        if (questions.canBeAsked && std::find(names.begin(), names.end(), "") != names.end()) {
            return wrongArgument(Kind::notExecuted,
                                 "some of the printer's names are missing in the questions; "
                                 "give all of them, or .canBeAsked = false");
        }
        if (isAnyOpen()) {
            return wrongArgument(Kind::notExecuted,
                                 "a session is open, and a program has one at a time; let it end first");
        }
        Session session(address, device, std::move(questions));
        if (Outcome opened = session.connect(); !opened) {
            return opened.error();
        }
        return session;
    }

    Session(Session&&) = default;
    Session& operator=(Session&&) = delete;

    // Whether it is still open: not when it was moved away. One whose reopen() failed is.
    [[nodiscard]] bool isOpen() const { return !open_.expired(); }

    // Closes the connection and opens it again. The library forgets the settings and pictures of the session.
    // One that has ended fails and does not touch the connection of another.
    Outcome reopen()
    {
        if (!isOpen()) {
            return closed("openFM");
        }
        closeFM();
        return connect();
    }

    // Calls a function of telvofm.h that returns 0 or a code: call("setHeader", setHeader, 1, "0000", 1,
    // "Potraviny"). Gives the seconds that it took. A std::filesystem::path is the name of a file.
    template <typename... Parameters, typename... Arguments>
    Outcome call(std::string_view name, int (*function)(Parameters...), const Arguments&... arguments)
    {
        static_assert(!inside::fillsABuffer(static_cast<int (*)(Parameters...)>(nullptr)),
                      "a buffer that is too short ends the process: use the function's twin for result "
                      "objects, and read()");
        static_assert(
            !inside::narrowsAny<Arguments...>(static_cast<int (*)(Parameters...)>(nullptr)),
            "a number does not fit its parameter: 12.5 would be 12; cast it yourself if you mean it");
        return passOn(name, function, inside::converted(arguments)...);
    }

    // The bytes that a function delivers into a result object, which is its last argument and left out here:
    // read("getJournalStructZ_ResultObject", getJournalStructZ_ResultObject, 1, 1, 20).
    template <typename... Parameters, typename... Arguments>
    Result<std::string> read(std::string_view name, int (*function)(Parameters...),
                             const Arguments&... arguments)
    {
        const std::unique_ptr<ResultObject, decltype(&destroyResultObject)> result(createResultObject(),
                                                                                   &destroyResultObject);
        if (Outcome outcome = call(name, function, arguments..., result.get()); !outcome) {
            return outcome.error();
        }
        const auto length = static_cast<unsigned>(getResultObjectLength(result.get())); // the low 32 bits
        return std::string(getResultObjectString(result.get()), length);
    }

    // Opens the selling day; `saleMode` is the printer's number. False when the printer refused, as it does
    // when the day is open already. NOLINTNEXTLINE(readability-make-member-function-const): it changes the
    // printer
    Result<bool> beginDay(int saleMode = 0)
    {
        const Outcome begun = call("sellingDayBegin", sellingDayBegin, device_, saleMode);
        if (!begun && begun.error().name != "refused") { // late or not: then an earlier try has opened it
            return begun.error();
        }
        return begun.has_value();
    }

    // The text of a variable of the printer's; refused when it has none of that name.
    Result<std::string> variable(std::string_view name)
    {
        return decoded(read("getVariableResultObject", getVariableResultObject, device_, name));
    }
    // The text of the last receipt.
    Result<std::string> lastReceipt()
    {
        return decoded(read("getLastParagonResultObject", getLastParagonResultObject, device_));
    }
    // The text of the whole electronic journal, of any length.
    Result<std::string> journal()
    {
        return decoded(read("getJournal_ResultObject", getJournal_ResultObject, device_));
    }

    // A receipt that is not begun yet; sends nothing. When the session ends before it, its calls fail.
    Receipt receipt();
    // A receipt that a till left when it was switched off: call recover() on it. The number of the last
    // receipt before it, and its total, are those that the till kept; it counts as paid in full, unless that
    // total is 0.
    Receipt interruptedReceipt(std::string numberBefore, Decimal total);

    // The printer's own address.
    [[nodiscard]] int device() const { return device_; }
    // How the printer calls what a receipt asks for.
    [[nodiscard]] const Questions& questions() const { return questions_; }

private:
    friend class inside::ReceiptCalls;

    // Closes the connection with its only owner, a session.
    struct Connection
    {
        unsigned begins = 0; // of receipts; whatever is open is the last one's

        Connection() { isAnyOpen() = true; }
        ~Connection()
        {
            closeFM();
            isAnyOpen() = false;
        }
        Connection(const Connection&) = delete;
        Connection& operator=(const Connection&) = delete;
    };

    Session(std::string_view address, int device, Questions questions)
        : address_(address), device_(device), questions_(std::move(questions)),
          connection_(std::make_shared<Connection>()), open_(connection_)
    {
    }

    // The number of another begin, and of the last one; 0 when the session has ended.
    [[nodiscard]] unsigned nextBegin() const
    {
        const std::shared_ptr<Connection> open = open_.lock();
        return open ? ++open->begins : 0;
    }
    [[nodiscard]] unsigned lastBegin() const
    {
        const std::shared_ptr<Connection> open = open_.lock();
        return open ? open->begins : 0;
    }

    // The same session for a receipt, which does not keep it open.
    [[nodiscard]] Session lent() const { return {*this, open_}; }
    Session(const Session& lender, std::weak_ptr<Connection> open)
        : address_(lender.address_), device_(lender.device_), questions_(lender.questions_),
          open_(std::move(open))
    {
    }

    static bool& isAnyOpen()
    {
        static bool is = false;
        return is;
    }

    Outcome connect()
    {
        Outcome opened = call("openFM", openFM, address_);
        if (!opened) {
            closeFM(); // due after a failed open, too
        }
        return opened;
    }

    template <typename Function, typename... Converted>
    Outcome passOn(std::string_view name, Function function, const Converted&... arguments)
    {
        const Failure* wrong = nullptr;
        ((wrong = wrong == nullptr && !arguments.has_value() ? &arguments.error() : wrong), ...);
        if (wrong != nullptr) {
            return *wrong;
        }
        if (!isOpen()) {
            return closed(name);
        }
        const auto started = std::chrono::steady_clock::now();
        const int code = function(inside::passed(*arguments)...);
        const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - started;
        if (code != 0) {
            return failureOf(name, code, seconds.count());
        }
        return Done{seconds.count()};
    }

    static Result<std::string> decoded(const Result<std::string>& bytes)
    {
        return bytes ? Result<std::string>(decode(*bytes)) : bytes;
    }

    std::string address_;
    int device_;
    Questions questions_;
    std::shared_ptr<Connection> connection_; // none in what a receipt was lent
    std::weak_ptr<Connection> open_;
};

} // namespace telvofm
