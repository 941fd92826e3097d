#include "virtual_printer/paper/text_lines.h"

#include <algorithm>

namespace virtual_printer {
namespace {

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// How many bytes the first `count` characters have.
std::size_t sizeOfCharacters(std::string_view text, std::size_t count)
{
    std::size_t size = 0;
    while (size < text.size()) {
        if (!continuesCharacter(text[size]) && count-- == 0) {
            break;
        }
        ++size;
    }
    return size;
}

} // namespace

std::size_t widthOf(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !continuesCharacter(byte); }));
}

std::string withoutControls(std::string_view text)
{
    constexpr unsigned char deletion = 0x7F;
    constexpr char firstOfUpperControl = '\xC2';
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isUpperControl = text[i] == firstOfUpperControl && i + 1 < text.size() &&
                                    static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (isUpperControl) {
            ++i;
        }
        result.push_back(byte < ' ' || byte == deletion || isUpperControl ? ' ' : text[i]);
    }
    return result;
}

std::vector<std::string> broken(std::string_view text, std::size_t columns)
{
    std::vector<std::string> lines;
    do {
        const std::size_t size = sizeOfCharacters(text, columns);
        lines.emplace_back(text.substr(0, size));
        text.remove_prefix(size);
    } while (!text.empty());
    return lines;
}

std::vector<std::string> spread(std::string_view left, std::string_view right, std::size_t columns)
{
    right = right.substr(0, sizeOfCharacters(right, columns));
    const std::size_t room = columns - widthOf(right);
    std::vector<std::string> lines;
    while (!left.empty() && widthOf(left) + 1 > room) {
        const std::size_t size = sizeOfCharacters(left, columns);
        lines.emplace_back(left.substr(0, size));
        left.remove_prefix(size);
    }
    lines.push_back(std::string(left) + std::string(room - widthOf(left), ' ') + std::string(right));
    return lines;
}

std::vector<std::string> centred(std::string_view text, std::size_t columns)
{
    std::vector<std::string> lines = broken(text, columns);
    for (std::string& line : lines) {
        line.insert(0, (columns - widthOf(line)) / 2, ' ');
    }
    return lines;
}

} // namespace virtual_printer
