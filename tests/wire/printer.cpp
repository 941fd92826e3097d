#include "tests/wire/printer.h"

#include <algorithm>

namespace wire {
namespace {

using namespace std::chrono_literals;

// Bytes of a call that has returned are there at once on a socket, and a moment later behind a serial line.
constexpr auto grace = 300ms;
constexpr auto look = 20ms;

} // namespace

Printer::Printer(Connection& openConnection, const std::vector<Step>& playedSteps)
    : connection(openConnection), steps(playedSteps), player([this] { play(); })
{
}

std::string Printer::finish()
{
    if (player.joinable()) {
        callHasReturned = true;
        player.join();
    }
    return problem;
}

void Printer::play()
{
    for (const Step& step : steps) {
        switch (step.kind) {
        case Step::Kind::expect:
            if (!expect(step)) {
                connection.close(); // so that the call ends
                return;
            }
            break;
        case Step::Kind::answer:
            answer(step);
            break;
        case Step::Kind::close:
            connection.close();
            return;
        }
    }
    lookForMore();
}

bool Printer::expect(const Step& step)
{
    std::string received;
    auto waitedAfterReturn = 0ms;
    while (received.size() < step.bytes.size() && waitedAfterReturn < grace) {
        const bool hadReturned = callHasReturned;
        const auto bytes = connection.receive(step.bytes.size() - received.size(), look);
        if (!bytes) {
            break;
        }
        received += *bytes;
        if (hadReturned && bytes->empty()) {
            waitedAfterReturn += look;
        }
    }
    if (received == step.bytes) {
        return true;
    }
    problem = "line " + std::to_string(step.line) + ": the library should send\n      " +
              hexadecimal(step.bytes) + "\n    and sent\n      " + hexadecimal(received);
    return false;
}

void Printer::answer(const Step& step)
{
    const std::size_t pieceSize = step.pieceSize == 0 ? step.bytes.size() : step.pieceSize;
    std::string_view rest = step.bytes;
    while (!rest.empty()) {
        connection.send(rest.substr(0, pieceSize));
        rest.remove_prefix(std::min(pieceSize, rest.size()));
    }
}

void Printer::lookForMore()
{
    constexpr std::size_t enough = 256;
    bool hadReturned = false;
    while (!hadReturned) {
        hadReturned = callHasReturned;
        const auto bytes =
            connection.isOpen() ? connection.receive(enough, hadReturned ? 0ms : 2ms) : std::nullopt;
        if (!bytes) {
            return; // closed by the call itself
        }
        if (!bytes->empty()) {
            problem = "the library sent bytes that nobody expected\n      " + hexadecimal(*bytes);
            connection.close();
            return;
        }
    }
}

} // namespace wire
