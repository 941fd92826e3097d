// The name labels without a blank, the `_str` exports that log under the plain name, and the second line of
// itemDiscount_int are meant; so is the `char` of the subtotal's `_int` exports where the item's take a text.
#include "commands/receipt/discounts.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

int discountItem(std::string_view name, int device, const receipt::Discount& discount)
{
    logCall(name, "Device ", device, ", row ", discount.row, ", description ", discount.description,
            ", operationType ", discount.operationType, ", discountValue ", discount.value, ", vat ",
            discount.vat);
    return runCommand([&](Device& printer) { receipt::discountItem(printer, device, discount); });
}

int discountItem(std::string_view name, int device, const receipt::Discount& discount,
                 const Amount& totalValue)
{
    logCall(name, "Device ", device, ", row ", discount.row, ", description ", discount.description,
            ", operationType ", discount.operationType, ", discountValue ", discount.value, ", vat ",
            discount.vat, ", discountTotalValue ", totalValue);
    return runCommand(
        [&](Device& printer) { receipt::discountItemWithTotal(printer, device, discount, totalValue); });
}

int discountSubTotal(std::string_view name, int device, const receipt::Discount& discount)
{
    logCall(name, "Device ", device, ", row ", discount.row, ", description ", discount.description,
            ", operationType ", discount.operationType, ", discountValue ", discount.value, ", vat ",
            discount.vat);
    return runCommand([&](Device& printer) { receipt::discountSubTotal(printer, device, discount); });
}

int discountSubTotal(std::string_view name, int device, const receipt::Discount& discount,
                     const Amount& totalValue)
{
    logCall(name, "Device ", device, ", row ", discount.row, ", description ", discount.description,
            ", operationType ", discount.operationType, ", discountValue ", discount.value,
            ", discountTotalValue ", totalValue, ", vat ", discount.vat);
    return runCommand(
        [&](Device& printer) { receipt::discountSubTotalWithTotal(printer, device, discount, totalValue); });
}

} // namespace

int itemDiscount(int device, int row, const char* description, int operationType, double discountValue,
                 char vat)
{
    return discountItem("itemDiscount", device,
                        {row, Text(description), operationType, number(discountValue), vat});
}

int itemDiscount_int(int device, int row, const char* description, int operationType, int discountValue,
                     const char* vat)
{
    logCall("itemDiscount_int");
    return discountItem(
        "itemDiscount_int", device,
        {row, Text(description), operationType, hundredths(discountValue), firstCharacter(vat)});
}

int itemDiscount_str(int device, int row, const char* description, int operationType,
                     const char* discountValue, const char* vat)
{
    return discountItem("itemDiscount", device,
                        {row, Text(description), operationType, text(discountValue), firstCharacter(vat)});
}

int itemDiscount2(int device, int row, const char* description, int operationType, double discountValue,
                  char vat, double discountTotalValue)
{
    return discountItem("itemDiscount2", device,
                        {row, Text(description), operationType, number(discountValue), vat},
                        number(discountTotalValue));
}

int itemDiscount2_int(int device, int row, const char* description, int operationType, int discountValue,
                      const char* vat, int discountTotalValue)
{
    return discountItem(
        "itemDiscount2_int", device,
        {row, Text(description), operationType, hundredths(discountValue), firstCharacter(vat)},
        hundredths(discountTotalValue));
}

int itemDiscount2_str(int device, int row, const char* description, int operationType,
                      const char* discountValue, const char* vat, const char* discountTotalValue)
{
    return discountItem("itemDiscount2", device,
                        {row, Text(description), operationType, text(discountValue), firstCharacter(vat)},
                        text(discountTotalValue));
}

int subTotal(int device, int row, const char* description, int operationType)
{
    const Text ownDescription(description);
    logCall("subTotal", "Device ", device, ", row ", row, ", description ", ownDescription,
            ", operationType ", operationType);
    return runCommand(
        [&](Device& printer) { receipt::subTotal(printer, device, row, ownDescription, operationType); });
}

int subTotalDiscount(int device, int row, const char* description, int operationType, double discountValue,
                     char vat)
{
    return discountSubTotal("subTotalDiscount", device,
                            {row, Text(description), operationType, number(discountValue), vat});
}

int subTotalDiscount_int(int device, int row, const char* description, int operationType, int discountValue,
                         char vat)
{
    return discountSubTotal("subTotalDiscount_int", device,
                            {row, Text(description), operationType, hundredths(discountValue), vat});
}

int subTotalDiscount_str(int device, int row, const char* description, int operationType,
                         const char* discountValue, const char* vat)
{
    return discountSubTotal(
        "subTotalDiscount", device,
        {row, Text(description), operationType, text(discountValue), firstCharacter(vat)});
}

int subTotalDiscount2(int device, int row, const char* description, int operationType, double discountValue,
                      double discountTotalValue, char vat)
{
    return discountSubTotal("subTotalDiscount2", device,
                            {row, Text(description), operationType, number(discountValue), vat},
                            number(discountTotalValue));
}

int subTotalDiscount2_int(int device, int row, const char* description, int operationType, int discountValue,
                          int discountTotalValue, char vat)
{
    return discountSubTotal("subTotalDiscount2_int", device,
                            {row, Text(description), operationType, hundredths(discountValue), vat},
                            hundredths(discountTotalValue));
}

int subTotalDiscount2_str(int device, int row, const char* description, int operationType,
                          const char* discountValue, const char* discountTotalValue, const char* vat)
{
    return discountSubTotal("subTotalDiscount2", device,
                            {row, Text(description), operationType, text(discountValue), firstCharacter(vat)},
                            text(discountTotalValue));
}
