"""What the printer answers to the questions of a receipt, and which answers are believed: a line that damages a reply can leave a call
with 0 and an empty text, and a connection that has shifted gives the answer of the call before."""
import decimal
from decimal import Decimal

from .failures import doubt

QUESTION = "getVariableResultObject"


def answer(session, question):
    """One line of text; `question` is one of the session's. Raises OutcomeUnknown for anything else, and as session.call() does."""
    name = getattr(session.questions, question)
    text = session.variable(name)
    if not text or any(character < " " for character in text):
        raise doubt(QUESTION, f"What the printer answers for {name} is not one line of text.")
    return text


def with_last_number(session, *questions):
    """The number of the last receipt, and the answers to these questions. The number is asked for before and behind them, and raises
    OutcomeUnknown when it is not the same then."""
    number = answer(session, "last_receipt")
    answers = [answer(session, question) for question in questions]
    again = answer(session, "last_receipt")
    if again != number:
        raise doubt(QUESTION, f"The printer has two answers for {session.questions.last_receipt}: {number} and {again}.")
    return [number, *answers]


def is_closed(session, state):
    """Whether no receipt is open."""
    return state == session.questions.closed


def is_amount(text, expected):
    """Whether the text is this number, however it is written."""
    try:
        return Decimal(text.strip()) == expected
    except decimal.InvalidOperation:
        return False
