// The irregular blanks and labels of the log lines are meant: readers of old logs search for them.
#include "commands/receipt/lifecycle.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int paragonBegin(int device, int row, int saleType, int commType, int paragonType, int recapitulation,
                 int graphicsHeader)
{
    logCall("paragonBegin ", "Device ", device, ", row ", row, ", sale type ", saleType, ", comm type ",
            commType, ", paragon type ", paragonType, ", recapitulation ", recapitulation,
            ", graphics header ", graphicsHeader);
    return runCommand([&](Device& printer) {
        receipt::begin(printer, device, row, saleType, commType, paragonType, recapitulation, graphicsHeader);
    });
}

int paragonEnd(int device, int row, int graphicsHeader)
{
    logCall("paragonEnd ", "Device ", device, ", row ", row, ", graphics header ", graphicsHeader);
    return runCommand([&](Device& printer) { receipt::end(printer, device, row, graphicsHeader); });
}

int sellingDayBegin(int deviceNumber, int saleMode)
{
    logCall("sellingDayBegin", "deviceNumber ", deviceNumber, ", saleMode ", saleMode);
    return runCommand([&](Device& printer) { receipt::beginSellingDay(printer, deviceNumber, saleMode); });
}

int destroyParagon(int device, int row, const char* description)
{
    const Text ownDescription(description);
    logCall("destroyParagon", "device ", device, ", row ", row, ", description ", ownDescription);
    return runCommand([&](Device& printer) { receipt::destroy(printer, device, row, ownDescription); });
}

int repeatParagon(int device)
{
    logCall("repeatParagon", "device ", device);
    return runCommand([&](Device& printer) { receipt::repeat(printer, device); });
}

int printJobCancel(int device)
{
    logCall("printJobCancel ", "device ", device);
    return runCommand([&](Device& printer) { receipt::cancelPrintJob(printer, device); });
}

int confirmNote(int device)
{
    logCall("confirmNote ", "device ", device);
    return runCommand([&](Device& printer) { receipt::confirmNote(printer, device); });
}
