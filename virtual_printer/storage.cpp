#include "virtual_printer/storage.h"

#include <utility>

namespace virtual_printer {

void Storage::add(Receipt receipt, const std::map<char, std::int64_t>& totalsByVat)
{
    receipts.push_back(std::move(receipt));
    for (const auto& [vat, total] : totalsByVat) {
        turnoverByVat[vat] += total;
    }
}

std::int64_t Storage::total() const
{
    std::int64_t sum = 0;
    for (const Receipt& receipt : receipts) {
        sum += receipt.total;
    }
    return sum;
}

std::string Storage::journal(int from, int to) const
{
    std::string text;
    for (const Receipt& receipt : receipts) {
        if (receipt.number >= from && receipt.number <= to) {
            text += receipt.text;
        }
    }
    return text;
}

std::string Storage::settingsText() const
{
    std::string text;
    for (const auto& [name, value] : settings) {
        text.append(name).append("=").append(value).append("\r\n");
    }
    return text;
}

} // namespace virtual_printer
