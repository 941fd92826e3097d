// The name labels without a blank, and the `_str` exports that log under the name of another one, are meant.
#include "commands/receipt/items.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

// The quantity has three decimals; the unit price is given in ten-thousandths although it is sent with two
// decimals, which is meant.
receipt::Item itemOf(const char* name, int totalPrice, const char* vat, int amount, int unitPrice,
                     const char* unit)
{
    return {Text(name),          hundredths(totalPrice),    firstCharacter(vat),
            thousandths(amount), tenThousandths(unitPrice), Text(unit)};
}

receipt::Item itemOf(const char* name, double totalPrice, char vat, double amount, double unitPrice,
                     const char* unit)
{
    return {Text(name), number(totalPrice), vat, number(amount), number(unitPrice), Text(unit)};
}

receipt::Item itemOf(const char* name, const char* totalPrice, const char* vat, const char* amount,
                     const char* unitPrice, const char* unit)
{
    return {Text(name), text(totalPrice), firstCharacter(vat), text(amount), text(unitPrice), Text(unit)};
}

void logItem(std::string_view name, int device, int row, const receipt::Item& item)
{
    logCall(name, "Device ", device, ", row ", row, ", commodityName ", item.commodityName, ", total price ",
            item.totalPrice, ", vat ", item.vat, ", amount ", item.amount, ", unit price ", item.unitPrice,
            ", unit ", item.unit);
}

void logItem(std::string_view name, int device, int row, const receipt::Item& item, const Text& receiptNumber)
{
    logCall(name, "Device ", device, ", row ", row, ", commodityName ", item.commodityName, ", total price ",
            item.totalPrice, ", vat ", item.vat, ", amount ", item.amount, ", unit price ", item.unitPrice,
            ", unit ", item.unit, ", receiptNumber ", receiptNumber);
}

} // namespace

int itemSale(int device, int row, const char* commodityName, double totalPrice, char vat, double amount,
             double unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemSale ", device, row, item);
    return runCommand([&](Device& printer) { receipt::sellItem(printer, device, row, item); });
}

int itemSale_int(int device, int row, const char* commodityName, int totalPrice, const char* vat, int amount,
                 int unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemSale_int ", device, row, item);
    return runCommand([&](Device& printer) { receipt::sellItem(printer, device, row, item); });
}

int itemSale_str(int device, int row, const char* commodityName, const char* totalPrice, const char* vat,
                 const char* amount, const char* unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemSale_str ", device, row, item);
    return runCommand([&](Device& printer) { receipt::sellItem(printer, device, row, item); });
}

int itemVoid(int device, int row, const char* commodityName, double totalPrice, char vat, double amount,
             double unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemVoid", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::voidItem(printer, device, row, item, ownReceiptNumber); });
}

int itemVoid_int(int device, int row, const char* commodityName, int totalPrice, const char* vat, int amount,
                 int unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemVoid_int", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::voidItem(printer, device, row, item, ownReceiptNumber); });
}

int itemVoid_str(int device, int row, const char* commodityName, const char* totalPrice, const char* vat,
                 const char* amount, const char* unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemVoid_int", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::voidItem(printer, device, row, item, ownReceiptNumber); });
}

int itemReturn(int device, int row, const char* commodityName, double totalPrice, char vat, double amount,
               double unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemReturn", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::returnItem(printer, device, row, item, ownReceiptNumber); });
}

int itemReturn_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                   int amount, int unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemReturn_int", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::returnItem(printer, device, row, item, ownReceiptNumber); });
}

int itemReturn_str(int device, int row, const char* commodityName, const char* totalPrice, const char* vat,
                   const char* amount, const char* unitPrice, const char* unit, const char* receiptNumber)
{
    const Text ownReceiptNumber(receiptNumber);
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemReturn_str", device, row, item, ownReceiptNumber);
    return runCommand(
        [&](Device& printer) { receipt::returnItem(printer, device, row, item, ownReceiptNumber); });
}

int itemNegative(int device, int row, const char* commodityName, double totalPrice, char vat, double amount,
                 double unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemNegative", device, row, item);
    return runCommand([&](Device& printer) { receipt::negativeItem(printer, device, row, item); });
}

int itemNegative_int(int device, int row, const char* commodityName, int totalPrice, const char* vat,
                     int amount, int unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemNegative_int", device, row, item);
    return runCommand([&](Device& printer) { receipt::negativeItem(printer, device, row, item); });
}

int itemNegative_str(int device, int row, const char* commodityName, const char* totalPrice, const char* vat,
                     const char* amount, const char* unitPrice, const char* unit)
{
    const auto item = itemOf(commodityName, totalPrice, vat, amount, unitPrice, unit);
    logItem("itemNegative_int", device, row, item);
    return runCommand([&](Device& printer) { receipt::negativeItem(printer, device, row, item); });
}

void setAutoTwoLineItem(TelvofmBool on)
{
    if (const auto printer = openDevice()) {
        printer->autoTwoLineItem = on != 0;
    }
}

bool isAutoTwoLineItem(void)
{
    const auto printer = openDevice();
    return printer && printer->autoTwoLineItem;
}
