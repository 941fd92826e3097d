#include "virtual_printer/language/request.h"

namespace virtual_printer {

bool RequestReader::take(unsigned char byte)
{
    constexpr unsigned char requestEnd = 0x04;
    constexpr std::size_t headSize = 2; // address and command
    sum ^= byte;
    ++taken;
    if (taken == 1) {
        current.address = byte;
    } else if (taken == headSize) {
        current.command = byte;
    } else if (atFieldStart && byte == requestEnd) {
        return true;
    } else if (byte == 0) {
        current.fields.push_back(std::move(field));
        field.clear();
        atFieldStart = true;
    } else {
        field.push_back(static_cast<char>(byte));
        atFieldStart = false;
    }
    return false;
}

bool RequestReader::isTooLong() const
{
    constexpr std::size_t longest = 65536;
    return taken > longest;
}

} // namespace virtual_printer
