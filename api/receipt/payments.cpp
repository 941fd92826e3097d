// The name labels without a blank, and `depositeInDrawer_str` logging as `depositeInDrawer_int`, are meant.
#include "commands/receipt/payments.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

void logPayment(std::string_view name, int device, int row, const receipt::Payment& payment)
{
    logCall(name, "device ", device, ", row ", row, ", paymentNumber ", payment.paymentNumber, ", total ",
            payment.total, ", payedAmount ", payment.payedAmount, ", exchangeRate ", payment.exchangeRate,
            ", description ", payment.description);
}

void logPayment(std::string_view name, int device, int row, const receipt::Payment& payment,
                const Amount& totalPayed)
{
    logCall(name, "device ", device, ", row ", row, ", paymentNumber ", payment.paymentNumber, ", total ",
            payment.total, ", payedAmount ", payment.payedAmount, ", exchangeRate ", payment.exchangeRate,
            ", description ", payment.description, ", totalPayedAmount ", totalPayed);
}

int deposit(std::string_view name, int device, int row, const char* description, int operationType,
            const Amount& amount, int paymentNumber)
{
    const Text ownDescription(description);
    logCall(name, "Device ", device, ", row ", row, ", description ", ownDescription, ", operationType ",
            operationType, ", amount ", amount, ", paymentNumber ", paymentNumber);
    return runCommand([&](Device& printer) {
        receipt::depositInDrawer(printer, device, row, ownDescription, operationType, amount, paymentNumber);
    });
}

} // namespace

int payment(int device, int row, int paymentNumber, double total, double payedAmount, double exchangeRate,
            const char* description)
{
    const receipt::Payment payment{paymentNumber, number(total), number(payedAmount), number(exchangeRate),
                                   Text(description)};
    logPayment("payment ", device, row, payment);
    return runCommand([&](Device& printer) { receipt::pay(printer, device, row, payment); });
}

int payment_int(int device, int row, int paymentNumber, int total, int payedAmount, int exchangeRate,
                const char* description)
{
    const receipt::Payment payment{paymentNumber, hundredths(total), hundredths(payedAmount),
                                   tenThousandths(exchangeRate), Text(description)};
    logPayment("payment_int ", device, row, payment);
    return runCommand([&](Device& printer) { receipt::pay(printer, device, row, payment); });
}

int payment_str(int device, int row, int paymentNumber, const char* total, const char* payedAmount,
                const char* exchangeRate, const char* description)
{
    const receipt::Payment payment{paymentNumber, text(total), text(payedAmount), text(exchangeRate),
                                   Text(description)};
    logPayment("payment_str ", device, row, payment);
    return runCommand([&](Device& printer) { receipt::pay(printer, device, row, payment); });
}

int payment1(int device, int row, int paymentNumber, double total, double payedAmount, double exchangeRate,
             const char* description)
{
    const receipt::Payment payment{paymentNumber, number(total), number(payedAmount), number(exchangeRate),
                                   Text(description)};
    logPayment("payment1", device, row, payment);
    return runCommand([&](Device& printer) { receipt::payWithSignedRate(printer, device, row, payment); });
}

int payment1_int(int device, int row, int paymentNumber, int total, int payedAmount, int exchangeRate,
                 const char* description)
{
    const receipt::Payment payment{paymentNumber, hundredths(total), hundredths(payedAmount),
                                   tenThousandths(exchangeRate), Text(description)};
    logPayment("payment1_int", device, row, payment);
    return runCommand([&](Device& printer) { receipt::payWithSignedRate(printer, device, row, payment); });
}

int payment2(int device, int row, int paymentNumber, double total, double payedAmount, double exchangeRate,
             const char* description, double totalPayedAmount)
{
    const receipt::Payment payment{paymentNumber, number(total), number(payedAmount), number(exchangeRate),
                                   Text(description)};
    const Amount totalPayed = number(totalPayedAmount);
    logPayment("payment2 ", device, row, payment, totalPayed);
    return runCommand(
        [&](Device& printer) { receipt::payWithTotal(printer, device, row, payment, totalPayed); });
}

int payment2_int(int device, int row, int paymentNumber, int total, int payedAmount, int exchangeRate,
                 const char* description, int totalPayedAmount)
{
    const receipt::Payment payment{paymentNumber, hundredths(total), hundredths(payedAmount),
                                   tenThousandths(exchangeRate), Text(description)};
    const Amount totalPayed = hundredths(totalPayedAmount);
    logPayment("payment2_int", device, row, payment, totalPayed);
    return runCommand(
        [&](Device& printer) { receipt::payWithTotal(printer, device, row, payment, totalPayed); });
}

int depositeInDrawer(int device, int row, const char* description, int operationType, double amount,
                     int paymentNumber)
{
    return deposit("depositeInDrawer", device, row, description, operationType, number(amount),
                   paymentNumber);
}

int depositeInDrawer_int(int device, int row, const char* description, int operationType, int amount,
                         int paymentNumber)
{
    return deposit("depositeInDrawer_int", device, row, description, operationType, hundredths(amount),
                   paymentNumber);
}

int depositeInDrawer_str(int device, int row, const char* description, int operationType, const char* amount,
                         int paymentNumber)
{
    return deposit("depositeInDrawer_int", device, row, description, operationType, text(amount),
                   paymentNumber);
}
