#include "tests/second_opinion/record.h"

#include <bit>

namespace telvofm::test {

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

std::string jsonBytes(const char* text)
{
    return text == nullptr ? "null" : jsonBytes(std::string_view(text));
}

std::string jsonBits(double number)
{
    const auto bits = std::bit_cast<std::uint64_t>(number);
    std::string bytes;
    for (int shift = 56; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(bits >> shift);
    }
    return jsonBytes(std::string_view(bytes));
}

} // namespace telvofm::test
