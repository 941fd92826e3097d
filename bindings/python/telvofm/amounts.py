"""Amounts as the library takes them: text with a point and a fixed number of decimals."""
from decimal import Decimal, InvalidOperation

from .failures import AmountError

MONEY = 2
QUANTITY = 3


def amount(value, decimals):
    """The value as text. Nothing is rounded: what does not fit is refused, and so is a binary fraction."""
    if isinstance(value, bool) or not isinstance(value, (Decimal, int)):
        raise AmountError(f'{value!r} is no Decimal and no whole number; write Decimal("{value}")')
    try:
        fixed = Decimal(value).quantize(Decimal(1).scaleb(-decimals))
    except InvalidOperation:
        raise AmountError(f"{value} is no amount that can be sent") from None
    if not fixed.is_finite():
        raise AmountError(f"{value} is no amount that can be sent")
    if fixed != value:
        raise AmountError(f"{value:f} has more than {decimals} decimals; round it first")
    return f"{fixed + 0:f}"  # + 0: there is no -0.00


def money(value):
    """With 2 decimals. Raises AmountError for more."""
    return amount(value, MONEY)


def quantity(value):
    """With 3 decimals. Raises AmountError for more."""
    return amount(value, QUANTITY)


def paid(value):
    """An amount paid. Zero is refused: for some printers it means all that is due."""
    if not value:
        raise AmountError("a payment of 0 can mean all that is due; say the amount")
    return money(value)
