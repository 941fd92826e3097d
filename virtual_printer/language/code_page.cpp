#include "virtual_printer/language/code_page.h"

#include "virtual_printer/language/code_page_character.h"

#include <array>
#include <map>

namespace virtual_printer {
namespace {

constexpr std::size_t bytes = 256;
constexpr unsigned char firstAboveAscii = 0x80;

// The control character of this value: two bytes in UTF-8.
std::string controlCharacter(unsigned char byte)
{
    return {'\xC2', static_cast<char>(byte)};
}

struct Table
{
    std::array<std::string, bytes> characters;
    std::map<std::string, char, std::less<>> byCharacter;
};

Table makeTable(CodePage codePage)
{
    Table table;
    for (std::size_t value = 0; value < bytes; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        std::string& character = table.characters[value];
        character =
            byte < firstAboveAscii ? std::string(1, static_cast<char>(byte)) : characterOf(byte, codePage);
        if (character.empty()) {
            character = controlCharacter(byte);
        }
        table.byCharacter.emplace(character, static_cast<char>(byte));
    }
    return table;
}

const Table& tableOf(CodePage codePage)
{
    static const Table windows1250 = makeTable(CodePage::windows1250);
    static const Table cp852 = makeTable(CodePage::cp852);
    return codePage == CodePage::cp852 ? cp852 : windows1250;
}

// How many bytes the character that begins with this one has.
std::size_t sizeOfCharacter(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC0) {
        return 1;
    }
    if (byte < 0xE0) {
        return 2;
    }
    return byte < 0xF0 ? 3 : 4;
}

} // namespace

std::string toUtf8(std::string_view text, CodePage codePage)
{
    const Table& table = tableOf(codePage);
    std::string result;
    result.reserve(text.size());
    for (const char byte : text) {
        result += table.characters[static_cast<unsigned char>(byte)];
    }
    return result;
}

std::string fromUtf8(std::string_view text, CodePage codePage)
{
    const Table& table = tableOf(codePage);
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = text.substr(0, sizeOfCharacter(text.front()));
        const auto found = table.byCharacter.find(character);
        result.push_back(found == table.byCharacter.end() ? '?' : found->second);
        text.remove_prefix(character.size());
    }
    return result;
}

} // namespace virtual_printer
