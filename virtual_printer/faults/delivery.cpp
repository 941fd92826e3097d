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

Steps piecesOf(const std::string& bytes, std::size_t first, std::size_t each, milliseconds pause)
{
    Steps steps;
    milliseconds after{0};
    for (std::size_t place = 0; place < bytes.size(); after += pause) {
        const std::size_t size = place == 0 ? first : each;
        steps.push_back({after, Send{bytes.substr(place, size)}});
        place += size;
    }
    return steps;
}

void delay(Steps& steps, milliseconds duration)
{
    for (Step& step : steps) {
        step.after += duration;
    }
}

void prepend(Steps& steps, Step first)
{
    steps.insert(steps.begin(), std::move(first));
}

// A busy printer says so in bytes over TCP, and with CTS on a serial line.
void beBusy(Steps& steps, const Fault& fault, bool isSerial)
{
    if (fault.duration) {
        delay(steps, *fault.duration);
    } else {
        steps.clear();
    }
    if (!isSerial) {
        prepend(steps, {milliseconds(0), Send{std::string(1, busyByte)}});
        return;
    }
    if (fault.duration) {
        prepend(steps, {*fault.duration, SetLines{}});
    }
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

void losePower(Steps& steps, const Fault& fault, bool isSerial)
{
    const milliseconds down = fault.duration.value_or(milliseconds(0));
    steps.clear();
    if (isSerial) {
        steps.push_back({milliseconds(0), SetLines{.clearToSend = false, .dataSetReady = false}});
        steps.push_back({down, SetLines{}});
        return;
    }
    if (down.count() > 0) {
        steps.push_back({milliseconds(0), RefuseConnections{down}});
    }
    steps.push_back({milliseconds(0), ResetLink{}});
}

} // namespace

void deliver(Steps& steps, const Fault& fault, bool isSerial)
{
    const milliseconds duration = fault.duration.value_or(milliseconds(0));
    switch (fault.kind) {
    case FaultKind::requestLost:
    case FaultKind::silence:
    case FaultKind::acknowledgeLost:
        steps.clear();
        break;
    case FaultKind::acknowledgeLate:
        delay(steps, duration);
        break;
    case FaultKind::acknowledgeTwice:
        steps.push_back({duration, Send{allBytesOf(steps)}});
        break;
    case FaultKind::busy:
        beBusy(steps, fault, isSerial);
        break;
    case FaultKind::slow:
        steps = piecesOf(allBytesOf(steps), 1, 1, duration);
        break;
    case FaultKind::split:
        steps = piecesOf(allBytesOf(steps), std::max<std::size_t>(1, fault.byte), std::string::npos / 2,
                         duration);
        break;
    case FaultKind::connectionClosed:
        loseLink(steps, fault, CloseLink{});
        break;
    case FaultKind::connectionReset:
        loseLink(steps, fault, ResetLink{});
        break;
    case FaultKind::halfOpen:
        loseLink(steps, fault, AbandonLink{});
        break;
    case FaultKind::powerLoss:
        losePower(steps, fault, isSerial);
        break;
    case FaultKind::ctsOff:
    case FaultKind::dsrOff:
        if (isSerial) {
            prepend(steps, {milliseconds(0), SetLines{.clearToSend = fault.kind != FaultKind::ctsOff,
                                                      .dataSetReady = fault.kind != FaultKind::dsrOff}});
            steps.push_back({duration, SetLines{}});
        }
        break;
    default:
        break;
    }
}

} // namespace virtual_printer
