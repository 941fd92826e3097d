// Byte strings as tests write them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace telvofm::test {

inline std::string bytes(std::initializer_list<int> values)
{
    std::string text;
    for (const int value : values) {
        text.push_back(static_cast<char>(value));
    }
    return text;
}

// A data block as the printer sends it: ":", the length less one, the data, the terminator and their XOR.
inline std::string block(std::string_view data, char terminator)
{
    std::string whole = ":";
    whole.push_back(static_cast<char>(data.size() - 1));
    whole.append(data);
    whole.push_back(terminator);
    char sum = 0;
    for (const char byte : whole) {
        sum = static_cast<char>(sum ^ byte);
    }
    whole.push_back(sum);
    return whole;
}

// The same block with a wrong checksum byte.
inline std::string damagedBlock(std::string_view data, char terminator)
{
    std::string whole = block(data, terminator);
    whole.back() = static_cast<char>(whole.back() ^ 0x55);
    return whole;
}

inline constexpr char etx = 0x03; // ends the last block
inline constexpr char eot = 0x04; // no data, or no more
inline constexpr char ack = 0x06;
inline constexpr char nak = 0x15;
inline constexpr char etb = 0x17; // ends a block that others follow

} // namespace telvofm::test
