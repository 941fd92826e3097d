#include "virtual_printer/fiscal/printing.h"

#include "virtual_printer/fiscal/receipt_lines.h"

namespace virtual_printer {

Verdict printHere(Draft& draft, Line line)
{
    if (draft.state().receipt) {
        return addToReceipt(draft, std::move(line));
    }
    draft.print(std::move(line));
    return Refusal::none;
}

} // namespace virtual_printer
