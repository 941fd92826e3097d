// The amounts of a line of a receipt as the library takes them. For telvofm::Receipt.
#pragma once

#include "decimal.hpp"
#include "text.hpp"

#include <string>
#include <string_view>

namespace telvofm::inside {

struct Line
{
    std::string money, quantity, unitPrice;
};

// Fails for an amount with too many decimals, and for a rate that is not one letter: of a longer one the
// library would send the first.
inline Result<Line> lineOf(std::string_view vat, Decimal money, Decimal quantity, Decimal unitPrice)
{
    const Result<std::string> letter = encode(vat);
    if (!letter) {
        return letter.error();
    }
    if (letter->size() != 1) {
        return wrongArgument(Kind::textError,
                             "a VAT rate is one letter, and \"" + std::string(vat) + "\" is none");
    }
    const Result<std::string> texts[] = {money.text(2), quantity.text(3), unitPrice.text(2)};
    for (const Result<std::string>& text : texts) {
        if (!text) {
            return text.error();
        }
    }
    return Line{*texts[0], *texts[1], *texts[2]};
}

} // namespace telvofm::inside
