#include "virtual_printer/memory/searched_lines.h"

namespace virtual_printer {
namespace {

char foldedAscii(char character)
{
    constexpr char firstPrinted = ' ';
    if (character >= 'A' && character <= 'Z') {
        return static_cast<char>(character - 'A' + 'a');
    }
    if (character == ',') {
        return '.';
    }
    return character >= 0 && character < firstPrinted ? ' ' : character;
}

// Among the first accented letters the small ones follow the capitals in a block; behind them each follows
// its own, at first the even ones are capitals, in two parts the odd ones.
unsigned foldedLetter(unsigned letter)
{
    const auto isWithin = [letter](unsigned first, unsigned last) {
        return letter >= first && letter <= last;
    };
    constexpr unsigned multiplicationSign = 0xD7;
    if (isWithin(0xC0, 0xDE) && letter != multiplicationSign) {
        return letter + 0x20;
    }
    const bool isEven = letter % 2 == 0;
    const bool evenAreCapitals = isWithin(0x100, 0x12F) || isWithin(0x132, 0x137) || isWithin(0x14A, 0x177);
    const bool oddAreCapitals = isWithin(0x139, 0x148) || isWithin(0x179, 0x17E);
    return (evenAreCapitals && isEven) || (oddAreCapitals && !isEven) ? letter + 1 : letter;
}

void append(std::string& line, std::string_view text)
{
    if (!text.empty()) {
        line.append(line.empty() ? "" : " ").append(text);
    }
}

std::string lineOf(const Line& line)
{
    constexpr std::size_t usualSize = 64;
    std::string said;
    if (line.kind == Line::Kind::rule || line.kind == Line::Kind::picture) { // their text is no text
        return said;
    }
    said.reserve(usualSize);
    append(said, line.text);
    append(said, line.right);
    Cents before = 0;
    for (const Cents sum : {line.sum, line.unitPrice, line.base, line.foreign}) {
        if (sum != 0 && sum != before) {
            append(said, formatCents(sum));
            before = sum;
        }
    }
    return said;
}

} // namespace

// No letter becomes longer or shorter.
std::string foldedText(std::string text)
{
    constexpr unsigned char firstOfTwo = 0xC3; // bytes of the letters from U+00C0 to U+017F
    constexpr unsigned char lastOfTwo = 0xC5;
    constexpr unsigned bitsOfNext = 6;
    constexpr unsigned maskOfNext = 0x3F;
    constexpr unsigned headOfTwo = 0xC0;
    constexpr unsigned headOfNext = 0x80;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < firstOfTwo || first > lastOfTwo || i + 1 == text.size()) {
            text[i] = foldedAscii(text[i]);
            continue;
        }
        const auto next = static_cast<unsigned char>(text[i + 1]);
        const unsigned letter = foldedLetter((first - headOfTwo) << bitsOfNext | (next & maskOfNext));
        text[i] = static_cast<char>(headOfTwo | letter >> bitsOfNext);
        text[++i] = static_cast<char>(headOfNext | (letter & maskOfNext));
    }
    return text;
}

std::vector<std::string> searchedLines(const Document& document)
{
    std::vector<std::string> lines;
    lines.reserve(document.lines.size() + 3);
    const auto add = [&lines](std::string text) {
        if (!text.empty()) {
            lines.push_back(foldedText(std::move(text)));
        }
    };
    for (const Line& line : document.lines) {
        add(lineOf(line));
    }
    add(formatCents(document.total));
    add(document.invoice);
    add(document.transaction);
    return lines;
}

} // namespace virtual_printer
