#include "device/amount.h"

namespace telvofm {

bool Amount::isZero() const
{
    const double* number = std::get_if<double>(&value);
    return number != nullptr && *number == 0.0;
}

Amount number(double value)
{
    return Amount(value);
}

Amount hundredths(int value)
{
    return Amount(value / 100.0);
}

Amount thousandths(int value)
{
    return Amount(value / 1000.0);
}

Amount tenThousandths(int value)
{
    return Amount(value / 10000.0);
}

Amount text(const char* value)
{
    return Amount(value == nullptr ? std::string_view() : std::string_view(value));
}

} // namespace telvofm
