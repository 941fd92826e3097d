#include "virtual_printer/fiscal/printing.h"

#include "virtual_printer/fiscal/receipt_lines.h"

namespace virtual_printer {

Refusal printHere(Draft& draft, Line line)
{
    if (!draft.state().receipt) {
        draft.print(std::move(line));
        return Refusal::none;
    }
    draft.receipt().lastItem = -1; // a discount would stand behind this line and not behind its item
    return addToReceipt(draft, std::move(line));
}

} // namespace virtual_printer
