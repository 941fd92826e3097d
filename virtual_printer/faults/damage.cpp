#include "virtual_printer/faults/damage.h"

#include <algorithm>
#include <numeric>

namespace virtual_printer {
namespace {

constexpr char blockStart = ':';
constexpr char noTerminator = 0x55;
constexpr char refused = 0x15;
constexpr unsigned char everyBit = 0xFF;

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

void damage(std::string& answer, const Fault& fault, const std::string& answerBefore)
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
        answer = answerBefore;
        break;
    case FaultKind::executedNotAcknowledged:
        answer = {refused, static_cast<char>(fault.code)};
        break;
    default:
        break;
    }
}

} // namespace

std::string damaged(std::string answer, const Hits& hits, const std::string& answerBefore)
{
    for (const Faults::Hit& hit : hits) {
        damage(answer, hit.fault, answerBefore);
    }
    return answer;
}

} // namespace virtual_printer
