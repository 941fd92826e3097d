// The table of VAT rates.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <charconv>

namespace virtual_printer {
namespace {

constexpr int highestPercent = 99;
constexpr int highestReverseConstant = 9999;

// A decimal number, as the kind of the field makes sure. Empty: there is none.
Verdict readReverseConstant(const Fields& fields, std::size_t index, std::optional<double>& constant)
{
    const std::string& text = fields.raw(index);
    constant.reset();
    if (text.empty()) {
        return Refusal::none;
    }
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) {
        return fields.refused(Refusal::badNumber, index, "a number or nothing");
    }
    constant = value;
    return value < 0 || value > highestReverseConstant
               ? fields.refused(Refusal::valueOutOfRange, index, "0 to 9999, or nothing")
               : Verdict();
}

// A rate of a whole table: below zero means that the letter has none.
Verdict readRate(const Fields& fields, std::size_t first, std::optional<VatRate>& rate)
{
    const int percent = fields.whole(first);
    const int constant = fields.whole(first + 1);
    Verdict verdict = firstOf({percent <= highestPercent
                                   ? Verdict()
                                   : fields.refused(Refusal::valueOutOfRange, first, "at most 99 percent"),
                               constant <= highestReverseConstant
                                   ? Verdict()
                                   : fields.refused(Refusal::valueOutOfRange, first + 1, "at most 9999")});
    if (verdict != Refusal::none || percent < 0) {
        return verdict;
    }
    rate.emplace();
    rate->percent = percent;
    if (constant >= 0) {
        rate->reverseConstant = constant;
    }
    return Refusal::none;
}

} // namespace

Verdict setVat(Draft& draft, const Fields& fields)
{
    const char letter = fields.letter(1);
    const int percent = fields.whole(2);
    VatRate rate{percent, std::nullopt};
    Verdict verdict = firstOf(
        {letter < 'A' || letter >= 'A' + static_cast<int>(vatLetters) ? Refusal::unknownVat : Refusal::none,
         checkRange(fields, 2, 0, highestPercent), readReverseConstant(fields, 3, rate.reverseConstant)});
    if (verdict == Refusal::none) {
        draft.settings().vat.at(static_cast<std::size_t>(letter - 'A')) = rate;
    }
    return verdict;
}

Verdict setAllVats(Draft& draft, const Fields& fields)
{
    // The table of five rates has nothing behind them, the one of eight a date.
    constexpr std::size_t fieldsOfFive = 11;
    const bool hasDate = fields.count() > fieldsOfFive;
    const std::size_t rates = (fields.count() - (hasDate ? 2 : 1)) / 2;
    std::array<std::optional<VatRate>, vatLetters> table;
    for (std::size_t letter = 0; letter < rates; ++letter) {
        Verdict verdict = readRate(fields, 1 + 2 * letter, table.at(letter));
        if (verdict != Refusal::none) {
            return verdict;
        }
    }
    draft.settings().vat = table;
    if (hasDate) {
        draft.settings().others["VAT rates from"] = fields.text(fields.count() - 1);
    }
    return Refusal::none;
}

} // namespace virtual_printer
