#include "tests/sweep/printer_on_link.h"

#include <array>
#include <chrono>
#include <optional>

namespace telvofm::test::sweep {
namespace {

Milliseconds realTime()
{
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace

PrinterOnLink::PrinterOnLink(Milliseconds betweenLooks)
    : link(Link::tcp), glance(betweenLooks), thread([this] { serve(); })
{
}

PrinterOnLink::PrinterOnLink(wire::Connection& serialLine, Milliseconds betweenLooks,
                             std::function<void(bool areOn)> move)
    : link(Link::serial), glance(betweenLooks), line(&serialLine), moveLines(std::move(move)),
      thread([this] { serve(); })
{
}

PrinterOnLink::~PrinterOnLink()
{
    isEnding = true;
    thread.join();
}

void PrinterOnLink::begin(const Fault& fault, const SimulatedPrinter& printer)
{
    const std::scoped_lock lock(state);
    faulty = FaultyWire(link);
    faulty.printer = printer;
    passedBefore.clear();
    faulty.advanceTo(realTime() + skipped);
    faulty.arm(fault);
}

void PrinterOnLink::beginCall()
{
    const std::scoped_lock lock(state);
    passedBefore.insert(passedBefore.end(), faulty.events.begin(), faulty.events.end());
    faulty.beginCall();
    heardBefore = faulty.printer.heard().size();
    refusedBefore = faulty.printer.refused().size();
    bytesBefore = faulty.extent().toPrinter;
}

CallAtPrinter PrinterOnLink::endCall()
{
    const std::scoped_lock lock(state);
    const auto& heard = faulty.printer.heard();
    const auto& refused = faulty.printer.refused();
    return {{heard.begin() + static_cast<std::ptrdiff_t>(heardBefore), heard.end()},
            {refused.begin() + static_cast<std::ptrdiff_t>(refusedBefore), refused.end()},
            faulty.metLateAnswer,
            faulty.extent(),
            faulty.extent().toPrinter - bytesBefore};
}

std::vector<WireEvent> PrinterOnLink::passed()
{
    const std::scoped_lock lock(state);
    std::vector<WireEvent> all = passedBefore;
    all.insert(all.end(), faulty.events.begin(), faulty.events.end());
    return all;
}

void PrinterOnLink::awaitQuiet()
{
    constexpr int enoughLooks = 2;
    quietLooks = 0;
    while (quietLooks < enoughLooks && !isPulledOut) {
        std::this_thread::sleep_for(glance);
    }
}

void PrinterOnLink::settle()
{
    constexpr Milliseconds longPause{2000};
    awaitQuiet();
    const std::scoped_lock lock(state);
    skipped += longPause;
}

void PrinterOnLink::serve()
{
    while (!isEnding) {
        if (line != nullptr) {
            serveConnection(*line);
            stayPulledOut(*line);
            continue;
        }
        wire::Connection connection = listener.accept(glance);
        ++quietLooks;
        if (connection.isOpen()) {
            serveConnection(connection);
        }
    }
}

void PrinterOnLink::serveConnection(wire::Connection& connection)
{
    while (!isEnding && exchange(connection)) {
    }
}

// A line that a fault has closed.
void PrinterOnLink::stayPulledOut(wire::Connection& closedByFault)
{
    if (!whileStill([&] { return faulty.hasEnded(); })) {
        return;
    }
    closedByFault.close();
    isPulledOut = true;
    while (isPulledOut && !isEnding) {
        std::this_thread::sleep_for(glance);
    }
}

void PrinterOnLink::plugAgain(const std::function<void()>& open)
{
    if (!whileStill([&] { return faulty.hasEnded(); })) {
        return;
    }
    while (!isPulledOut) {
        std::this_thread::sleep_for(glance);
    }
    open();
    whileStill([&] { faulty = FaultyWire(link); });
    isPulledOut = false;
}

bool PrinterOnLink::exchange(wire::Connection& connection)
{
    constexpr std::size_t piece = 512;
    const auto heard = connection.receive(piece, glance);
    const std::scoped_lock lock(state);
    faulty.advanceTo(realTime() + skipped);
    if (heard && !heard->empty()) {
        quietLooks = 0;
        faulty.send(*heard);
    } else {
        ++quietLooks;
    }
    if (line != nullptr && faulty.areLinesOn() != areLinesOn) {
        areLinesOn = !areLinesOn;
        moveLines(areLinesOn); // before what it is ready to say
    }
    std::array<char, piece> said{};
    while (faulty.hasCome()) {
        connection.send({said.data(), faulty.take(said)});
    }
    const bool isOver = !heard || faulty.hasEnded();
    if (isOver && line != nullptr) {
        std::this_thread::sleep_for(glance); // nobody has the other end of the terminal open
    }
    return !isOver;
}

} // namespace telvofm::test::sweep
