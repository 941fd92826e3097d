#include "commands/receipt/extras.h"

namespace telvofm::receipt {
namespace {

Request downPaymentRequest(Device& printer, int address, Command command, const DownPayment& downPayment)
{
    return printer.request(address, command)
        .text(downPayment.title)
        .amount(downPayment.amount, 2)
        .character(downPayment.vat)
        .amount(downPayment.price, 2);
}

} // namespace

// The client's number is converted and the seller's is not, which is meant.
void setClient(Device& printer, int address, std::string_view number, int type)
{
    printer.send(printer.request(address, Command::setClientID).text(number).number(type));
}

void setSeller(Device& printer, int address, std::string_view number, char type)
{
    printer.send(printer.request(address, Command::setSellerID).raw(number).character(type));
}

void referToReceipt(Device& printer, int address, int orderNumber, std::string_view dateTime)
{
    printer.send(printer.request(address, Command::printIssuedParagon).number(orderNumber).raw(dateTime));
}

void setInvoiceNumber(Device& printer, int address, std::string_view invoiceNumber)
{
    printer.send(printer.request(address, Command::setInvoiceNumber).raw(invoiceNumber));
}

void setTransaction(Device& printer, int address, std::string_view internalCode)
{
    printer.send(printer.request(address, Command::setTransactionID).raw(internalCode));
}

void redeemVoucher(Device& printer, int address, const DownPayment& voucher, std::string_view voucherNumber)
{
    printer.send(downPaymentRequest(printer, address, Command::redeemVoucher, voucher).raw(voucherNumber));
}

void deductDownPayment(Device& printer, int address, const DownPayment& downPayment)
{
    printer.send(downPaymentRequest(printer, address, Command::deductDownPayment, downPayment));
}

void setV48(Device& printer, int address, std::string_view password, char v48)
{
    printer.send(printer.request(address, Command::setV48).raw(password).character(v48));
}

void describeZeroVat(Device& printer, int address, char type)
{
    printer.send(printer.request(address, Command::popis0DPH).character(type));
}

void correctDocument(Device& printer, int address, std::string_view errorCode)
{
    printer.send(printer.request(address, Command::opravaDokladu).raw(errorCode));
}

void synchronizeToPpekk(Device& printer, int address)
{
    printer.send(printer.request(address, Command::synchronizationToPPEKK));
}

std::string paragonIds(Device& printer, int address, char inputType, std::string_view input)
{
    return printer.query(printer.request(address, Command::getParagonIDs).character(inputType).raw(input));
}

} // namespace telvofm::receipt
