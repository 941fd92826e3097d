#include "virtual_printer/paper.h"

#include <algorithm>
#include <array>
#include <iconv.h>
#include <utility>

namespace virtual_printer {

std::string toUtf8(std::string_view text, CodePage codePage)
{
    const iconv_t conversion = ::iconv_open("UTF-8", codePage == CodePage::cp852 ? "CP852" : "CP1250");
    std::string input(text);
    std::string result;
    for (char& byte : input) {
        // Byte by byte, so that one that is no character costs only itself.
        constexpr std::size_t longestCharacter = 8;
        std::array<char, longestCharacter> character{};
        char* from = &byte;
        char* to = character.data();
        std::size_t fromSize = 1;
        std::size_t toSize = character.size();
        if (::iconv(conversion, &from, &fromSize, &to, &toSize) == static_cast<std::size_t>(-1)) {
            result += "\xEF\xBF\xBD";
        } else {
            result.append(character.data(), to);
        }
    }
    ::iconv_close(conversion);
    return result;
}

void Paper::print(std::string_view text)
{
    do {
        printLine(text.substr(0, columns));
        text.remove_prefix(std::min(columns, text.size()));
    } while (!text.empty());
}

void Paper::print(std::string_view left, std::string_view right)
{
    right = right.substr(0, columns);
    while (left.size() + 1 + right.size() > columns && !left.empty()) {
        printLine(left.substr(0, columns));
        left.remove_prefix(std::min(columns, left.size()));
    }
    printLine(std::string(left) + std::string(columns - left.size() - right.size(), ' ') +
              std::string(right));
}

void Paper::center(std::string_view text)
{
    text = text.substr(0, columns);
    printLine(std::string((columns - text.size()) / 2, ' ') + std::string(text));
}

void Paper::rule(char character)
{
    printLine(std::string(columns, character));
}

std::string Paper::takeCopy()
{
    return std::exchange(copy, {});
}

void Paper::printLine(std::string_view line)
{
    copy.append(line).append("\r\n");
    std::string shown(line);
    for (char& byte : shown) {
        if (static_cast<unsigned char>(byte) < ' ') {
            byte = ' '; // a control byte must not move the terminal
        }
    }
    output(toUtf8(shown, codePage));
}

} // namespace virtual_printer
