#include "virtual_printer/faults/delivery.h"

#include "virtual_printer/faults/damage.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {

using std::chrono::milliseconds;

namespace {

// What a busy printer says over TCP.
constexpr char busyByte = 0x13;

const Send* answerIn(const Step& step)
{
    const auto* send = std::get_if<Send>(&step.action);
    return send != nullptr && send->isAnswer ? send : nullptr;
}

bool isAnswer(const Step& step)
{
    return answerIn(step) != nullptr;
}

// Each answer in pieces, one behind the other.
std::string divide(Steps& steps, std::size_t first, std::size_t each, const Faults::Hit& hit)
{
    if (const std::size_t size = answerOf(steps).size(); size <= first) {
        return size == 0 ? "there was no answer" : unfit("nothing to divide", size);
    }
    Steps divided;
    milliseconds next{0};
    for (Step& step : steps) {
        const Send* answer = answerIn(step);
        if (answer == nullptr) {
            divided.push_back(std::move(step));
            continue;
        }
        next = std::max(next, step.after);
        for (std::size_t place = 0; place < answer->bytes.size(); next += *hit.fault.duration) {
            const std::size_t size = place == 0 ? first : each;
            Step piece{
                .after = next, .action = Send{answer->bytes.substr(place, size)}, .putOff = step.putOff};
            piece.putOff.push_back({.fault = hit.number, .goesAlong = true});
            divided.push_back(std::move(piece));
            place += size;
        }
    }
    steps = std::move(divided);
    return {};
}

void delay(Step& step, const PutOff& reason)
{
    step.after += reason.by;
    step.putOff.push_back(reason);
}

// For so long, and no longer than the fault.
void holdLines(Steps& steps, SetLines lines, milliseconds duration)
{
    const std::uint64_t fault = lines.fault;
    const Step off{.action = lines, .putOff = {{.fault = fault, .goesAlong = true}}};
    const Step on{
        .after = duration, .action = SetLines{.fault = fault}, .putOff = {{.fault = fault, .by = duration}}};
    steps.insert(steps.begin(), {off, on});
}

// A busy printer says so in bytes over TCP, once for all that it is busy for, and with CTS on a serial line.
void beBusy(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    const milliseconds duration = hit.fault.duration.value_or(untilDisarmed);
    std::erase_if(
        steps, [](const Step& step) { return std::holds_alternative<Send>(step.action) && !isAnswer(step); });
    for (Step& step : steps) {
        delay(step, {.fault = hit.number, .by = duration});
    }
    if (isSerial) {
        holdLines(steps, {.clearToSend = false, .fault = hit.number}, duration);
    } else {
        steps.insert(steps.begin(), {milliseconds(0), Send{.bytes = {busyByte}, .isAnswer = false}});
    }
}

std::string loseAnswer(Steps& steps)
{
    const bool isThere = !answerOf(steps).empty();
    std::erase_if(steps, isAnswer);
    return isThere ? "" : "there was no answer";
}

// In the place of the answer, or behind it: what puts the answer off puts off the end as well.
void loseLink(Steps& steps, const Faults::Hit& hit, Action action)
{
    Step end{.action = std::move(action)};
    for (const Step& step : steps) {
        if (isAnswer(step) && step.after >= end.after) {
            end.after = step.after;
            end.putOff = step.putOff;
        }
    }
    for (PutOff& reason : end.putOff) {
        reason.goesAlong = false;
    }
    end.putOff.push_back({.fault = hit.number, .goesAlong = true});
    if (hit.fault.at.value_or(FaultMoment::answer) != FaultMoment::afterwards) {
        std::erase_if(steps, isAnswer);
    }
    steps.push_back(std::move(end));
}

// The power goes, and with it all that the printer had still to say.
void losePower(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    const milliseconds down = hit.fault.duration.value_or(milliseconds(0));
    steps.clear();
    if (isSerial) {
        steps = withoutPower(hit.number, down);
        return;
    }
    if (down.count() > 0) {
        steps.push_back({milliseconds(0), RefuseConnections{down, hit.number}});
    }
    steps.push_back({milliseconds(0), ResetLink{}});
}

std::string beLate(Steps& steps, const Faults::Hit& hit)
{
    if (answerOf(steps).empty()) {
        return "there was no answer";
    }
    for (Step& step : steps) {
        if (isAnswer(step)) {
            delay(step, {.fault = hit.number, .by = *hit.fault.duration, .goesAlong = true});
        }
    }
    return {};
}

std::string sayTwice(Steps& steps, const Faults::Hit& hit)
{
    const std::string answer = answerOf(steps);
    if (answer.empty()) {
        return "there was no answer";
    }
    const Step& last = *std::find_if(steps.rbegin(), steps.rend(), isAnswer);
    Step again{.after = last.after + hit.fault.duration.value_or(milliseconds(0)),
               .action = Send{answer},
               .putOff = last.putOff};
    again.putOff.push_back({.fault = hit.number, .goesAlong = true});
    steps.push_back(std::move(again));
    return {};
}

std::string switchLine(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    if (!isSerial) {
        return "TCP has no such line";
    }
    holdLines(steps,
              {.clearToSend = hit.fault.kind != FaultKind::ctsOff,
               .dataSetReady = hit.fault.kind != FaultKind::dsrOff,
               .fault = hit.number},
              *hit.fault.duration);
    return {};
}

} // namespace

Steps withoutPower(std::uint64_t fault, milliseconds duration)
{
    Steps steps;
    holdLines(steps, {.clearToSend = false, .dataSetReady = false, .fault = fault}, duration);
    steps.insert(steps.begin(), {milliseconds(0), ForgetSteps{}});
    return steps;
}

std::string answerOf(const Steps& steps)
{
    std::string bytes;
    for (const Step& step : steps) {
        if (const Send* answer = answerIn(step)) {
            bytes += answer->bytes;
        }
    }
    return bytes;
}

std::string deliver(Steps& steps, const Faults::Hit& hit, bool isSerial)
{
    constexpr std::size_t theRest = std::string::npos / 2;
    const Fault& fault = hit.fault;
    switch (fault.kind) {
    case FaultKind::requestLost:
    case FaultKind::silence:
        loseAnswer(steps);
        return {};
    case FaultKind::acknowledgeLost:
        return loseAnswer(steps);
    case FaultKind::acknowledgeLate:
        return beLate(steps, hit);
    case FaultKind::acknowledgeTwice:
        return sayTwice(steps, hit);
    case FaultKind::busy:
        beBusy(steps, hit, isSerial);
        return {};
    case FaultKind::slow:
        return divide(steps, 1, 1, hit);
    case FaultKind::split:
        return divide(steps, std::max<std::size_t>(1, fault.byte), theRest, hit);
    case FaultKind::connectionClosed:
        loseLink(steps, hit, CloseLink{});
        return {};
    case FaultKind::connectionReset:
        loseLink(steps, hit, ResetLink{});
        return {};
    case FaultKind::halfOpen:
        loseLink(steps, hit, AbandonLink{hit.number});
        return {};
    case FaultKind::powerLoss:
        losePower(steps, hit, isSerial);
        return {};
    case FaultKind::ctsOff:
    case FaultKind::dsrOff:
        return switchLine(steps, hit, isSerial);
    default:
        return {};
    }
}

} // namespace virtual_printer
