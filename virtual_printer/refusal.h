// Why the printer refuses: the error codes of its negative replies, in one place. docs/virtual-printer.md
// lists them for users.
#pragma once

namespace virtual_printer {

enum class Refusal : unsigned char
{
    none = 0,
    wrongChecksum = 1,
    unknownCommand = 2,
    wrongFields = 3,   // too few fields
    badNumber = 4,     // a field that is no decimal number
    badDate = 5,       // a bound that is no date
    noSellingDay = 10, // sellingDayBegin is due
    receiptIsOpen = 11,
    noReceipt = 12,
    receiptIsBeingPaid = 13, // no items after the first payment
    nothingToVoid = 14,      // no such item in this receipt
    paidTooLittle = 15,
    nothingSold = 16, // there is no receipt to repeat
    unknownVariable = 20,
    unknownIdentifier = 21, // receipts are not looked up by that
};

} // namespace virtual_printer
