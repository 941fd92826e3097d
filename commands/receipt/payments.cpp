#include "commands/receipt/payments.h"

namespace telvofm::receipt {
namespace {

constexpr std::size_t descriptionWidth = 10;
constexpr int rateDecimals = 4;

} // namespace

void pay(Device& printer, int address, int row, const Payment& payment)
{
    printer.send(printer.request(address, Command::payment)
                     .number(row)
                     .number(payment.paymentNumber)
                     .amount(payment.total, 2)
                     .amountOrZero(payment.payedAmount, 2)
                     .amountOrZero(payment.exchangeRate, rateDecimals)
                     .fixedText(payment.description, descriptionWidth));
}

void payWithSignedRate(Device& printer, int address, int row, const Payment& payment)
{
    printer.send(printer.request(address, Command::payment)
                     .number(row)
                     .number(payment.paymentNumber)
                     .amount(payment.total, 2)
                     .amountOrZero(payment.payedAmount, 2)
                     .markedAmountOrZero('+', payment.exchangeRate, rateDecimals)
                     .fixedText(payment.description, descriptionWidth));
}

void payWithTotal(Device& printer, int address, int row, const Payment& payment,
                  const Amount& totalPayedAmount)
{
    printer.send(printer.request(address, Command::payment2)
                     .number(row)
                     .number(payment.paymentNumber)
                     .amount(payment.total, 2)
                     .amountOrZero(payment.payedAmount, 2)
                     .amountOrZero(payment.exchangeRate, rateDecimals)
                     .fixedText(payment.description, descriptionWidth)
                     .amountOrZero(totalPayedAmount, 2));
}

void depositInDrawer(Device& printer, int address, int row, std::string_view description, int operationType,
                     const Amount& amount, int paymentNumber)
{
    printer.send(printer.request(address, Command::depositeInDrawer)
                     .number(row)
                     .text(description)
                     .number(operationType)
                     .amount(amount, 2)
                     .number(paymentNumber));
}

} // namespace telvofm::receipt
