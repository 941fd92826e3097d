// Texts on the paper and on the display that belong to no sale.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/printing.h"
#include "virtual_printer/fiscal/ranges.h"

namespace virtual_printer {
namespace {

constexpr int customer = 0; // and 1 is the operator's
constexpr int mostDisplays = 1;

Verdict checkRow(const Fields& fields)
{
    constexpr int largestRow = 999;
    return checkRange(fields, 0, 0, largestRow);
}

void put(Draft& draft, int display, const std::string& text)
{
    if (display != customer) {
        draft.hardware().operatorDisplay = text;
        return;
    }
    draft.hardware().display = text;
    draft.show(DisplayShows{text});
}

} // namespace

// A text in an open receipt belongs to it. Of the row only the range is looked at: texts follow each other.
Verdict announce(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkRow(fields);
    return verdict == Refusal::none ? printHere(draft, Line{.text = fields.text(1)}) : verdict;
}

Verdict announceNotFiscal(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkRow(fields);
    if (verdict == Refusal::none) {
        draft.print({.kind = Line::Kind::notFiscal});
        draft.print({.text = fields.text(1)});
    }
    return verdict;
}

Verdict showOnDisplay(Draft& draft, const Fields& fields)
{
    constexpr std::size_t displaySize = 40; // two lines of twenty
    const std::string text = fields.text(2);
    Verdict verdict =
        firstOf({checkRange(fields, 0, customer, mostDisplays), checkLength(fields, 2, 0, displaySize)});
    if (verdict == Refusal::none) {
        put(draft, fields.whole(0), text);
    }
    return verdict;
}

Verdict clearDisplay(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkRange(fields, 0, customer, mostDisplays);
    if (verdict == Refusal::none) {
        put(draft, fields.whole(0), {});
    }
    return verdict;
}

} // namespace virtual_printer
