// A printer that knows one thing: it answers a request with a journal of a given size, block by block, each
// when the one before is acknowledged. It is a process of its own on the second core. Several tills fetch at
// once and get 256 blocks in turn: whatever the machine does meanwhile meets all of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace bench {

// The request for the whole journal of the printer 1, with its checksum byte.
inline constexpr std::string_view journalRequest = "\x1C\x01\x9F\x04\x86";
inline constexpr std::size_t largestPiece = 256;
// ":", the length byte, the terminator and the checksum byte.
inline constexpr std::size_t blockOverhead = 4;

class JournalPrinter
{
public:
    JournalPrinter(std::size_t journalSize, std::size_t numberOfTills);
    ~JournalPrinter();
    JournalPrinter(const JournalPrinter&) = delete;
    JournalPrinter& operator=(const JournalPrinter&) = delete;

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(boundPort); }
    // What each till's turns took in all, in the order of their connections; waits until all have fetched.
    [[nodiscard]] std::vector<double> seconds() const;

private:
    std::size_t tills;
    int measured = -1; // the printer's times come from there
    std::uint16_t boundPort = 0;
    pid_t process = -1;
};

// A socket connected to a port of the loopback address.
int connectTo(std::uint16_t port);

} // namespace bench
