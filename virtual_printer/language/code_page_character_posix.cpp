#include "virtual_printer/language/code_page_character.h"

#include <array>
#include <iconv.h>

namespace virtual_printer {

std::string characterOf(unsigned char byte, CodePage codePage)
{
    constexpr std::size_t longestCharacter = 8;
    const iconv_t conversion = ::iconv_open("UTF-8", codePage == CodePage::cp852 ? "CP852" : "CP1250");
    auto single = static_cast<char>(byte);
    std::array<char, longestCharacter> character{};
    char* from = &single;
    char* to = character.data();
    std::size_t fromSize = 1;
    std::size_t toSize = character.size();
    const bool isThere = ::iconv(conversion, &from, &fromSize, &to, &toSize) != static_cast<std::size_t>(-1);
    ::iconv_close(conversion);
    return isThere ? std::string(character.data(), to) : std::string();
}

} // namespace virtual_printer
