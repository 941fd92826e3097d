// What fields may hold beyond their kind: ranges of numbers, and lengths of texts in characters.
#pragma once

#include "virtual_printer/fiscal/refusal.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace virtual_printer {

inline constexpr std::size_t longestSettingText = 80;

constexpr Refusal checkRange(int value, int smallest, int largest)
{
    return value < smallest || value > largest ? Refusal::valueOutOfRange : Refusal::none;
}

inline Refusal checkLength(std::string_view utf8, std::size_t shortest, std::size_t longest)
{
    // Every character of UTF-8 has one byte that does not begin with the bits 10.
    const auto characters = static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    }));
    return characters < shortest || characters > longest ? Refusal::badText : Refusal::none;
}

// The first reason to refuse, if there is one.
constexpr Refusal firstOf(std::initializer_list<Refusal> refusals)
{
    for (const Refusal refusal : refusals) {
        if (refusal != Refusal::none) {
            return refusal;
        }
    }
    return Refusal::none;
}

} // namespace virtual_printer
