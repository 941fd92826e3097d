// What fields may hold beyond their kind: ranges of numbers, and lengths of texts in characters. What is
// refused names the field and what it takes.
#pragma once

#include "virtual_printer/fiscal/verdict.h"
#include "virtual_printer/language/fields.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>

namespace virtual_printer {

inline constexpr std::size_t longestSettingText = 80;

inline Refusal checkLength(std::string_view utf8, std::size_t shortest, std::size_t longest)
{
    // Every character of UTF-8 has one byte that does not begin with the bits 10.
    const auto characters = static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
    return characters < shortest || characters > longest ? Refusal::badText : Refusal::none;
}

// A whole number. A range of its own number means another refusal.
inline Verdict checkRange(const Fields& fields, std::size_t index, int smallest, int largest,
                          Refusal otherwise = Refusal::valueOutOfRange)
{
    const int value = fields.whole(index);
    if (value >= smallest && value <= largest) {
        return {};
    }
    const std::string last = std::to_string(largest);
    const std::string all = largest == smallest       ? last
                            : largest == smallest + 1 ? std::to_string(smallest) + " or " + last
                                                      : std::to_string(smallest) + " to " + last;
    return fields.refused(otherwise, index, all);
}

// A text without the blanks at its end.
inline Verdict checkLength(const Fields& fields, std::size_t index, std::size_t shortest, std::size_t longest)
{
    if (checkLength(fields.text(index), shortest, longest) == Refusal::none) {
        return {};
    }
    const std::string all =
        (shortest == 0 ? "at most " : std::to_string(shortest) + " to ") + std::to_string(longest);
    return fields.refused(Refusal::badText, index, all + " characters");
}

// One that is not empty; how long it may be, its kind says.
inline Verdict checkNotEmpty(const Fields& fields, std::size_t index)
{
    return fields.text(index).empty() ? fields.refused(Refusal::badText, index, "at least one character")
                                      : Verdict();
}

// The first reason to refuse, if there is one.
inline Verdict firstOf(std::initializer_list<Verdict> verdicts)
{
    const auto* const found = std::find_if(verdicts.begin(), verdicts.end(),
                                           [](const Verdict& verdict) { return verdict != Refusal::none; });
    return found == verdicts.end() ? Verdict() : *found;
}

} // namespace virtual_printer
