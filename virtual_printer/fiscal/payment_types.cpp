// The payment types, and the rate of the foreign currency.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

namespace virtual_printer {
namespace {

// The flag that lets a payment be larger than what is due is "0" when it may be, and "1" when it may not:
// this is meant.
constexpr int mayOverPay = 0;
constexpr int mayNotOverPay = 1;

Refusal checkPaymentType(int number, Cents minimum, int overPay)
{
    constexpr int mostTypes = 20;
    return firstOf({checkRange(number, 1, mostTypes), minimum < 0 ? Refusal::wrongSign : Refusal::none,
                    checkRange(overPay, mayOverPay, mayNotOverPay)});
}

} // namespace

Refusal setPaymentType(Draft& draft, const Fields& fields)
{
    const int number = fields.whole(0);
    const Cents minimum = fields.money(1);
    const int overPay = fields.whole(2);
    const bool isKnown = draft.state().settings->payments.contains(number);
    const Refusal refusal = firstOf(
        {checkPaymentType(number, minimum, overPay), isKnown ? Refusal::none : Refusal::unknownPayment});
    if (refusal == Refusal::none) {
        PaymentType& type = draft.settings().payments[number];
        type.minimum = minimum;
        type.mayOverPay = overPay == mayOverPay;
    }
    return refusal;
}

Refusal setNamedPaymentType(Draft& draft, const Fields& fields)
{
    constexpr std::size_t longestName = 20;
    const std::string name = fields.text(0);
    const int number = fields.whole(1);
    const Cents minimum = fields.money(2);
    const int overPay = fields.whole(3);
    const Refusal refusal =
        firstOf({checkLength(name, 1, longestName), checkPaymentType(number, minimum, overPay)});
    if (refusal == Refusal::none) {
        draft.settings().payments[number] = {name, minimum, overPay == mayOverPay};
    }
    return refusal;
}

Refusal setEuroExchangeRate(Draft& draft, const Fields& fields)
{
    const Rate rate = fields.rate(0);
    if (rate.divides) {
        return Refusal::wrongSign; // only payments say in which direction a rate goes
    }
    draft.settings().euroExchangeRate = rate.tenThousandths;
    return Refusal::none;
}

} // namespace virtual_printer
