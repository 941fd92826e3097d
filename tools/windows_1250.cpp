#include "tools/windows_1250.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>

namespace telvofm::tools {
namespace {

constexpr unsigned char upperHalf = 0x80;

// How many bytes the character has that begins with this one; 0 when none does.
std::size_t sizeBehind(unsigned char first)
{
    if (first < upperHalf) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return 2;
    }
    if (first >= 0xE0 && first < 0xF0) {
        return 3;
    }
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

// The bytes of the first character.
std::string_view firstCharacter(std::string_view text)
{
    const std::size_t size = sizeBehind(static_cast<unsigned char>(text.front()));
    const std::string_view character = text.substr(0, size);
    const bool isWhole = size != 0 && character.size() == size &&
                         std::all_of(character.begin() + 1, character.end(), [](char byte) {
                             return (static_cast<unsigned char>(byte) & 0xC0U) == upperHalf;
                         });
    return isWhole ? character : std::string_view{};
}

// One byte per character, found by its UTF-8.
char byteOf(std::string_view character, std::size_t position)
{
    if (character.size() == 1) {
        return character.front();
    }
    for (unsigned byte = upperHalf; byte <= 0xFF; ++byte) {
        if (utf8Of(static_cast<unsigned char>(byte), windows1250) == character) {
            return static_cast<char>(byte);
        }
    }
    throw std::invalid_argument("the character " + std::string(character) + " at position " +
                                std::to_string(position) +
                                " is not in Windows-1250, which the library takes; write it another way");
}

bool isControl(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    const bool isLow = character.size() == 1 && (first < 0x20 || first == 0x7F);
    const bool isHigh = first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
    return isLow || isHigh;
}

std::string escapeOf(char byte)
{
    std::array<char, 5> escape{};
    std::snprintf(escape.data(), escape.size(), "\\x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    return escape.data();
}

template <typename IsKept>
std::string escaped(std::string_view bytes, const CodePage& codePage, IsKept isKept)
{
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        const std::string character = utf8Of(value, codePage);
        if (isControl(character) && !isKept(byte)) {
            text += escapeOf(byte);
        } else {
            text += character;
        }
    }
    return text;
}

} // namespace

std::string windows1250Of(std::string_view utf8)
{
    std::string bytes;
    for (std::size_t position = 1; !utf8.empty(); ++position) {
        const std::string_view character = firstCharacter(utf8);
        if (character.empty()) {
            throw std::invalid_argument("the text is not in UTF-8 from position " + std::to_string(position) +
                                        " on; use a terminal that writes UTF-8");
        }
        bytes.push_back(byteOf(character, position));
        utf8.remove_prefix(character.size());
    }
    return bytes;
}

std::string utf8Of(std::string_view bytes, const CodePage& codePage)
{
    std::string text;
    for (const char byte : bytes) {
        text += utf8Of(static_cast<unsigned char>(byte), codePage);
    }
    return text;
}

std::string readable(std::string_view bytes, const CodePage& codePage)
{
    return escaped(bytes, codePage, [](char byte) { return byte == '\n' || byte == '\r' || byte == '\t'; });
}

std::string readableOnOneLine(std::string_view bytes, const CodePage& codePage)
{
    return escaped(bytes, codePage, [](char /*byte*/) { return false; });
}

std::string onOneLine(std::string_view utf8)
{
    std::string line;
    while (!utf8.empty()) {
        const std::string_view character = firstCharacter(utf8);
        const bool endsLine = character == "\u2028" || character == "\u2029";
        if (character.empty() || isControl(character) || endsLine) {
            for (const char byte : utf8.substr(0, std::max<std::size_t>(character.size(), 1))) {
                line += escapeOf(byte);
            }
        } else {
            line += character;
        }
        utf8.remove_prefix(std::max<std::size_t>(character.size(), 1));
    }
    return line;
}

} // namespace telvofm::tools
