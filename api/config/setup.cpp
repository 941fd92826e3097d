// The trailing blank behind some names and not others, and "Device " beside "device ", are meant.
#include "commands/config/setup.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

// Of the `int` that stands for a truth value only 1 means yes, which is meant.
bool isAllowed(int overPay)
{
    return overPay == 1;
}

} // namespace

int setEscapeSequence(int device, const char* sequence)
{
    logCall("setEscapeSequence", "Device ", device, ", sequence ", sequence);
    return runCommand([&](Device& printer) { config::setEscapeSequence(printer, device, Text(sequence)); });
}

int setPaymentType(int device, int paymentTypeNumber, double minCurrency, TelvofmBool overPay)
{
    const config::PaymentType type{paymentTypeNumber, number(minCurrency), overPay != 0};
    logCall("setPaymentType", "Device ", device, ", paymentTypeNumber ", paymentTypeNumber, ", minCurrency ",
            type.minCurrency, ", overPay ", type.overPay);
    return runCommand([&](Device& printer) { config::setPaymentType(printer, device, type); });
}

int setPaymentType_int(int device, int paymentTypeNumber, int minCurrency, int overPay)
{
    const config::PaymentType type{paymentTypeNumber, hundredths(minCurrency), isAllowed(overPay)};
    logCall("setPaymentType_int", "Device ", device, ", paymentTypeNumber ", paymentTypeNumber,
            ", minCurrency ", type.minCurrency, ", overPay ", overPay);
    return runCommand([&](Device& printer) { config::setPaymentType(printer, device, type); });
}

int setPaymentType2(int device, const char* paymentTypeName, int paymentTypeNumber, double minCurrency,
                    TelvofmBool overPay)
{
    const config::PaymentType type{paymentTypeNumber, number(minCurrency), overPay != 0};
    logCall("setPaymentType2", "Device ", device, ", paymentTypeName ", paymentTypeName,
            ", paymentTypeNumber ", paymentTypeNumber, ", minCurrency ", type.minCurrency, ", overPay ",
            type.overPay);
    return runCommand(
        [&](Device& printer) { config::setPaymentType(printer, device, Text(paymentTypeName), type); });
}

int setPaymentType2_int(int device, const char* paymentTypeName, int paymentTypeNumber, int minCurrency,
                        int overPay)
{
    const config::PaymentType type{paymentTypeNumber, hundredths(minCurrency), isAllowed(overPay)};
    logCall("setPaymentType2_int", "Device ", device, ", paymentTypeName ", paymentTypeName,
            ", paymentTypeNumber ", paymentTypeNumber, ", minCurrency ", type.minCurrency, ", overPay ",
            overPay);
    return runCommand(
        [&](Device& printer) { config::setPaymentType(printer, device, Text(paymentTypeName), type); });
}

int setPassword(int device, const char* oldPassword, const char* newPassword)
{
    logCall("setPassword", "Device ", device, ", oldPassword ", "*****", ", newPassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::setPassword(printer, device, Text(oldPassword), Text(newPassword)); });
}

int setPrinterType(int device, const char* servicePassword, int printerType, int printFormat)
{
    logCall("setPrinterType", "Device ", device, ", servicePassword ", "*****", ", printerType ", printerType,
            ", printFormat ", printFormat);
    return runCommand([&](Device& printer) {
        config::setPrinterType(printer, device, Text(servicePassword), printerType, printFormat);
    });
}

int setParameter(int device, const char* password, int paramNumber, int paramValue)
{
    logCall("setParameter", "device ", device, ", password ", "*****", ", paramNumber ", paramNumber,
            ", paramValue ", paramValue);
    return runCommand([&](Device& printer) {
        config::setParameter(printer, device, Text(password), paramNumber, paramValue);
    });
}

int setHeader(int device, const char* password, int rowNumber, const char* text)
{
    logCall("setHeader ", "device ", device, ", password ", "*****", ", rowNumber ", rowNumber, ", text ",
            text);
    return runCommand(
        [&](Device& printer) { config::setHeader(printer, device, Text(password), rowNumber, Text(text)); });
}

int setAdditionalHeader(int device, const char* text)
{
    logCall("setAdditionalHeader ", "device ", device, ", text ", text);
    return runCommand([&](Device& printer) { config::setAdditionalHeader(printer, device, Text(text)); });
}

int setAdditionalFooter(int device, const char* text)
{
    logCall("setAdditionalFooter ", "device ", device, ", text ", text);
    return runCommand([&](Device& printer) { config::setAdditionalFooter(printer, device, Text(text)); });
}

int setSuperFooter(int device, const char* text)
{
    logCall("setSuperFooter ", "device ", device, ", text ", text);
    return runCommand([&](Device& printer) { config::setSuperFooter(printer, device, Text(text)); });
}

// Alone in this family it leaves no line in the call log, which is meant.
int setPreline(int device, const char* description)
{
    return runCommand([&](Device& printer) { config::setPreline(printer, device, Text(description)); });
}

int setPostline(int device, const char* description)
{
    logCall("setPostline ", "device ", device, ", description ", description);
    return runCommand([&](Device& printer) { config::setPostline(printer, device, Text(description)); });
}

int setEuroExchangeRate(int device, double exchangeRate)
{
    const Amount rate = number(exchangeRate);
    logCall("setEuroExchangeRate ", "device ", device, ", exchangeRate ", rate);
    return runCommand([&](Device& printer) { config::setEuroExchangeRate(printer, device, rate); });
}

// The label with "_2" is meant.
int setEuroExchangeRate_int(int device, int exchangeRate)
{
    const Amount rate = tenThousandths(exchangeRate);
    logCall("setEuroExchangeRate_int", "device ", device, ", exchangeRate_2 ", rate);
    return runCommand([&](Device& printer) { config::setEuroExchangeRate(printer, device, rate); });
}
