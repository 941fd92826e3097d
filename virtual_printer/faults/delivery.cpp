#include "virtual_printer/faults/delivery.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {

using std::chrono::milliseconds;

std::string allBytesOf(const Steps& steps)
{
    std::string bytes;
    for (const Step& step : steps) {
        if (const auto* send = std::get_if<Send>(&step.action)) {
            bytes += send->bytes;
        }
    }
    return bytes;
}

namespace {

Steps piecesOf(const std::string& bytes, std::size_t first, std::size_t each, const Faults::Hit& hit)
{
    Steps steps;
    milliseconds after{0};
    for (std::size_t place = 0; place < bytes.size(); after += *hit.fault.duration) {
        const std::size_t size = place == 0 ? first : each;
        steps.push_back(
            {.after = after, .action = Send{bytes.substr(place, size)}, .putOff = {{.fault = hit.number}}});
        place += size;
    }
    return steps;
}

void delay(Steps& steps, milliseconds duration, const PutOff& reason)
{
    for (Step& step : steps) {
        step.after += duration;
        step.putOff.push_back(reason);
    }
}

void prepend(Steps& steps, Step first)
{
    steps.insert(steps.begin(), std::move(first));
}

// Its lines come back with the end of the fault at the latest.
Step linesOn(std::uint64_t fault, milliseconds after)
{
    return {.after = after, .action = SetLines{}, .putOff = {{.fault = fault, .by = after}}};
}

bool isBusyByte(const Step& step)
{
    const auto* send = std::get_if<Send>(&step.action);
    return send != nullptr && send->bytes == std::string(1, busyByte);
}

// A busy printer says so in bytes over TCP, once for all that it is busy for, and with CTS on a serial line.
void beBusy(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    const milliseconds duration = hit.fault.duration.value_or(untilDisarmed);
    std::erase_if(steps, isBusyByte);
    delay(steps, duration, {.fault = hit.number, .by = duration});
    if (!isSerial) {
        prepend(steps, {milliseconds(0), Send{std::string(1, busyByte)}});
        return;
    }
    prepend(steps, linesOn(hit.number, duration));
    prepend(steps, {milliseconds(0), SetLines{.clearToSend = false, .dataSetReady = true}});
}

void loseLink(Steps& steps, const Fault& fault, Action action)
{
    if (fault.at.value_or(FaultMoment::answer) != FaultMoment::afterwards) {
        steps.clear();
    }
    const milliseconds last = steps.empty() ? milliseconds(0) : steps.back().after;
    steps.push_back({last, std::move(action)});
}

void losePower(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    const milliseconds down = hit.fault.duration.value_or(milliseconds(0));
    steps.clear();
    if (isSerial) {
        steps.push_back({milliseconds(0), ForgetSteps{}});
        steps.push_back({milliseconds(0), SetLines{.clearToSend = false, .dataSetReady = false}});
        steps.push_back(linesOn(hit.number, down));
        return;
    }
    if (down.count() > 0) {
        steps.push_back({milliseconds(0), RefuseConnections{down, hit.number}});
    }
    steps.push_back({milliseconds(0), ResetLink{}});
}

} // namespace

void deliver(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    const Fault& fault = hit.fault;
    const milliseconds duration = fault.duration.value_or(milliseconds(0));
    switch (fault.kind) {
    case FaultKind::requestLost:
    case FaultKind::silence:
    case FaultKind::acknowledgeLost:
        steps.clear();
        break;
    case FaultKind::acknowledgeLate:
        delay(steps, duration, {.fault = hit.number});
        break;
    case FaultKind::acknowledgeTwice:
        steps.push_back(
            {.after = duration, .action = Send{allBytesOf(steps)}, .putOff = {{.fault = hit.number}}});
        break;
    case FaultKind::busy:
        beBusy(steps, hit, isSerial);
        break;
    case FaultKind::slow:
        steps = piecesOf(allBytesOf(steps), 1, 1, hit);
        break;
    case FaultKind::split:
        steps = piecesOf(allBytesOf(steps), std::max<std::size_t>(1, fault.byte), std::string::npos / 2, hit);
        break;
    case FaultKind::connectionClosed:
        loseLink(steps, fault, CloseLink{});
        break;
    case FaultKind::connectionReset:
        loseLink(steps, fault, ResetLink{});
        break;
    case FaultKind::halfOpen:
        loseLink(steps, fault, AbandonLink{hit.number});
        break;
    case FaultKind::powerLoss:
        losePower(steps, hit, isSerial);
        break;
    case FaultKind::ctsOff:
    case FaultKind::dsrOff:
        if (isSerial) {
            prepend(steps, {milliseconds(0), SetLines{.clearToSend = fault.kind != FaultKind::ctsOff,
                                                      .dataSetReady = fault.kind != FaultKind::dsrOff}});
            steps.push_back(linesOn(hit.number, duration));
        }
        break;
    default:
        break;
    }
}

} // namespace virtual_printer
