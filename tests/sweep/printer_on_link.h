// The simulated printer and its faulty wire behind a real link, on a thread of its own and by the real clock.
#pragma once

#include "tests/sweep/faulty_wire.h"
#include "tests/wire/loopback.h"

#include <atomic>
#include <functional>
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
    std::size_t bytes = 0; // that have come, whole requests or not
};

class PrinterOnLink
{
public:
    // On a socket of the loopback address, one connection after the other. It looks at its clock so often.
    explicit PrinterOnLink(Milliseconds betweenLooks = Milliseconds(1));
    // On the line of a serial printer, whose modem lines it moves by `move`.
    explicit PrinterOnLink(
        wire::Connection& serialLine, Milliseconds betweenLooks = Milliseconds(1),
        std::function<void(bool areOn)> move = [](bool /*areOn*/) {});
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
    // All that has passed since `begin`.
    std::vector<WireEvent> passed();
    // What goes to the printer has come, as far as a moment tells.
    void awaitQuiet();
    // And a unit that broke off is given up.
    void settle();
    // Opens the line again with `open` when a fault has closed it.
    void plugAgain(const std::function<void()>& open);

private:
    void serve();
    void serveConnection(wire::Connection& connection);
    void stayPulledOut(wire::Connection& closedByFault);
    // One look at the link; false when the link has ended.
    bool exchange(wire::Connection& connection);

    const Link link;
    const Milliseconds glance;
    wire::Listener listener;
    wire::Connection* const line = nullptr;
    const std::function<void(bool)> moveLines;
    bool areLinesOn = true;
    std::mutex state;
    FaultyWire faulty;
    std::size_t heardBefore = 0;
    std::size_t refusedBefore = 0;
    std::vector<WireEvent> passedBefore; // the call
    std::size_t bytesBefore = 0;
    Milliseconds skipped{0};
    std::atomic<bool> isPulledOut = false;
    std::atomic<int> quietLooks = 0;
    std::atomic<bool> isEnding = false;
    std::thread thread;
};

} // namespace telvofm::test::sweep
