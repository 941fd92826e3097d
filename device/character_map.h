// The code-page conversion between application text (Windows-1250) and the text of a printer on a serial line
// (code page 852): byte by byte, length kept. Bytes without a counterpart pass unchanged. On TCP links
// nothing is converted and the device object does not use the maps at all.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace telvofm {

class CharacterMap
{
public:
    using Table = std::array<unsigned char, 256>;

    // Library text to printer text.
    static const CharacterMap outgoing;
    // Printer text to library text: every outgoing pair reversed, and nothing else.
    static const CharacterMap incoming;

    [[nodiscard]] char convert(char byte) const
    {
        return static_cast<char>(table[static_cast<unsigned char>(byte)]);
    }
    // Converts in place: a reply can be many megabytes long.
    void convertAll(std::string& text) const;
    // Appends the converted text, for requests that are built field by field.
    void appendConverted(std::string& target, std::string_view text) const;

private:
    explicit constexpr CharacterMap(const Table& values) : table(values) {}

    Table table;
};

} // namespace telvofm
