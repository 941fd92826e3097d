"""A receipt, from its beginning to its end, and what happened to it when something failed."""
import decimal
import enum
import typing
from decimal import Decimal

from .amounts import money, paid as paid_text, quantity as quantity_text
from .failures import AmountError, Failure, NotExecuted, OutcomeUnknown, Refused, already_begun, doubt, not_begun, not_ours


class Verdict(enum.Enum):
    """What has become of a receipt: nothing is to be sold again, it can be sold again, or a person has to look at the paper."""

    SOLD = "sold"
    NOT_SOLD = "not sold"
    ASK_A_PERSON = "ask a person"


class Recovery(typing.NamedTuple):
    """What the printer says has become of a receipt, and why in one sentence; `number` if it is sold."""

    verdict: Verdict
    sentence: str
    number: str = ""

    def __str__(self):
        return f"{self.verdict.value}: {self.sentence}"


class Receipt:
    """A receipt that compares its own total with the printer's; Session.receipt() makes it.

    number_before   the last receipt's number before this one began
    total           what is sold so far
    paid            what is paid so far

    What is sent raises Refused (the receipt goes on), NotExecuted or OutcomeUnknown (it takes nothing more), each a Failure. It is
    NotExecuted, too, and nothing is sent, when begin() has not worked, when the receipt is over, and when another object of the session
    has begun one since: what is open then is not this one. Texts go out in Windows-1250: TextError names a character that it lacks. Amounts are Decimal or int: AmountError is for any other type, and for
    more decimals than money (2) or quantities (3) have. After these two nothing was sent.
    """

    def __init__(self, session):
        self._session = session
        self._start_afresh()

    def _start_afresh(self):
        self._begun = False  # or may be
        self._is_taken = False  # by the printer, which answered begin with 0
        self._is_over = False  # ended, cancelled, or recovered without a person: nothing of it is open
        self._is_another_open = False  # since before this one: whatever is open is not ours
        self._doubt = None  # the failure after which nothing more is sold into it
        self.number_before = None
        self.total = Decimal(0)
        self.paid = Decimal(0)
        self._is_compared = False  # its total with the printer's, before the first payment
        self._is_finished = False  # as far as the till goes: paid in full, refused or not, or told to end

    @classmethod
    def interrupted(cls, session, number_before, total):
        """Session.interrupted_receipt() makes it."""
        receipt = cls(session)
        receipt._begun = receipt._is_finished = True
        receipt.number_before = number_before
        receipt.total = receipt.paid = total
        receipt._doubt = doubt("recover", "The till was interrupted in this receipt.")
        session.begun_last = receipt
        return receipt

    # ---- Selling ----

    def begin(self, sale_type=1, commission=0, receipt_type=0, recapitulation=1, picture=0):
        """Opens the receipt; what the numbers mean is the printer's matter. After a failure call recover() before anything else: the
        printer may have opened it and refused the same request when it was sent again. Raises OutcomeUnknown also when another
        receipt was open before, and while it is unknown what became of the one that was begun before with this object; NotExecuted
        also while that one is open."""
        if self._doubt and not self._is_over:
            raise self._doubt
        questions, variable = self._session.questions, self._session.variable
        number_before, is_one_open = None, None
        if questions:
            number_before = variable(questions.last_receipt)
            is_one_open = variable(questions.state) != questions.closed
        if is_one_open and self._is_open():
            raise already_begun("paragonBegin")
        self._start_afresh()
        self.number_before, self._is_another_open = number_before, bool(is_one_open)
        self._begun = True
        if is_one_open is False:
            self._session.begun_last = self  # whatever is open from here on is this one
        try:
            self._send("paragonBegin", self._session.device, 0, sale_type, commission, receipt_type, recapitulation, picture)
        except NotExecuted:
            self._begun = False
            raise
        if self._is_another_open:
            self._fail(doubt("paragonBegin", "Another receipt was open before."))
        self._session.begun_last = self
        self._is_taken = True

    def sell(self, name, total, vat, quantity=1, unit_price=None, unit=""):
        """Sells an item: `total` for `quantity` of `unit` at `unit_price` each, which is `total` if nothing is said, under
        the printer's letter of a VAT rate. The library sends no more than 3 bytes of `unit`."""
        self._line("itemSale_str", total, name, money(total), vat, quantity_text(quantity),
                   money(total if unit_price is None else unit_price), unit)

    def void(self, name, total, vat, quantity=1, unit_price=None, unit=""):
        """Takes an item of this receipt back, which was sold with the same arguments."""
        self._line("itemVoid_str", -total, name, money(total), vat, quantity_text(quantity),
                   money(total if unit_price is None else unit_price), unit, "")

    def discount(self, description, amount, vat, operation=0):
        """A discount of a sum on the item that was sold last; `operation` is the printer's number for that."""
        self._line("itemDiscount_str", -amount, description, operation, money(amount), vat)

    def pay(self, type, amount, description=""):
        """Takes a payment: `amount` under the printer's payment type. More than is due is given back. The library sends no more than 10
        bytes of `description`. Raises AmountError also for 0 and when it is paid in full, and OutcomeUnknown when the printer's total or
        what is due is not the till's."""
        arguments = (type, money(self.total), paid_text(amount), "0", description)
        self._require_open("payment_str")
        if self.paid and self._due() == 0:
            raise AmountError("nothing is left to pay")
        if not self._is_compared:
            self._check("payment_str", "total", self.total, "the total")
            self._is_compared = True
        try:
            self._send("payment_str", self._session.device, 0, *arguments)
        except OutcomeUnknown:
            self._count(amount)  # as it was meant
            raise
        except Refused:
            self._is_finished = self._due(amount) == 0  # it may have been taken before its refusal, which the printer's totals tell
            self._check("payment_str", "due", self._due(), "what is due")
            raise
        self._count(amount)
        self._check("payment_str", "due", self._due(), "what is due")

    def end(self, picture=0):
        """Ends the receipt and returns its number; an empty one if the printer cannot be asked. `picture` is the printer's number of one,
        0 for none. Raises OutcomeUnknown also when the printer's last receipt is not this one."""
        self._require_open("paragonEnd")
        self._is_finished = True
        self._send("paragonEnd", self._session.device, 0, picture)
        if not self._session.questions:
            self._is_over = True
            return ""
        number = self._ask("paragonEnd", "last_receipt")
        if number == self.number_before:
            self._fail(doubt("paragonEnd", f"The printer's last receipt is still {number}."))
        self._check("paragonEnd", "last_total", self.total, "the total of the last receipt")
        self._is_over = True
        return number

    def cancel(self, description=""):
        """Cancels the receipt; the printer prints the description. Raises NotExecuted, too, when it was not begun, is over, or when what
        is open may be another one: that is left alone."""
        if not self._begun or self._is_over or not self._has_begun_last():
            raise not_ours("destroyParagon")
        self._send("destroyParagon", self._session.device, 0, description)
        self._begun, self._is_over = False, True

    # ---- Comparing ----

    def _has_begun_last(self):
        """Of the receipts of the session: whatever is open is this one."""
        return self._session.begun_last is self

    def _is_open(self):
        return self._is_taken and not self._is_over and self._has_begun_last()

    def _require_open(self, call):
        """What is sent goes into whatever receipt the printer has open."""
        if self._doubt and not self._is_over:
            raise self._doubt
        if not self._is_open():
            raise not_begun(call)

    def _send(self, call, *arguments):
        """Sends one call of this receipt. Whatever leaves its outcome open is remembered."""
        try:
            self._session.call(call, *arguments)
        except OutcomeUnknown as failure:
            self._doubt = failure
            raise

    def _line(self, call, value, *arguments):
        self._require_open(call)
        self._send(call, self._session.device, 0, *arguments)
        self.total += value

    def _count(self, amount):
        self.paid += amount
        self._is_finished = self._due() == 0

    def _due(self, amount=Decimal(0)):
        """What is left to pay, or to pay out, after this amount too; more than that is given back."""
        due = self.total - self.paid - amount
        return due if due * self.total > 0 else Decimal(0)

    def _check(self, call, question, expected, what):
        if not self._session.questions:
            return
        answer = self._ask(call, question)
        if _number(answer) != expected:
            self._fail(doubt(call, f"For the printer {what} is {answer!r}, for the till {money(expected)}: something was carried out "
                                   "twice, or not at all."))

    def _ask(self, call, question):
        try:
            return self._session.variable(getattr(self._session.questions, question))
        except Failure as failure:
            self._fail(doubt(call, f"The printer does not say what it has done ({failure.call}: code {failure.code})."))

    def _fail(self, failure):
        self._doubt = failure
        raise failure

    # ---- Recovering ----

    def recover(self):
        """Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it should be, and
        cancelled otherwise; one that was open before this one began is left alone. Raises nothing for what the printer does, and may be
        called again. When the session is closed it asks nobody, whoever has opened another: a person has to look."""
        if not self._begun:
            return Recovery(Verdict.NOT_SOLD, "the receipt was not begun, or is cancelled")
        if not self._session.is_open:
            return Recovery(Verdict.ASK_A_PERSON, "the session of this receipt is closed; look at the printer's paper before it is sold again, "
                                                  "or recover it as an interrupted receipt of another session")
        if self._is_another_open:
            return Recovery(Verdict.ASK_A_PERSON, "another receipt was open before this one began, and is left alone; end it with paragonEnd or "
                                                  "cancel it with destroyParagon, called through the session, before this one is sold again")
        if not self._session.questions or self.number_before is None:
            return Recovery(Verdict.ASK_A_PERSON, "this printer cannot be asked; look at its paper before this receipt is sold again")
        if not self._has_begun_last():
            return Recovery(Verdict.ASK_A_PERSON, "another receipt was begun since, and is left alone; look at the printer's paper before this "
                                                  "one is sold again")
        try:
            self._session.reopen()
            self._finish()
            recovery = self._judge()
            self._is_over |= recovery.verdict != Verdict.ASK_A_PERSON
            return recovery
        except Failure as failure:
            return Recovery(Verdict.ASK_A_PERSON, "the printer does not say what it has done; look at its paper before this receipt is "
                                                  f"sold again ({failure.call}: code {failure.code})")

    def _finish(self):
        """Ends or cancels the receipt if it is open. Whether that worked, _judge() sees."""
        questions, variable = self._session.questions, self._session.variable
        if variable(questions.last_receipt) != self.number_before or variable(questions.state) == questions.closed:
            return
        is_paid = (self._is_finished and _number(variable(questions.total)) == self.total
                   and _number(variable(questions.due)) == 0)
        try:
            if not is_paid or self._is_refused_as_empty():
                self._session.call("destroyParagon", self._session.device, 0, "")
        except Failure:
            pass

    def _is_refused_as_empty(self):
        """Ends the receipt, unless the printer refuses that and nothing was sold in it."""
        try:
            self._session.call("paragonEnd", self._session.device, 0, 0)
        except Refused:
            return self.total == 0 and self.paid == 0
        return False

    def _judge(self):
        questions, variable = self._session.questions, self._session.variable
        number, total = variable(questions.last_receipt), variable(questions.last_total)
        is_closed = variable(questions.state) == questions.closed
        if is_closed and number == self.number_before:
            return Recovery(Verdict.NOT_SOLD, f"receipt {number} is still the last one, and none is open; it can be sold again")
        if is_closed and _number(total) == self.total:
            return Recovery(Verdict.SOLD, f"receipt {number}, total {money(self.total)}", number)
        return Recovery(Verdict.ASK_A_PERSON, f"the printer's last receipt is {number} with {total}"
                                              f"{'' if is_closed else ', and one is open'}; the till sold {money(self.total)} after receipt "
                                              f"{self.number_before}; look at the paper before it is sold again")


def _number(text):
    try:
        return Decimal(text.strip())
    except decimal.InvalidOperation:
        return None
