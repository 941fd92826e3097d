// What a receipt can carry beside items and payments: who buys and who sells, references to other documents,
// vouchers and down payments, and the questions and corrections around it. Which texts are converted between
// code pages and which go out byte for byte is settled field by field and meant.
#pragma once

#include "device/device.h"

namespace telvofm::receipt {

struct DownPayment
{
    Text title;
    Amount amount;
    char vat;
    Amount price;
};

void setClient(Device& printer, int address, std::string_view number, int type);
void setSeller(Device& printer, int address, std::string_view number, char type);
void referToReceipt(Device& printer, int address, int orderNumber, std::string_view dateTime);
void setInvoiceNumber(Device& printer, int address, std::string_view invoiceNumber);
void setTransaction(Device& printer, int address, std::string_view internalCode);
void redeemVoucher(Device& printer, int address, const DownPayment& voucher, std::string_view voucherNumber);
void deductDownPayment(Device& printer, int address, const DownPayment& downPayment);
void setV48(Device& printer, int address, std::string_view password, char v48);
void describeZeroVat(Device& printer, int address, char type);
void correctDocument(Device& printer, int address, std::string_view errorCode);
void synchronizeToPpekk(Device& printer, int address);
// The identifiers of receipts, as the printer words them.
std::string paragonIds(Device& printer, int address, char inputType, std::string_view input);

} // namespace telvofm::receipt
