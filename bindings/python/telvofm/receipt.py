"""A receipt, from its beginning to its end, and what happened to it when something failed."""
from decimal import Decimal

from .amounts import money, paid as paid_text, quantity as quantity_text
from .answers import answer, is_amount, is_closed, with_last_number
from .failures import (AmountError, Failure, NotExecuted, OutcomeUnknown, Refused, already_begun, another_open, doubt, not_begun, not_ours,
                       reason, unanswered)
from .recovery import Known, Recovery, Verdict, asked, sold
from .texts import letter


class Receipt:
    """A receipt that compares its own total with the printer's; Session.receipt() makes it.

    number_before   the last receipt's number before this one began
    paid            what is paid so far

    What is sent raises Refused (the receipt goes on), OutcomeUnknown (it takes nothing more) or NotExecuted, each a Failure. It is
    NotExecuted, too, and nothing is sent, when begin() has not worked, when the receipt is over, and when another object of the session
    has begun one since: what is open then is not this one. Texts go out in Windows-1250: TextError names a character that it lacks.
    Amounts are Decimal or int: AmountError is for any other type, and for more decimals than money (2) or quantities (3) have. After
    these two nothing was sent.
    """

    def __init__(self, session):
        self._session = session
        self._start_afresh()

    def _start_afresh(self):
        self._begun = False  # or may be
        self._is_taken = False  # by the printer, which answered begin with 0
        self._is_over = False  # ended, cancelled, or recovered without a person: nothing of it is open
        self._outcome = None  # what has become of it, when that is certain
        self._is_another_open = False  # so that this one was not begun
        self._doubt = None  # the failure after which nothing more is sold into it
        self.number_before = None
        self.total = Decimal(0)
        self.paid = Decimal(0)
        self._is_compared = False  # its total with the printer's, before the first payment
        self._is_finished = False  # as far as the till goes: paid in full, refused or not, or told to end

    @classmethod
    def interrupted(cls, session, number_before, total):
        """Session.interrupted_receipt() makes it."""
        if not isinstance(number_before, str):
            raise TypeError(f"the last receipt's number is a str, as the printer gave it; {number_before!r} is none")
        receipt = cls(session)
        receipt._begun = True
        receipt.number_before = number_before
        receipt.total = receipt.paid = total
        receipt._is_finished = total != 0  # a till that has kept no total says 0
        receipt._doubt = doubt("recover", "The till was interrupted in this receipt.")
        session.begun_last = receipt
        return receipt

    @property
    def total(self):
        """What is sold so far; yours to correct after calls of your own."""
        return self._total

    @total.setter
    def total(self, total):
        """Raises AmountError as the calls do."""
        money(total)
        self._total = total

    # ---- Selling ----

    def begin(self, sale_type=1, commission=0, receipt_type=0, recapitulation=1, picture=0):
        """Opens the receipt; what the numbers mean is the printer's matter. After a failure call recover() before anything else: the
        printer may have opened it and refused the same request when it was sent again. Raises NotExecuted also while any receipt is
        open, and when the printer does not say whether one is; it is asked again over a new connection before, which forgets the
        settings and pictures of the session. Raises OutcomeUnknown also while it is unknown what became of the receipt that was begun
        before with this object."""
        if self._doubt and not self._is_over:
            raise self._doubt
        if not self._is_open():
            self._start_afresh()
        number_before = self._number_while_none_is_open() if self._session.questions else None
        self._start_afresh()
        self.number_before = number_before
        self._begun = True
        if self._session.questions:
            self._session.begun_last = self  # whatever is open from here on is this one
        try:
            self._send("paragonBegin", self._session.device, 0, sale_type, commission, receipt_type, recapitulation, picture)
        except NotExecuted:
            self._begun = False
            raise
        self._session.begun_last = self
        self._is_taken = True

    def sell(self, name, total, vat, quantity=1, unit_price=None, unit=""):
        """Sells an item: `total` for `quantity` of `unit` at `unit_price` each, which is `total` if nothing is said, under
        the printer's letter of a VAT rate. The library sends no more than 3 bytes of `unit`."""
        self._line("itemSale_str", total, name, money(total), letter(vat), quantity_text(quantity),
                   money(total if unit_price is None else unit_price), unit)

    def void(self, name, total, vat, quantity=1, unit_price=None, unit=""):
        """Takes an item of this receipt back, which was sold with the same arguments."""
        self._line("itemVoid_str", -total, name, money(total), letter(vat), quantity_text(quantity),
                   money(total if unit_price is None else unit_price), unit, "")

    def discount(self, description, amount, vat, operation=0):
        """A discount of a sum on the item that was sold last; `operation` is the printer's number for that."""
        self._line("itemDiscount_str", -amount, description, operation, money(amount), letter(vat))

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
        number, last_total = self._ask("paragonEnd", with_last_number, "last_total")
        if number == self.number_before:
            self._fail(doubt("paragonEnd", f"The printer's last receipt is still {number}."))
        self._compare("paragonEnd", "the total of the last receipt", last_total, self.total)
        self._finish(sold(number, self.total))
        return number

    def cancel(self, description=""):
        """Cancels the receipt; the printer prints the description. Raises NotExecuted, too, when it was not begun, is over, or when what
        is open may be another one: that is left alone. Raises OutcomeUnknown also when a receipt is open behind it, or another one is
        the last."""
        if not self._begun or self._is_over or not self._has_begun_last():
            raise not_ours("destroyParagon")
        self._send("destroyParagon", self._session.device, 0, description)
        if self._session.questions:
            number, state = self._ask("destroyParagon", with_last_number, "state")
            if number != self.number_before or not is_closed(self._session, state):
                self._fail(doubt("destroyParagon", f"The printer's last receipt is {number}, and its state {state}."))
        self._finish(Recovery(Verdict.NOT_SOLD, "the receipt is cancelled"))

    # ---- Comparing ----

    def _has_begun_last(self):
        """Of the receipts of the session: whatever is open is this one."""
        return self._session.begun_last is self

    def _number_while_none_is_open(self):
        """The last receipt's. One wrong answer is not believed, and a connection that is dead or has shifted is opened again."""
        session = self._session
        try:
            number, state = with_last_number(session, "state")
        except Failure:
            number = state = None
        if number and is_closed(session, state):
            return number
        if number:
            self._require_not_open()
        session.reopen()
        try:
            number, state = with_last_number(session, "state")
        except OutcomeUnknown as failure:
            raise unanswered("paragonBegin", failure) from None
        if not is_closed(session, state):
            self._require_not_open()
            self._is_another_open = True
            raise another_open("paragonBegin")
        return number

    def _is_open(self):
        return self._is_taken and not self._is_over and self._has_begun_last()

    def _require_not_open(self):
        if self._is_open():
            raise already_begun("paragonBegin")

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
        if self._session.questions:
            self._compare(call, what, self._ask(call, answer, question), expected)

    def _compare(self, call, what, said, expected):
        if not is_amount(said, expected):
            self._fail(doubt(call, f"For the printer {what} is {said!r}, for the till {money(expected)}: something was carried out twice, "
                                   "or not at all."))

    def _ask(self, call, ask, question):
        """What `ask` gives; a question that fails leaves the call in doubt."""
        try:
            return ask(self._session, question)
        except Failure as failure:
            self._fail(doubt(call, f"The printer does not say what it has done ({reason(failure)})."))

    def _fail(self, failure):
        self._doubt = failure
        raise failure

    def _finish(self, outcome):
        self._outcome, self._is_over = outcome, True

    # ---- Recovering ----

    def recover(self):
        """Asks the printer what has become of this receipt. One that is still open is ended when it is paid as it should be, and
        cancelled otherwise. Raises nothing for what the printer does, and may be called again: what is certain, as behind an end() or a
        cancel() that worked, stays as it was said, and the printer is not asked again. When the session is closed it asks nobody,
        whoever has opened another: a person has to look."""
        if self._outcome:
            return self._outcome
        if self._is_another_open:
            return Recovery(Verdict.ASK_A_PERSON, "another receipt is open, and this one was not begun; end that one with paragonEnd or "
                                                  "cancel it with destroyParagon, called through the session, before this one is sold")
        if not self._begun:
            return Recovery(Verdict.NOT_SOLD, "the receipt was not begun")
        if not self._session.is_open:
            return Recovery(Verdict.ASK_A_PERSON, "the session of this receipt is closed; look at the printer's paper before it is sold again, "
                                                  "or recover it as an interrupted receipt of another session")
        if not self._session.questions or not self.number_before:
            return Recovery(Verdict.ASK_A_PERSON, "this printer cannot be asked; look at its paper before this receipt is sold again")
        if not self._has_begun_last():
            return Recovery(Verdict.ASK_A_PERSON, "another receipt was begun since, and is left alone; look at the printer's paper before this "
                                                  "one is sold again")
        recovery = asked(self._session, Known(self.number_before, self.total, self.paid, self._is_finished))
        if recovery.verdict != Verdict.ASK_A_PERSON:
            self._finish(recovery)
        return recovery
