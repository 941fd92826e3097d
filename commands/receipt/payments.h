// Payments of a receipt, and money put into the drawer or taken out of it.
#pragma once

#include "device/device.h"

namespace telvofm::receipt {

struct Payment
{
    int paymentNumber;
    Amount total;
    Amount payedAmount;
    Amount exchangeRate;
    Text description; // sent as exactly ten bytes
};

void pay(Device& printer, int address, int row, const Payment& payment);
// With "+" in front of the exchange rate.
void payWithSignedRate(Device& printer, int address, int row, const Payment& payment);
// With the total paid so far.
void payWithTotal(Device& printer, int address, int row, const Payment& payment,
                  const Amount& totalPayedAmount);
void depositInDrawer(Device& printer, int address, int row, std::string_view description, int operationType,
                     const Amount& amount, int paymentNumber);

} // namespace telvofm::receipt
