#include "virtual_printer/language/code_page_character.h"

#include <array>
#include <windows.h>

namespace virtual_printer {

std::string characterOf(unsigned char byte, CodePage codePage)
{
    constexpr UINT slavic = 852;
    constexpr UINT centralEuropean = 1250;
    constexpr wchar_t firstAfterControls = 0xA0;
    const char single = static_cast<char>(byte);
    wchar_t wide = 0;
    const int converted = ::MultiByteToWideChar(codePage == CodePage::cp852 ? slavic : centralEuropean,
                                                MB_ERR_INVALID_CHARS, &single, 1, &wide, 1);
    // Holes come back as control characters.
    if (converted != 1 || (byte >= 0x80 && wide < firstAfterControls)) {
        return {};
    }
    constexpr int longestCharacter = 8;
    std::array<char, longestCharacter> character{};
    const int size =
        ::WideCharToMultiByte(CP_UTF8, 0, &wide, 1, character.data(), longestCharacter, nullptr, nullptr);
    return {character.data(), static_cast<std::size_t>(size)};
}

} // namespace virtual_printer
