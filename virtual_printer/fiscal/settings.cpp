#include "virtual_printer/fiscal/settings.h"

#include "virtual_printer/fiscal/cash.h"

namespace virtual_printer {
namespace {

PaymentType paymentType(std::string name, bool mayOverPay)
{
    constexpr std::int64_t oneCent = 1;
    return {std::move(name), oneCent, mayOverPay};
}

} // namespace

Settings factorySettings()
{
    Settings settings;
    settings.payments[cash] = paymentType("Hotovost", true);
    return settings;
}

Settings standardSettings()
{
    constexpr std::array percents = {23, 19, 5, 0};
    Settings settings = factorySettings();
    for (std::size_t letter = 0; letter < percents.size(); ++letter) {
        settings.vat.at(letter) = VatRate{percents.at(letter), std::nullopt};
    }
    settings.payments[2] = paymentType("Karta", false);
    settings.payments[3] = paymentType("Stravné lístky", false);
    settings.payments[4] = paymentType("Poukaz", false);
    settings.payments[foreignCurrency] = paymentType("Cudzia mena", true);
    return settings;
}

} // namespace virtual_printer
