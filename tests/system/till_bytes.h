// What a till sends to a printer, as bytes.
#pragma once

#include <string>
#include <vector>

namespace telvofm::test {

inline std::string withChecksum(const std::string& unit)
{
    char sum = 0;
    for (const char byte : unit) {
        sum = static_cast<char>(sum ^ byte);
    }
    return unit + sum;
}

inline std::string request(unsigned char command, const std::vector<std::string>& fields = {})
{
    std::string unit = {'\x1C', '\x01', static_cast<char>(command)};
    for (const std::string& field : fields) {
        unit += field + '\0';
    }
    return withChecksum(unit + '\x04');
}

inline std::string blockOf(const std::string& data, char terminator)
{
    return withChecksum(std::string(":") + static_cast<char>(data.size() - 1) + data + terminator);
}

} // namespace telvofm::test
