// The printer's language as the printer reads it: requests of the form 1C, address, command, fields that each
// end with 00, and 04.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

struct Request
{
    unsigned char address = 0;
    unsigned char command = 0;
    std::vector<std::string> fields; // in the code page of the link
};

// Takes the bytes behind 1C one by one until the request is whole.
class RequestReader
{
public:
    // True when this byte has completed the request; its checksum byte is still to come.
    bool take(unsigned char byte);
    [[nodiscard]] const Request& request() const { return current; }
    // The XOR of all bytes taken, 1C included.
    [[nodiscard]] unsigned char checksum() const { return sum; }
    // A request that does not end is none.
    [[nodiscard]] bool isTooLong() const;

private:
    Request current;
    std::string field;
    std::size_t taken = 0;
    bool atFieldStart = true;
    unsigned char sum = 0x1C;
};

} // namespace virtual_printer
