// The printer's standing settings: payment types, passwords, printer type, numbered parameters, the lines
// around a receipt, the display's escape sequence and the exchange rate of the euro.
#pragma once

#include "device/device.h"

namespace telvofm::config {

struct PaymentType
{
    int number;
    Amount minCurrency;
    bool overPay; // whether more than the total may be paid
};

void setEscapeSequence(Device& printer, int address, std::string_view sequence);
void setPaymentType(Device& printer, int address, const PaymentType& type);
void setPaymentType(Device& printer, int address, std::string_view name, const PaymentType& type);
void setPassword(Device& printer, int address, std::string_view oldPassword, std::string_view newPassword);
void setPrinterType(Device& printer, int address, std::string_view servicePassword, int printerType,
                    int printFormat);
void setParameter(Device& printer, int address, std::string_view password, int number, int value);
void setHeader(Device& printer, int address, std::string_view password, int rowNumber, std::string_view text);
void setAdditionalHeader(Device& printer, int address, std::string_view text);
void setAdditionalFooter(Device& printer, int address, std::string_view text);
void setSuperFooter(Device& printer, int address, std::string_view text);
void setPreline(Device& printer, int address, std::string_view description);
void setPostline(Device& printer, int address, std::string_view description);
void setEuroExchangeRate(Device& printer, int address, const Amount& rate);

} // namespace telvofm::config
