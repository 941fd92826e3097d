// The payment types, and the rate of the foreign currency.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

namespace virtual_printer {
namespace {

// The flag that lets a payment be larger than what is due is "0" when it may be, and "1" when it may not:
// this is meant.
constexpr int mayOverPay = 0;
constexpr int mayNotOverPay = 1;

// Number, smallest payment and flag follow each other, from this field on.
Verdict checkPaymentType(const Fields& fields, std::size_t number)
{
    constexpr int mostTypes = 20;
    const std::size_t minimum = number + 1;
    const bool isBelowZero = fields.money(minimum) < 0;
    return firstOf(
        {checkRange(fields, number, 1, mostTypes),
         isBelowZero ? fields.refused(Refusal::wrongSign, minimum, "no amount below zero") : Verdict(),
         checkRange(fields, minimum + 1, mayOverPay, mayNotOverPay)});
}

} // namespace

Verdict setPaymentType(Draft& draft, const Fields& fields)
{
    const int number = fields.whole(0);
    const Cents minimum = fields.money(1);
    const int overPay = fields.whole(2);
    const bool isKnown = draft.state().settings->payments.contains(number);
    Verdict verdict =
        firstOf({checkPaymentType(fields, 0), isKnown ? Refusal::none : Refusal::unknownPayment});
    if (verdict == Refusal::none) {
        PaymentType& type = draft.settings().payments[number];
        type.minimum = minimum;
        type.mayOverPay = overPay == mayOverPay;
    }
    return verdict;
}

Verdict setNamedPaymentType(Draft& draft, const Fields& fields)
{
    constexpr std::size_t longestName = 20;
    const std::string name = fields.text(0);
    const int number = fields.whole(1);
    const Cents minimum = fields.money(2);
    const int overPay = fields.whole(3);
    Verdict verdict = firstOf({checkLength(fields, 0, 1, longestName), checkPaymentType(fields, 1)});
    if (verdict == Refusal::none) {
        draft.settings().payments[number] = {name, minimum, overPay == mayOverPay};
    }
    return verdict;
}

Verdict setEuroExchangeRate(Draft& draft, const Fields& fields)
{
    const Rate rate = fields.rate(0);
    if (rate.divides) {
        // Only payments say in which direction a rate goes.
        return fields.refused(Refusal::wrongSign, 0, "no + in front");
    }
    draft.settings().euroExchangeRate = rate.tenThousandths;
    return Refusal::none;
}

} // namespace virtual_printer
