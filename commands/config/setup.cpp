#include "commands/config/setup.h"

namespace telvofm::config {
namespace {

// "0" allows over-payment and "1" does not: inverted on the wire, which is meant.
void appendPaymentType(Request& request, const PaymentType& type)
{
    request.number(type.number).amount(type.minCurrency, 2).character(type.overPay ? '0' : '1');
}

} // namespace

void setEscapeSequence(Device& printer, int address, std::string_view sequence)
{
    printer.send(printer.request(address, Command::setEscapeSequence).text(sequence));
}

void setPaymentType(Device& printer, int address, const PaymentType& type)
{
    Request request = printer.request(address, Command::setPaymentType);
    appendPaymentType(request, type);
    printer.send(request);
}

void setPaymentType(Device& printer, int address, std::string_view name, const PaymentType& type)
{
    Request request = printer.request(address, Command::setPaymentType2).text(name);
    appendPaymentType(request, type);
    printer.send(request);
}

void setPassword(Device& printer, int address, std::string_view oldPassword, std::string_view newPassword)
{
    printer.send(printer.request(address, Command::setPassword).text(oldPassword).text(newPassword));
}

void setPrinterType(Device& printer, int address, std::string_view servicePassword, int printerType,
                    int printFormat)
{
    printer.send(printer.request(address, Command::setPrinterType)
                     .text(servicePassword)
                     .number(printerType)
                     .number(printFormat));
}

void setParameter(Device& printer, int address, std::string_view password, int number, int value)
{
    printer.send(printer.request(address, Command::setParameter).text(password).number(number).number(value));
}

void setHeader(Device& printer, int address, std::string_view password, int rowNumber, std::string_view text)
{
    printer.send(printer.request(address, Command::setHeader).text(password).number(rowNumber).text(text));
}

void setAdditionalHeader(Device& printer, int address, std::string_view text)
{
    printer.send(printer.request(address, Command::setAdditionalHeader).text(text));
}

void setAdditionalFooter(Device& printer, int address, std::string_view text)
{
    printer.send(printer.request(address, Command::setAdditionalFooter).text(text));
}

void setSuperFooter(Device& printer, int address, std::string_view text)
{
    printer.send(printer.request(address, Command::setSuperFooter).text(text));
}

void setPreline(Device& printer, int address, std::string_view description)
{
    printer.send(printer.request(address, Command::setPreline).text(description));
}

void setPostline(Device& printer, int address, std::string_view description)
{
    printer.send(printer.request(address, Command::setPostline).text(description));
}

void setEuroExchangeRate(Device& printer, int address, const Amount& rate)
{
    printer.send(printer.request(address, Command::setEuroExchangeRate).amount(rate, 4));
}

} // namespace telvofm::config
