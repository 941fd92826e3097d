// The simulated printer and its faulty wire behind a real link, on a thread of its own and by the real clock.
#pragma once

#include "tests/sweep/faulty_wire.h"
#include "tests/wire/loopback.h"

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

namespace telvofm::test::sweep {

// What the printer has to say of a call.
struct CallAtPrinter
{
    std::vector<HeardRequest> heard;
    std::vector<int> refusals;
    bool metLateAnswer;
    Extent extent;
    std::size_t bytes; // that have come, whole requests or not
};

class PrinterOnLink
{
public:
    // On a socket of the loopback address, one connection after the other. It looks at its clock so often.
    explicit PrinterOnLink(Milliseconds betweenLooks = Milliseconds(1));
    // On the line of a serial printer.
    explicit PrinterOnLink(wire::Connection& serialLine, Milliseconds betweenLooks = Milliseconds(1));
    ~PrinterOnLink();
    PrinterOnLink(const PrinterOnLink&) = delete;
    PrinterOnLink& operator=(const PrinterOnLink&) = delete;

    // As the open exports take it; of a socket.
    [[nodiscard]] std::string address() const { return "127.0.0.1:" + std::to_string(listener.port()); }

    // A printer without a past on a wire with this fault.
    void begin(const Fault& fault, const SimulatedPrinter& printer);
    void beginCall();
    CallAtPrinter endCall();
    // What the look sees while the printer does nothing.
    template <typename Look>
    auto whileStill(Look look)
    {
        const std::scoped_lock lock(state);
        return look();
    }
    // What goes to the printer has come, as far as a moment tells, and a unit that broke off is given up.
    void settle();

private:
    void serve();
    void serveConnection(wire::Connection& connection);
    // One look at the link; false when the link has ended.
    bool exchange(wire::Connection& connection);

    const Link link;
    const Milliseconds glance;
    wire::Listener listener;
    wire::Connection* const line = nullptr;
    std::mutex state;
    FaultyWire faulty;
    std::size_t heardBefore = 0;
    std::size_t refusedBefore = 0;
    std::size_t bytesBefore = 0;
    Milliseconds skipped{0};
    std::atomic<int> quietLooks = 0;
    std::atomic<bool> isEnding = false;
    std::thread thread;
};

} // namespace telvofm::test::sweep
