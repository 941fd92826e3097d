#include "device/amount.h"

#include "device/floating_point.h"

namespace telvofm {

bool Amount::isZero() const
{
    const double* number = std::get_if<double>(&value);
    return number != nullptr && telvofm::isZero(*number);
}

Amount number(double value)
{
    return Amount(value);
}

Amount hundredths(int value)
{
    return Amount(quotient(value, 100));
}

Amount thousandths(int value)
{
    return Amount(quotient(value, 1000));
}

Amount tenThousandths(int value)
{
    return Amount(quotient(value, 10000));
}

Amount text(const char* value)
{
    return Amount(value);
}

} // namespace telvofm
