#include "commands/receipt/items.h"

namespace telvofm::receipt {
namespace {

Request itemRequest(Device& printer, int address, Command command, int row, const Item& item)
{
    return printer.request(address, command)
        .number(row)
        .paddedText(item.commodityName, printer.itemNameWidth())
        .amount(item.totalPrice, 2)
        .character(item.vat)
        .amount(item.amount, 3)
        .amount(item.unitPrice, 2)
        .fixedText(item.unit, 3);
}

} // namespace

void sellItem(Device& printer, int address, int row, const Item& item)
{
    printer.send(itemRequest(printer, address, Command::itemSale, row, item));
}

void voidItem(Device& printer, int address, int row, const Item& item, std::string_view receiptNumber)
{
    printer.send(itemRequest(printer, address, Command::itemVoid, row, item).text(receiptNumber));
}

void returnItem(Device& printer, int address, int row, const Item& item, std::string_view receiptNumber)
{
    printer.send(itemRequest(printer, address, Command::itemReturn, row, item).text(receiptNumber));
}

void negativeItem(Device& printer, int address, int row, const Item& item)
{
    printer.send(itemRequest(printer, address, Command::itemNegative, row, item));
}

} // namespace telvofm::receipt
