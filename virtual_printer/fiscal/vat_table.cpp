#include "virtual_printer/fiscal/vat_table.h"

namespace virtual_printer {
namespace {

constexpr char firstLetter = 'A';

std::size_t indexOf(char letter)
{
    return static_cast<std::size_t>(letter - firstLetter);
}

} // namespace

Refusal checkVat(const Settings& settings, char letter)
{
    if (letter < firstLetter || indexOf(letter) >= vatLetters) {
        return Refusal::unknownVat;
    }
    return settings.vat.at(indexOf(letter)) ? Refusal::none : Refusal::vatNotSet;
}

Cents withoutVat(Cents sum, int percent)
{
    constexpr int whole = 100;
    return scaled(sum, whole, whole + percent);
}

std::vector<Line> vatTable(const ByVat& sums, const Settings& settings)
{
    std::vector<Line> table;
    for (const auto& [letter, sum] : sums) {
        const auto& rate = settings.vat.at(indexOf(letter));
        const int percent = rate ? rate->percent : 0;
        table.push_back({.kind = Line::Kind::vatSum,
                         .vat = letter,
                         .number = percent,
                         .sum = sum,
                         .base = withoutVat(sum, percent)});
    }
    return table;
}

} // namespace virtual_printer
