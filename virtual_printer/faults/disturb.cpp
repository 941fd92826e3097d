#include "virtual_printer/faults/disturb.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;

constexpr char blockStart = ':';
constexpr char noTerminator = 0x55;
constexpr char refused = 0x15;
constexpr char busyByte = 0x13;
constexpr unsigned char everyBit = 0xFF;
constexpr milliseconds longest = std::chrono::hours(24);

bool isBlock(const std::string& answer)
{
    constexpr std::size_t smallest = 5;
    return answer.size() >= smallest && answer.front() == blockStart;
}

void setChecksum(std::string& block)
{
    block.back() = static_cast<char>(std::accumulate(
        block.begin(), block.end() - 1, 0, [](int sum, char byte) { return sum ^ static_cast<int>(byte); }));
}

void damageBlock(std::string& block, const Fault& fault)
{
    switch (fault.kind) {
    case FaultKind::wrongChecksum:
        block.back() = static_cast<char>(static_cast<unsigned char>(block.back()) ^ everyBit);
        break;
    case FaultKind::wrongTerminator:
        block[block.size() - 2] = noTerminator;
        setChecksum(block);
        break;
    case FaultKind::wrongLength:
        ++block[1];
        break;
    case FaultKind::blockRepeated:
        block += std::string(block);
        break;
    default:
        break;
    }
}

void damage(std::string& answer, const Fault& fault, const Circumstances& around)
{
    if (isBlock(answer)) {
        damageBlock(answer, fault);
    }
    switch (fault.kind) {
    case FaultKind::flippedBit:
        if (fault.byte < answer.size()) {
            answer[fault.byte] = static_cast<char>(static_cast<unsigned char>(answer[fault.byte]) ^
                                                   (1U << static_cast<unsigned>(fault.bit)));
        }
        break;
    case FaultKind::cut:
        answer.resize(std::min(answer.size(), fault.byte));
        break;
    case FaultKind::extraBytes:
        answer += fault.bytes;
        break;
    case FaultKind::noise:
        answer = fault.bytes + answer;
        break;
    case FaultKind::staleAnswer:
        answer = around.answerBefore;
        break;
    case FaultKind::executedNotAcknowledged:
        answer = {refused, static_cast<char>(fault.code)};
        break;
    default:
        break;
    }
}

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
    if (momentOf(fault) != FaultMoment::afterwards) {
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

// When the answer comes, and whether the link lives.
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

} // namespace

const Faults::Hit* find(const Hits& hits, FaultKind kind)
{
    const auto found = std::find_if(hits.begin(), hits.end(),
                                    [kind](const Faults::Hit& hit) { return hit.fault.kind == kind; });
    return found == hits.end() ? nullptr : &*found;
}

bool has(const Hits& hits, FaultKind kind)
{
    return find(hits, kind) != nullptr;
}

FaultMoment momentOf(const Fault& fault)
{
    return fault.at.value_or(FaultMoment::answer);
}

std::string damaged(std::string answer, const Hits& hits, const Circumstances& around)
{
    for (const Faults::Hit& hit : hits) {
        damage(answer, hit.fault, around);
    }
    return answer;
}

Steps disturbed(std::string answer, std::uint64_t exchange, const Hits& hits, const Circumstances& around)
{
    const std::string whole = answer;
    Steps steps = {{milliseconds(0), Send{damaged(std::move(answer), hits, around)}}};
    for (const Faults::Hit& hit : hits) {
        deliver(steps, hit.fault, around.isSerial);
    }
    std::erase_if(steps, [](const Step& step) {
        const auto* send = std::get_if<Send>(&step.action);
        return send != nullptr && send->bytes.empty();
    });
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Step& a, const Step& b) { return a.after < b.after; });
    // The last bytes make it whole, when it has not been damaged before.
    if (const std::string all = allBytesOf(steps);
        !all.empty() && (all == whole || all == whole + whole || all == busyByte + whole)) {
        const auto last = std::find_if(steps.rbegin(), steps.rend(), [](const Step& step) {
            return std::holds_alternative<Send>(step.action);
        });
        std::get<Send>(last->action).acknowledges = exchange;
    }
    return steps;
}

ProbesMeanwhile probesDuring(const Hits& hits)
{
    ProbesMeanwhile meanwhile;
    for (const auto& [number, fault] : hits) {
        switch (fault.kind) {
        case FaultKind::silence:
            meanwhile = {Probes::ignored, longest, 0};
            break;
        case FaultKind::requestLost:
        case FaultKind::acknowledgeLost:
            meanwhile = {fault.probes.value_or(Probes::ready), longest, 0};
            break;
        case FaultKind::acknowledgeLate:
            meanwhile = {fault.probes.value_or(Probes::ignored), *fault.duration, 0};
            break;
        case FaultKind::busy:
            meanwhile = {Probes::busy, fault.duration.value_or(longest), fault.duration ? 0 : number};
            break;
        default:
            break;
        }
    }
    return meanwhile;
}

} // namespace virtual_printer
