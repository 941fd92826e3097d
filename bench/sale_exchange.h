// The bytes of the item sale that the benchmarks make over and over.
#pragma once

#include <numeric>
#include <string>
#include <string_view>

namespace bench {

// Without its checksum byte.
inline std::string saleRequest()
{
    const std::string end(1, '\0');
    return "\x1C\x01\x24" + ("0" + end) + "Chlieb" + end + "12.50" + end + "A" + end + "1.500" + end +
           "8.33" + end + "ks " + end + "\x04";
}

inline char checksumOf(std::string_view request)
{
    return std::accumulate(request.begin(), request.end(), '\0',
                           [](char sum, char byte) { return static_cast<char>(sum ^ byte); });
}

} // namespace bench
