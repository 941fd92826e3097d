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

PrinterOnLink::PrinterOnLink(wire::Connection& serialLine, Milliseconds betweenLooks)
    : link(Link::serial), glance(betweenLooks), line(&serialLine), thread([this] { serve(); })
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
    faulty.advanceTo(realTime() + skipped);
    faulty.arm(fault);
}

void PrinterOnLink::beginCall()
{
    const std::scoped_lock lock(state);
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

void PrinterOnLink::settle()
{
    constexpr int enoughLooks = 2;
    constexpr Milliseconds longPause{2000};
    quietLooks = 0;
    while (quietLooks < enoughLooks) {
        std::this_thread::sleep_for(glance);
    }
    const std::scoped_lock lock(state);
    skipped += longPause;
}

void PrinterOnLink::serve()
{
    while (!isEnding) {
        if (line != nullptr) {
            serveConnection(*line);
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
