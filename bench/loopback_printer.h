// The other end of the benchmark: a thread on a core of its own that serves several connections in turn and
// accepts every request of a known length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <thread>
#include <vector>

namespace bench {

class LoopbackPrinter
{
public:
    LoopbackPrinter();
    // The connections are closed by then.
    ~LoopbackPrinter();
    LoopbackPrinter(const LoopbackPrinter&) = delete;
    LoopbackPrinter& operator=(const LoopbackPrinter&) = delete;

    [[nodiscard]] std::uint16_t port() const { return boundPort; }
    // Accepts that many connections and serves them until the first one closes. Each request has
    // `requestLength` bytes, its checksum byte included.
    void serve(std::size_t connections, std::size_t requestLength);

private:
    void acceptRequests() const;

    int listener;
    std::uint16_t boundPort = 0;
    std::size_t lengthOfRequest = 0;
    std::vector<int> handles;
    std::thread thread;
};

} // namespace bench
