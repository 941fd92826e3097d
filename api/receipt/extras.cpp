// In this family no comma stands before a label, the `_str` exports log under the plain name (but for
// getParagonIDs_str_ResultObject), and the setV48 exports write their password in clear; all of it is meant.
#include "commands/receipt/extras.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/result_objects.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

int redeem(int device, const receipt::DownPayment& voucher, const char* voucherNumber)
{
    const Text ownVoucherNumber(voucherNumber);
    logCall("redeemVoucher", "device ", device, "title ", voucher.title, "amount ", voucher.amount, "vat ",
            voucher.vat, "price ", voucher.price, "voucherNumber ", ownVoucherNumber);
    return runCommand(
        [&](Device& printer) { receipt::redeemVoucher(printer, device, voucher, ownVoucherNumber); });
}

int deduct(int device, const receipt::DownPayment& downPayment)
{
    logCall("deductDownPayment", "device ", device, "title ", downPayment.title, "amount ",
            downPayment.amount, "vat ", downPayment.vat, "price ", downPayment.price);
    return runCommand([&](Device& printer) { receipt::deductDownPayment(printer, device, downPayment); });
}

int fetchIds(std::string_view name, int device, char inputType, const char* input, char* buffer,
             int bufferSize)
{
    const Text ownInput(input);
    logCall(name, "device ", device, "inputType ", inputType, "input ", ownInput);
    return runQuery(
        [&](Device& printer) { return receipt::paragonIds(printer, device, inputType, ownInput); },
        [&](const std::string& reply) { copyText(reply, buffer, bufferSize); });
}

int fetchIds(std::string_view name, int device, char inputType, const char* input, ResultObject* result)
{
    const Text ownInput(input);
    logCall(name, "device ", device, "inputType ", inputType, "input ", ownInput);
    return fillResult(
        result, [&](Device& printer) { return receipt::paragonIds(printer, device, inputType, ownInput); });
}

} // namespace

int setClientID(int device, const char* number, int type)
{
    const Text ownNumber(number);
    logCall("setClientID", "device ", device, "number ", ownNumber, "type ", type);
    return runCommand([&](Device& printer) { receipt::setClient(printer, device, ownNumber, type); });
}

int printIssuedParagon(int device, int orderNumber, const char* dateTime)
{
    const Text ownDateTime(dateTime);
    logCall("printIssuedParagon", "device ", device, "orderNumber ", orderNumber, "dateTime ", ownDateTime);
    return runCommand(
        [&](Device& printer) { receipt::referToReceipt(printer, device, orderNumber, ownDateTime); });
}

int setInvoiceNumber(int device, const char* invoiceNumber)
{
    const Text ownInvoiceNumber(invoiceNumber);
    logCall("setInvoiceNumber", "device ", device, "invoiceNumber ", ownInvoiceNumber);
    return runCommand([&](Device& printer) { receipt::setInvoiceNumber(printer, device, ownInvoiceNumber); });
}

int redeemVoucher(int device, const char* title, double amount, char vat, double price,
                  const char* voucherNumber)
{
    return redeem(device, {Text(title), number(amount), vat, number(price)}, voucherNumber);
}

int redeemVoucher_str(int device, const char* title, const char* amount, const char* vat, const char* price,
                      const char* voucherNumber)
{
    return redeem(device, {Text(title), text(amount), firstCharacter(vat), text(price)}, voucherNumber);
}

int deductDownPayment(int device, const char* title, double amount, char vat, double price)
{
    return deduct(device, {Text(title), number(amount), vat, number(price)});
}

int deductDownPayment_str(int device, const char* title, const char* amount, const char* vat,
                          const char* price)
{
    return deduct(device, {Text(title), text(amount), firstCharacter(vat), text(price)});
}

int getParagonIDs(int device, char inputType, const char* input, char* buffer, int bufferSize)
{
    return fetchIds("getParagonIDs", device, inputType, input, buffer, bufferSize);
}

int getParagonIDs_str(int device, const char* inputType, const char* input, char* buffer, int bufferSize)
{
    return fetchIds("getParagonIDs", device, firstCharacter(inputType), input, buffer, bufferSize);
}

int getParagonIDs_ResultObject(int device, char inputType, const char* input, ResultObject* result)
{
    return fetchIds("getParagonIDs_ResultObject", device, inputType, input, result);
}

int getParagonIDs_str_ResultObject(int device, const char* inputType, const char* input, ResultObject* result)
{
    return fetchIds("getParagonIDs_str_ResultObject", device, firstCharacter(inputType), input, result);
}

int setTransactionID(int device, const char* internalCode)
{
    const Text ownInternalCode(internalCode);
    logCall("setTransactionID", "device ", device, "internalCode ", ownInternalCode);
    return runCommand([&](Device& printer) { receipt::setTransaction(printer, device, ownInternalCode); });
}

int setV48(int device, const char* password, char v48)
{
    const Text ownPassword(password);
    logCall("setV48", "device ", device, "password ", ownPassword, "v48 ", v48);
    return runCommand([&](Device& printer) { receipt::setV48(printer, device, ownPassword, v48); });
}

int setV48_str(int device, const char* password, const char* v48)
{
    return setV48(device, password, firstCharacter(v48));
}

int Popis0DPH(int device, char type)
{
    logCall("Popis0DPH", "device ", device, "type ", type);
    return runCommand([&](Device& printer) { receipt::describeZeroVat(printer, device, type); });
}

int Popis0DPH_str(int device, const char* type)
{
    return Popis0DPH(device, firstCharacter(type));
}

int setSellerID(int device, const char* number, char type)
{
    const Text ownNumber(number);
    logCall("setSellerID", "device ", device, "number ", ownNumber, "type ", type);
    return runCommand([&](Device& printer) { receipt::setSeller(printer, device, ownNumber, type); });
}

int setSellerID_str(int device, const char* number, const char* type)
{
    return setSellerID(device, number, firstCharacter(type));
}

int opravaDokladu(int device, const char* errCode)
{
    const Text ownErrCode(errCode);
    logCall("opravaDokladu", "device ", device, "errCode ", ownErrCode);
    return runCommand([&](Device& printer) { receipt::correctDocument(printer, device, ownErrCode); });
}

int synchronizationToPPEKK(int device)
{
    logCall("synchronizationToPPEKK", "device ", device);
    return runCommand([&](Device& printer) { receipt::synchronizeToPpekk(printer, device); });
}
