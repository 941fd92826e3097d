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

void Draft::printInReceipt(Line line)
{
    receipt().document.lines.push_back(line);
    print(std::move(line));
}

} // namespace virtual_printer
