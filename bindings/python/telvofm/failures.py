"""What can go wrong, as exceptions that say whether the printer has carried the command out."""
from .codes import CODES

# Over TCP the library sends a request again that met silence for three seconds, and the printer may then refuse what it has
# already done: what took longer than this many seconds is not believed.
SLOW = 2.5

_EXECUTED = {"yes": "It was carried out.", "no": "It was not carried out.", "unknown": "Whether it was carried out is unknown."}


class Failure(Exception):
    """A call that did not succeed.

    call        the function of telvofm.h
    code        what it returned
    name        the code's name
    happened    what that means
    executed    "yes", "no" or "unknown": whether the printer has carried the command out
    advice      what to do
    """

    def __init__(self, call, code, name, happened, executed, advice):
        super().__init__(f"{call}: code {code} ({name}): {happened} {_EXECUTED[executed]} {advice}")
        self.call, self.code, self.name = call, code, name
        self.happened, self.executed, self.advice = happened, executed, advice


class Refused(Failure):
    """The printer understood the call and refused it."""


class NotExecuted(Failure):
    """Nothing reached the printer: none is open, this session is closed, or this receipt is not open."""


class OutcomeUnknown(Failure):
    """The printer may have carried the command out, or not, or twice."""


class TextError(ValueError):
    """A text that cannot be sent: `character` stands at `position`, counted from 0. Nothing was sent."""

    def __init__(self, sentence, character, position):
        super().__init__(sentence)
        self.character, self.position = character, position


class AmountError(ValueError):
    """An amount that cannot be sent. Nothing was sent."""


class LibraryError(OSError):
    """The library is missing, is another one, or does not fit this Python."""


def failure_of(call, code, seconds):
    """The exception for a call that returned a code after so many seconds."""
    meaning = next((meaning for meaning in CODES if meaning[0] <= code <= meaning[1]),
                   (code, code, "undocumented", "The library returned a code that it does not document.", "unknown",
                    "Ask the printer for its last receipt and totals before you repeat the call."))
    _, _, name, happened, executed, advice = meaning
    if seconds > SLOW and code > 0:
        executed = "unknown"
    kind = OutcomeUnknown if executed != "no" else Refused if code > 0 else NotExecuted
    return kind(call, code, name, happened, executed, advice)


def closed(call):
    """The exception for a call on a session that is closed."""
    return NotExecuted(call, -1, "notOpen", "This session is closed.", "no", "Open another session.")


def not_ours(call):
    """The exception for a call on a receipt that is none of the printer's now."""
    return NotExecuted(call, -1, "notOpen", "This receipt was not begun, is over, or another one may be open.", "no",
                       "To cancel another one call destroyParagon through the session.")


def not_begun(call):
    """The exception for what would go into another receipt than the one that it is called on."""
    return NotExecuted(call, -1, "notOpen", "This receipt is not open: its begin has not worked, or it is over.", "no",
                       "Call recover() if begin failed, and begin it again.")


def already_begun(call):
    """The exception for a second begin of a receipt that is open."""
    return NotExecuted(call, -1, "notOpen", "This receipt is open already, and goes on.", "no", "End it or cancel it first.")


def another_open(call):
    """The exception for a begin while a receipt is open that is not this one."""
    return NotExecuted(call, -1, "notOpen", "Another receipt is open, and is left alone.", "no", "Call recover().")


def unanswered(call, failure):
    """The exception for a begin when the printer does not say whether a receipt is open."""
    return NotExecuted(call, -1, "notOpen", f"The printer does not say whether a receipt is open ({reason(failure)}).", "no",
                       "Begin it again when the printer answers.")


def reason(failure):
    """Of a question that was not answered, for a sentence: what failed, or that the answer is none."""
    return f"{failure.call}: code {failure.code}" if failure.code else failure.happened.rstrip(".")


def doubt(call, happened):
    """The exception for a call that returned 0 and left the printer with other totals than it should."""
    return OutcomeUnknown(call, 0, "totals", happened, "unknown", "Call recover().")
