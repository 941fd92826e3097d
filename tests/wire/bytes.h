// Bytes as wire scripts write them: hexadecimal pairs and quoted texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wire {

// A word of a statement; quoted texts have their escapes resolved.
struct Word
{
    std::string text;
    bool isQuoted = false;
};

// Throws std::runtime_error on an unclosed quote or an unknown escape. A `#` outside quotes ends the line.
std::vector<Word> splitWords(std::string_view line);
// Throws std::runtime_error on a word that is no byte.
std::string bytesOf(const std::vector<Word>& words, std::size_t first);
char checksumOf(std::string_view bytes);
std::string hexadecimal(std::string_view bytes);

} // namespace wire
