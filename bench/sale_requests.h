// The eight requests of a receipt, as a till sends them over TCP: begin, five items, payment, end.
#pragma once

#include <string>
#include <vector>

namespace bench {

// With its checksum byte.
inline std::string request(unsigned char command, const std::vector<std::string>& fields)
{
    std::string bytes = {'\x1C', '\x01', static_cast<char>(command)};
    for (const std::string& field : fields) {
        bytes.append(field).push_back('\0');
    }
    bytes.push_back('\x04');
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    bytes.push_back(sum);
    return bytes;
}

inline std::string dayRequest()
{
    return request(0x29, {"0"});
}

inline std::vector<std::string> receiptRequests()
{
    std::vector<std::string> requests = {request(0x20, {"0", "1", "0", "0", "1", "0"})};
    for (const char* name : {"Chlieb", "Rozok", "Mlieko", "Maslo", "Syr"}) {
        requests.push_back(request(0x24, {"0", name, "2.50", "A", "1.000", "2.50", "ks "}));
    }
    requests.push_back(request(0x30, {"0", "1", "12.50", "12.50", "0", "Hotovost  "}));
    requests.push_back(request(0x22, {"0", "0"}));
    return requests;
}

} // namespace bench
