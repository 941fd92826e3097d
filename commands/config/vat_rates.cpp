#include "commands/config/vat_rates.h"

#include "device/floating_point.h"

namespace telvofm::config {
namespace {

Request tableRequest(Device& printer, int address, std::string_view password, std::span<const int> pairs)
{
    Request request = printer.request(address, Command::setAllVats).text(password);
    for (const int value : pairs) {
        request.number(value);
    }
    return request;
}

} // namespace

// A negative reverse constant leaves its field empty, here only and not in the table, which is meant; a
// negative zero is a zero and sent without its sign.
void setVat(Device& printer, int address, std::string_view password, char vat, double vatValue,
            double reverseConstant)
{
    Request request =
        printer.request(address, Command::setVAT).text(password).character(vat).number(truncated(vatValue));
    if (isNegative(reverseConstant)) {
        request.empty();
    } else {
        request.general(isZero(reverseConstant) ? 0.0 : reverseConstant);
    }
    printer.send(request);
}

void setAllVats(Device& printer, int address, std::string_view password, FivePairs pairs)
{
    printer.send(tableRequest(printer, address, password, pairs));
}

void setAllVats(Device& printer, int address, std::string_view password, EightPairs pairs,
                std::string_view date)
{
    printer.send(tableRequest(printer, address, password, pairs).text(date));
}

} // namespace telvofm::config
