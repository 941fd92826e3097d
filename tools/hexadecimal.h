// Bytes as a raw log writes them.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace telvofm::tools {

// "1c 01 e0", without a blank at the end.
inline std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += digits[value >> 4U];
        text += digits[value & 0x0FU];
    }
    return text;
}

} // namespace telvofm::tools
