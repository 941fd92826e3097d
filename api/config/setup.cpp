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
    const Text ownSequence(sequence);
    logCall("setEscapeSequence", "Device ", device, ", sequence ", ownSequence);
    return runCommand([&](Device& printer) { config::setEscapeSequence(printer, device, ownSequence); });
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
    const Text ownPaymentTypeName(paymentTypeName);
    const config::PaymentType type{paymentTypeNumber, number(minCurrency), overPay != 0};
    logCall("setPaymentType2", "Device ", device, ", paymentTypeName ", ownPaymentTypeName,
            ", paymentTypeNumber ", paymentTypeNumber, ", minCurrency ", type.minCurrency, ", overPay ",
            type.overPay);
    return runCommand(
        [&](Device& printer) { config::setPaymentType(printer, device, ownPaymentTypeName, type); });
}

int setPaymentType2_int(int device, const char* paymentTypeName, int paymentTypeNumber, int minCurrency,
                        int overPay)
{
    const Text ownPaymentTypeName(paymentTypeName);
    const config::PaymentType type{paymentTypeNumber, hundredths(minCurrency), isAllowed(overPay)};
    logCall("setPaymentType2_int", "Device ", device, ", paymentTypeName ", ownPaymentTypeName,
            ", paymentTypeNumber ", paymentTypeNumber, ", minCurrency ", type.minCurrency, ", overPay ",
            overPay);
    return runCommand(
        [&](Device& printer) { config::setPaymentType(printer, device, ownPaymentTypeName, type); });
}

int setPassword(int device, const char* oldPassword, const char* newPassword)
{
    const Text ownOldPassword(oldPassword);
    const Text ownNewPassword(newPassword);
    logCall("setPassword", "Device ", device, ", oldPassword ", "*****", ", newPassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::setPassword(printer, device, ownOldPassword, ownNewPassword); });
}

int setPrinterType(int device, const char* servicePassword, int printerType, int printFormat)
{
    const Text ownServicePassword(servicePassword);
    logCall("setPrinterType", "Device ", device, ", servicePassword ", "*****", ", printerType ", printerType,
            ", printFormat ", printFormat);
    return runCommand([&](Device& printer) {
        config::setPrinterType(printer, device, ownServicePassword, printerType, printFormat);
    });
}

int setParameter(int device, const char* password, int paramNumber, int paramValue)
{
    const Text ownPassword(password);
    logCall("setParameter", "device ", device, ", password ", "*****", ", paramNumber ", paramNumber,
            ", paramValue ", paramValue);
    return runCommand([&](Device& printer) {
        config::setParameter(printer, device, ownPassword, paramNumber, paramValue);
    });
}

int setHeader(int device, const char* password, int rowNumber, const char* text)
{
    const Text ownPassword(password);
    const Text ownText(text);
    logCall("setHeader ", "device ", device, ", password ", "*****", ", rowNumber ", rowNumber, ", text ",
            ownText);
    return runCommand(
        [&](Device& printer) { config::setHeader(printer, device, ownPassword, rowNumber, ownText); });
}

int setAdditionalHeader(int device, const char* text)
{
    const Text ownText(text);
    logCall("setAdditionalHeader ", "device ", device, ", text ", ownText);
    return runCommand([&](Device& printer) { config::setAdditionalHeader(printer, device, ownText); });
}

int setAdditionalFooter(int device, const char* text)
{
    const Text ownText(text);
    logCall("setAdditionalFooter ", "device ", device, ", text ", ownText);
    return runCommand([&](Device& printer) { config::setAdditionalFooter(printer, device, ownText); });
}

int setSuperFooter(int device, const char* text)
{
    const Text ownText(text);
    logCall("setSuperFooter ", "device ", device, ", text ", ownText);
    return runCommand([&](Device& printer) { config::setSuperFooter(printer, device, ownText); });
}

// Alone in this family it leaves no line in the call log, which is meant.
int setPreline(int device, const char* description)
{
    const Text ownDescription(description);
    return runCommand([&](Device& printer) { config::setPreline(printer, device, ownDescription); });
}

int setPostline(int device, const char* description)
{
    const Text ownDescription(description);
    logCall("setPostline ", "device ", device, ", description ", ownDescription);
    return runCommand([&](Device& printer) { config::setPostline(printer, device, ownDescription); });
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
