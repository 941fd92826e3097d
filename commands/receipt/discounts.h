// Discounts on an item line or on the subtotal, and the subtotal itself. The printer computes; what it does
// with the value depends on the operation type.
#pragma once

#include "device/device.h"

namespace telvofm::receipt {

struct Discount
{
    int row;
    Text description;
    int operationType;
    Amount value;
    char vat; // a blank is left out of item discounts, but sent with subtotal discounts
};

void discountItem(Device& printer, int address, const Discount& discount);
void discountItemWithTotal(Device& printer, int address, const Discount& discount, const Amount& totalValue);
void subTotal(Device& printer, int address, int row, std::string_view description, int operationType);
void discountSubTotal(Device& printer, int address, const Discount& discount);
void discountSubTotalWithTotal(Device& printer, int address, const Discount& discount,
                               const Amount& totalValue);

} // namespace telvofm::receipt
