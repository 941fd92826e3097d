#include "commands/receipt/discounts.h"

namespace telvofm::receipt {
namespace {

Request discountRequest(Device& printer, int address, Command command, const Discount& discount)
{
    return printer.request(address, command)
        .number(discount.row)
        .text(discount.description)
        .number(discount.operationType)
        .amount(discount.value, 2);
}

// Only item discounts leave a blank out; subtotal discounts send it, which is meant.
Request itemDiscountRequest(Device& printer, int address, Command command, const Discount& discount)
{
    Request request = discountRequest(printer, address, command, discount);
    return discount.vat == ' ' ? request.empty() : request.character(discount.vat);
}

} // namespace

void discountItem(Device& printer, int address, const Discount& discount)
{
    printer.send(itemDiscountRequest(printer, address, Command::itemDiscount, discount));
}

// Here the VAT letter stands before the total and with the subtotal behind it; both orders are meant.
void discountItemWithTotal(Device& printer, int address, const Discount& discount, const Amount& totalValue)
{
    printer.send(
        itemDiscountRequest(printer, address, Command::itemDiscount2, discount).amount(totalValue, 2));
}

void subTotal(Device& printer, int address, int row, std::string_view description, int operationType)
{
    printer.send(
        printer.request(address, Command::subTotal).number(row).text(description).number(operationType));
}

void discountSubTotal(Device& printer, int address, const Discount& discount)
{
    printer.send(
        discountRequest(printer, address, Command::subTotalDiscount, discount).character(discount.vat));
}

void discountSubTotalWithTotal(Device& printer, int address, const Discount& discount,
                               const Amount& totalValue)
{
    printer.send(discountRequest(printer, address, Command::subTotalDiscount2, discount)
                     .amount(totalValue, 2)
                     .character(discount.vat));
}

} // namespace telvofm::receipt
