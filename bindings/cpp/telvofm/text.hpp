// Texts as the library takes them: bytes in Windows-1250. UTF-8 goes in and comes out; there is no other
// conversion.
#pragma once

#include "result.hpp"

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace telvofm {
namespace inside {

// Takes the next character off a text in UTF-8; false when its bytes are none.
inline bool takeCharacter(std::string_view& text, char32_t& character)
{
    const auto byte = [&text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned char first = byte(0);
    const std::size_t size = first < 0x80        ? 1
                             : first >> 5U == 6  ? 2
                             : first >> 4U == 14 ? 3
                             : first >> 3U == 30 ? 4
                                                 : 0;
    if (size == 0 || size > text.size()) {
        return false;
    }
    character = size == 1 ? first : first & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if (byte(i) >> 6U != 2) {
            return false;
        }
        character = character << 6U | (byte(i) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> least = {0, 0, 0x80, 0x800, 0x10000}; // fewer bytes would do below
    if (character < least[size] || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) {
        return false;
    }
    text.remove_prefix(size);
    return true;
}

inline Failure cannotSend(std::string_view text, std::string_view what, std::size_t position)
{
    return wrongArgument(Kind::textError,
                         std::string(what) + " at position " + std::to_string(position) + " of \"" +
                             std::string(text.substr(0, text.find('\0'))) +
                             "\" cannot be sent: the printer takes Windows-1250; write it another way");
}

} // namespace inside

// The bytes of a text in UTF-8. Refuses a NUL, any character that Windows-1250 lacks, and what is no UTF-8;
// says which and at which character, counted from 0.
inline Result<std::string> encode(std::string_view text)
{
    std::string bytes;
    std::string_view rest = text;
    for (std::size_t position = 0; !rest.empty(); ++position) {
        const std::string_view before = rest;
        char32_t character = 0;
        if (!inside::takeCharacter(rest, character)) {
            return inside::cannotSend(text, "a byte that is no UTF-8", position);
        }
        if (character == 0) {
            return inside::cannotSend(text, "a NUL", position);
        }
        const auto& upperHalf = tables::windows1250;
        const auto found = std::find(upperHalf.begin(), upperHalf.end(), character);
        if (character < 0x80) {
            bytes += static_cast<char>(character);
        } else if (found != upperHalf.end()) {
            bytes += static_cast<char>(0x80 + (found - upperHalf.begin()));
        } else {
            std::array<char, 16> point{};
            std::snprintf(point.data(), point.size(), "U+%04X", static_cast<unsigned>(character));
            const std::string_view written = before.substr(0, before.size() - rest.size());
            return inside::cannotSend(text, "\"" + std::string(written) + "\" (" + point.data() + ")",
                                      position);
        }
    }
    return bytes;
}

// The text in UTF-8 of any bytes: all 256 have a character, and encode() gives back the same bytes, but for a
// NUL.
inline std::string decode(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        const char32_t character = value < 0x80 ? value : tables::windows1250[value - 0x80U];
        if (character < 0x80) {
            text += byte;
        } else if (character < 0x800) {
            text += static_cast<char>(0xC0U | character >> 6U);
            text += static_cast<char>(0x80U | (character & 0x3FU));
        } else {
            text += static_cast<char>(0xE0U | character >> 12U);
            text += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
            text += static_cast<char>(0x80U | (character & 0x3FU));
        }
    }
    return text;
}

} // namespace telvofm
