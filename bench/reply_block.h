// A data block of a printer's reply, as the printers of the benchmarks send it.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

inline std::string replyBlock(std::size_t dataSize, bool isLast)
{
    std::string bytes = ":";
    bytes += static_cast<char>(dataSize - 1);
    for (std::size_t i = 0; i < dataSize; ++i) {
        bytes += static_cast<char>('!' + i % 90);
    }
    bytes += isLast ? '\x03' : '\x17';
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    return bytes + sum;
}

} // namespace bench
