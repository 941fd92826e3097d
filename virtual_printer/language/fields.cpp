#include "virtual_printer/language/fields.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace virtual_printer {
namespace {

constexpr int moneyDecimals = 2;
constexpr int quantityDecimals = 3;
constexpr int rateDecimals = 4;
constexpr int degreeDecimals = 10;
constexpr std::size_t longestText = 255;

constexpr std::int64_t largestMoney = 999'999'999;            // 9,999,999.99
constexpr std::int64_t largestQuantity = 999'999'999;         // 999,999.999
constexpr std::int64_t largestRate = 999'999'999;             // 99,999.9999
constexpr std::int64_t largestDegrees = 180 * 10'000'000'000; // to either side
constexpr std::int64_t largestWhole = std::numeric_limits<int>::max();

Refusal checkNumber(std::string_view text, int decimals, std::int64_t smallest, std::int64_t largest)
{
    const auto number = parseDecimal(text, decimals);
    if (!number) {
        return Refusal::badNumber;
    }
    if (number->decimals > decimals) {
        return Refusal::tooManyDecimals;
    }
    return number->units < smallest || number->units > largest ? Refusal::valueOutOfRange : Refusal::none;
}

std::string_view withoutPlus(std::string_view text)
{
    return text.starts_with('+') ? text.substr(1) : text;
}

// How many bytes the character has that begins with this one; 0 when none does.
std::size_t sizeOfCharacter(unsigned char first)
{
    constexpr unsigned char twoBytes = 0xC2;
    constexpr unsigned char threeBytes = 0xE0;
    constexpr unsigned char fourBytes = 0xF0;
    constexpr unsigned char beyond = 0xF5;
    if (first < 0x80U) {
        return 1;
    }
    if (first < twoBytes || first >= beyond) {
        return 0;
    }
    return first < threeBytes ? 2 : first < fourBytes ? 3 : 4;
}

// Whether the text begins with a whole character of this size, in the only form that it may have.
bool isCharacter(std::string_view text, std::size_t size)
{
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    constexpr char32_t largest = 0x10FFFF;
    constexpr char32_t firstSurrogate = 0xD800;
    constexpr char32_t lastSurrogate = 0xDFFF;
    constexpr unsigned bitsOfByte = 6;
    if (size == 0 || size > text.size()) {
        return false;
    }
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    char32_t character = size == 1 ? byteAt(0) : byteAt(0) & (0x7FU >> size);
    for (std::size_t index = 1; index < size; ++index) {
        if ((byteAt(index) & 0xC0U) != 0x80U) {
            return false;
        }
        character = (character << bitsOfByte) | (byteAt(index) & 0x3FU);
    }
    return character >= smallest.at(size) && character <= largest &&
           (character < firstSurrogate || character > lastSurrogate);
}

Refusal checkText(std::string_view text)
{
    std::size_t characters = 0;
    while (!text.empty()) {
        const std::size_t size = sizeOfCharacter(static_cast<unsigned char>(text.front()));
        if (!isCharacter(text, size) || ++characters > longestText) {
            return Refusal::badText;
        }
        text.remove_prefix(size);
    }
    return Refusal::none;
}

Refusal checkLetter(std::string_view text)
{
    return text.size() == 1 && text.front() >= ' ' && text.front() <= '~' ? Refusal::none : Refusal::badText;
}

Refusal checkField(FieldKind kind, std::string_view text)
{
    switch (kind) {
    case FieldKind::whole:
        return checkNumber(text, 0, -largestWhole, largestWhole);
    case FieldKind::money:
        return checkNumber(text, moneyDecimals, -largestMoney, largestMoney);
    case FieldKind::quantity:
        return checkNumber(text, quantityDecimals, -largestQuantity, largestQuantity);
    case FieldKind::rate:
        return checkNumber(withoutPlus(text), rateDecimals, 0, largestRate);
    case FieldKind::degrees:
        return checkNumber(text, degreeDecimals, -largestDegrees, largestDegrees);
    case FieldKind::numberOrEmpty:
        return text.empty() || parseDecimal(text, 0) ? Refusal::none : Refusal::badNumber;
    case FieldKind::letter:
        return checkLetter(text);
    case FieldKind::letterOrEmpty:
        return text.empty() ? Refusal::none : checkLetter(text);
    case FieldKind::text:
        return checkText(text);
    case FieldKind::date:
        return !text.empty() && parseMoment(text, Edge::first) ? Refusal::none : Refusal::badDate;
    case FieldKind::dateOrEmpty:
        return parseMoment(text, Edge::first) ? Refusal::none : Refusal::badDate;
    case FieldKind::secret:
    case FieldKind::any:
        break;
    }
    return Refusal::none;
}

std::string_view takenBy(FieldKind kind)
{
    switch (kind) {
    case FieldKind::whole:
        return "a whole number, at most 2147483647 to either side";
    case FieldKind::money:
        return "a number with at most two decimals, at most 9999999.99 to either side";
    case FieldKind::quantity:
        return "a number with at most three decimals, at most 999999.999 to either side";
    case FieldKind::rate:
        return "a number with at most four decimals from 0 to 99999.9999, behind a + if it divides";
    case FieldKind::degrees:
        return "a number with at most ten decimals, at most 180 to either side";
    case FieldKind::numberOrEmpty:
        return "a number or nothing";
    case FieldKind::letter:
        return "one letter, digit or other printable ASCII character";
    case FieldKind::letterOrEmpty:
        return "one printable ASCII character or nothing";
    case FieldKind::text:
        return "at most 255 characters";
    case FieldKind::date:
        return "a date as 2026-01-31 or 31.01.2026, with or without 12:00";
    case FieldKind::dateOrEmpty:
        return "a date as 2026-01-31 or 31.01.2026, with or without 12:00, or nothing";
    case FieldKind::secret:
    case FieldKind::any:
        break;
    }
    return "anything";
}

std::int64_t unitsOf(std::string_view text, int decimals)
{
    return parseDecimal(text, decimals).value_or(Decimal()).units;
}

} // namespace

Verdict Fields::check(std::span<const Field> kinds, std::span<const std::string> fields)
{
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        if (const Refusal refusal = checkField(kinds[index].kind, fields[index]); refusal != Refusal::none) {
            return Fields(kinds, fields).refused(refusal, index, takenBy(kinds[index].kind));
        }
    }
    return {};
}

Verdict Fields::refused(Refusal refusal, std::size_t index, std::string_view takes) const
{
    return {refusal, std::string(kinds[index].name).append(" takes ").append(takes) + "."};
}

int Fields::whole(std::size_t index) const
{
    return static_cast<int>(unitsOf(fields[index], 0));
}

Cents Fields::money(std::size_t index) const
{
    return unitsOf(fields[index], moneyDecimals);
}

Thousandths Fields::quantity(std::size_t index) const
{
    return unitsOf(fields[index], quantityDecimals);
}

Rate Fields::rate(std::size_t index) const
{
    return {unitsOf(withoutPlus(fields[index]), rateDecimals), fields[index].starts_with('+')};
}

char Fields::letter(std::size_t index) const
{
    return fields[index].empty() || fields[index] == " " ? '\0' : fields[index].front();
}

std::string Fields::text(std::size_t index) const
{
    const std::string& text = fields[index];
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

Moment Fields::moment(std::size_t index, Edge edge) const
{
    return parseMoment(fields[index], edge).value_or(Moment{});
}

} // namespace virtual_printer
