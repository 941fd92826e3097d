// The code page of a link, and UTF-8, in which the printer keeps and prints its texts.
#pragma once

#include <string>
#include <string_view>

namespace virtual_printer {

enum class CodePage
{
    windows1250, // TCP links
    cp852        // serial links
};

// Bytes that the code page does not have become the control characters of their value, so that they come back
// as they were.
std::string toUtf8(std::string_view text, CodePage codePage);
// Characters that the code page does not have become "?".
std::string fromUtf8(std::string_view text, CodePage codePage);

} // namespace virtual_printer
