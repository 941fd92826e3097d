#include "virtual_printer/fiscal/draft.h"

#include <utility>

namespace virtual_printer {

void Draft::beginReceipt(Receipt receipt)
{
    ownReceipt = std::make_shared<Receipt>(std::move(receipt));
    next.receipt = ownReceipt;
}

void Draft::endReceipt()
{
    ownReceipt.reset();
    next.receipt.reset();
}

void Draft::show(Shown event)
{
    if (std::holds_alternative<DrawerOpens>(event)) {
        hardware().drawerIsOpen = true;
    }
    shown.push_back(std::move(event));
}

void Draft::printInReceipt(Line line)
{
    Receipt& open = receipt();
    if (line.kind != Line::Kind::powerLost) {
        open.lastItem =
            -1; // an item is discounted before the next line; the loss of power is none of the till's
    }
    open.document.lines.push_back(line);
    print(std::move(line));
}

} // namespace virtual_printer
