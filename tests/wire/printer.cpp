#include "tests/wire/printer.h"

#include "tests/wire/modem_lines.h"

#include <algorithm>
#include <utility>

namespace wire {
namespace {

using namespace std::chrono_literals;

// Bytes of a call that has returned are still on their way; only a test that fails waits for this long.
constexpr auto grace = 5000ms;
constexpr auto glance = 20ms;

} // namespace

Printer::Printer(Connection& openConnection, const std::vector<Step>& playedSteps, Look look)
    : connection(openConnection), steps(playedSteps), lookAtFirstRequest(std::move(look)),
      played(setFirstLines()), player([this] { play(); })
{
}

// The number of steps done.
std::size_t Printer::setFirstLines()
{
    std::size_t done = 0;
    for (; done < steps.size() && steps[done].kind == Step::Kind::lines; ++done) {
        setModemLines(steps[done].bytes[0]);
    }
    return done;
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
    for (; played < steps.size(); ++played) {
        const Step& step = steps[played];
        switch (step.kind) {
        case Step::Kind::expect:
            if (!expect(step) || !looksRight()) {
                connection.close(); // so that the call ends
                return;
            }
            break;
        case Step::Kind::answer:
            answer(step);
            break;
        case Step::Kind::quiet:
            if (!staysQuiet(step)) {
                connection.close();
                return;
            }
            break;
        case Step::Kind::lines:
            setModemLines(step.bytes[0]);
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
        const auto bytes = connection.receive(step.bytes.size() - received.size(), glance);
        if (!bytes) {
            break;
        }
        received += *bytes;
        if (hadReturned && bytes->empty()) {
            waitedAfterReturn += glance;
        }
    }
    if (received == step.bytes) {
        return true;
    }
    problem = "line " + std::to_string(step.line) + ": the library should send\n      " +
              hexadecimal(step.bytes) + "\n    and sent\n      " + hexadecimal(received);
    return false;
}

// Only the first time.
bool Printer::looksRight()
{
    if (const Look look = std::exchange(lookAtFirstRequest, nullptr)) {
        problem = look();
    }
    return problem.empty();
}

bool Printer::staysQuiet(const Step& step)
{
    constexpr auto moment = 200ms;
    const auto bytes = connection.receive(1, moment);
    if (bytes && bytes->empty() && !callHasReturned) {
        return true;
    }
    problem = "line " + std::to_string(step.line) + ": the library should wait and send nothing";
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
