// A document as data: what was sold, taken back, noted and paid, as numbers. Its text is made from it and
// never the other way (paper/layout.h).
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/fiscal/money.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace virtual_printer {

// One entry of a document or of the paper. Which members mean something depends on the kind. `sum` is signed
// as it counts in the total: what is taken back is negative.
struct Line
{
    enum class Kind
    {
        heading,    // text, in the middle
        text,       // text
        pair,       // text at the left edge, `right` at the right one
        rule,       // a line of one character, `text`
        item,       // text (the name), quantity, unitPrice, unit, sum, vat
        itemVoid,   // as item; right: the number of a receipt, when the till sends one
        itemReturn, // as item; right: the number of the receipt it was sold on
        itemNegative,
        discount,    // text, sum (a surcharge is positive), vat, number (1: on the item in front of it)
        voucher,     // text, sum, vat; right: its number
        downPayment, // text, sum, vat
        subtotal,    // text, sum
        total,       // text, sum
        payment,     // text, number (of the type), sum (in the receipt's currency), foreign (as paid)
        change,      // text, sum
        vatSum,      // vat, number (the rate in percent), base, sum (with VAT)
        note,        // text, right (the value)
        barCode,     // text (the content), number (the kind)
        qrCode,      // text
        picture,     // number (of the picture kept), text: its dots as they were uploaded
        notFiscal,   // the line that says that the document is no fiscal one
        powerLost,   // the line that says that power was lost in the middle
        cut          // the end of the document
    };

    Kind kind = Kind::text;
    std::string text{}; // UTF-8
    std::string right{};
    std::string unit{};
    char vat = 0;
    int number = 0;
    Thousandths quantity = 0;
    Cents unitPrice = 0;
    Cents sum = 0;
    Cents base = 0;
    Cents foreign = 0;
    bool isVoided = false; // of an item: a later line has taken it back

    bool operator==(const Line&) const = default;
};

// Money by VAT letter.
using ByVat = std::map<char, Cents>;
// Money by the number of the payment type.
using ByPayment = std::map<int, Cents>;
using PaymentNames = std::map<int, std::string>;

struct Document
{
    enum class Kind
    {
        receipt,
        cancelledReceipt, // kept, without a number of its own
        drawer,
        closure,
        report, // printed and counted, not a fiscal document
    };

    Kind kind = Kind::receipt;
    int number = 0;  // of its kind; 0 for those without one
    int closure = 0; // the number of the closure that ends its day
    bool isTraining = false;
    Moment moment{};
    std::vector<Line> lines;
    Cents total = 0;
    ByVat byVat;
    ByPayment byPayment; // in the receipt's currency, what came in less the change
    std::string invoice;
    std::string transaction;

    bool operator==(const Document&) const = default;
};

} // namespace virtual_printer
