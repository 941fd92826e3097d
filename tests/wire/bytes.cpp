#include "tests/wire/bytes.h"

#include <charconv>
#include <stdexcept>

namespace wire {
namespace {

int numberOf(std::string_view text, int base)
{
    int value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != text.data() + text.size()) {
        throw std::runtime_error("'" + std::string(text) + "' is no number");
    }
    return value;
}

char byteOf(std::string_view pair)
{
    if (pair.size() != 2) {
        throw std::runtime_error("'" + std::string(pair) + "' is no hexadecimal pair");
    }
    return static_cast<char>(numberOf(pair, 16));
}

// Reads the escape behind a backslash at `position` and moves past it.
char escaped(std::string_view line, std::size_t& position)
{
    const char kind = position < line.size() ? line[position++] : '\0';
    switch (kind) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case '\\':
    case '"':
    case '\'':
        return kind;
    case 'x': {
        const char byte = byteOf(line.substr(position, 2));
        position += 2;
        return byte;
    }
    default:
        throw std::runtime_error("an unknown escape in a quoted text");
    }
}

Word quotedWord(std::string_view line, std::size_t& position)
{
    const char quote = line[position++];
    Word word{.text = {}, .isQuoted = true};
    while (position < line.size() && line[position] != quote) {
        const char next = line[position++];
        word.text.push_back(next == '\\' ? escaped(line, position) : next);
    }
    if (position == line.size()) {
        throw std::runtime_error("a quoted text without its end");
    }
    ++position;
    return word;
}

} // namespace

std::vector<Word> splitWords(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r";
    std::vector<Word> words;
    std::size_t position = 0;
    while ((position = line.find_first_not_of(blanks, position)) != std::string_view::npos) {
        if (line[position] == '#') {
            break;
        }
        if (line[position] == '"' || line[position] == '\'') {
            words.push_back(quotedWord(line, position));
            continue;
        }
        const auto end = std::min(line.find_first_of(blanks, position), line.size());
        words.push_back({.text = std::string(line.substr(position, end - position)), .isQuoted = false});
        position = end;
    }
    return words;
}

std::string bytesOf(const std::vector<Word>& words, std::size_t first)
{
    std::string bytes;
    for (std::size_t i = first; i < words.size(); ++i) {
        if (words[i].isQuoted) {
            bytes += words[i].text;
        } else if (words[i].text == "fill") {
            if (i + 2 >= words.size()) {
                throw std::runtime_error("fill wants a number and a byte");
            }
            bytes.append(static_cast<std::size_t>(numberOf(words[i + 1].text, 10)),
                         byteOf(words[i + 2].text));
            i += 2;
        } else {
            bytes.push_back(byteOf(words[i].text));
        }
    }
    return bytes;
}

char checksumOf(std::string_view bytes)
{
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    return sum;
}

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += {digits[value >> 4U], digits[value & 0x0FU], ' '};
    }
    return text;
}

} // namespace wire
