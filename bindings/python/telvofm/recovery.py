"""What has become of a receipt when something failed: what the printer is asked, and what follows from its answers."""
import enum
import typing

from .amounts import money
from .answers import answer, is_amount, is_closed, with_last_number
from .failures import Failure, Refused, reason


class Verdict(enum.Enum):
    """What has become of a receipt: nothing is to be sold again, it can be sold again, or a person has to look at the paper."""

    SOLD = "sold"
    NOT_SOLD = "not sold"
    ASK_A_PERSON = "ask a person"


class Recovery(typing.NamedTuple):
    """What has become of a receipt, and why in one sentence; `number` if it is sold."""

    verdict: Verdict
    sentence: str
    number: str = ""

    def __str__(self):
        return f"{self.verdict.value}: {self.sentence}"


class Known(typing.NamedTuple):
    """What the till knows of a receipt that it asks for."""

    number_before: str
    total: object
    paid: object
    is_finished: bool  # as far as the till goes: paid in full, refused or not, or told to end


def sold(number, total):
    """Of the receipt of this number."""
    return Recovery(Verdict.SOLD, f"receipt {number}, total {money(total)}", number)


def asked(session, known):
    """Asks the printer over a new connection. A receipt that is open is ended when the till has finished it and it is paid as it should
    be, and cancelled otherwise, as an empty one is whose end is refused."""
    try:
        session.reopen()
        _finish(session, known)
        return _judged(session, known)
    except Failure as failure:
        return Recovery(Verdict.ASK_A_PERSON, "the printer does not say what it has done; look at its paper before this receipt is sold "
                                              f"again ({reason(failure)})")


def _finish(session, known):
    """Whether that worked, _judged() sees."""
    number, state = with_last_number(session, "state")
    if number != known.number_before or is_closed(session, state):
        return
    is_paid = (known.is_finished and is_amount(answer(session, "total"), known.total) and is_amount(answer(session, "due"), 0))
    try:
        if not is_paid or _is_refused_as_empty(session, known):
            session.call("destroyParagon", session.device, 0, "")
    except Failure:
        pass


def _is_refused_as_empty(session, known):
    """Ends the receipt, unless the printer refuses that and nothing was sold in it."""
    try:
        session.call("paragonEnd", session.device, 0, 0)
    except Refused:
        return known.total == 0 and known.paid == 0
    return False


def _judged(session, known):
    number, last_total, state = with_last_number(session, "last_total", "state")
    is_none_open = is_closed(session, state)
    if is_none_open and number == known.number_before:
        return Recovery(Verdict.NOT_SOLD, f"receipt {number} is still the last one, and none is open; it can be sold again")
    if is_none_open and known.is_finished and is_amount(last_total, known.total):
        return sold(number, known.total)
    return Recovery(Verdict.ASK_A_PERSON, f"the printer's last receipt is {number} with {last_total}"
                                          f"{'' if is_none_open else ', and one is open'}; the till sold {money(known.total)} after receipt "
                                          f"{known.number_before}; look at the paper before it is sold again")
