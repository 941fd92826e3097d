// Item lines of the open receipt: a sale, the void of an earlier line, goods returned from an earlier
// receipt, and a negative item.
#pragma once

#include "device/device.h"

namespace telvofm::receipt {

struct Item
{
    Text commodityName; // padded to 40 bytes while autoTwoLineItem is on
    Amount totalPrice;
    char vat;
    Amount amount;
    Amount unitPrice;
    Text unit; // sent as exactly three bytes
};

void sellItem(Device& printer, int address, int row, const Item& item);
void voidItem(Device& printer, int address, int row, const Item& item, std::string_view receiptNumber);
void returnItem(Device& printer, int address, int row, const Item& item, std::string_view receiptNumber);
void negativeItem(Device& printer, int address, int row, const Item& item);

} // namespace telvofm::receipt
