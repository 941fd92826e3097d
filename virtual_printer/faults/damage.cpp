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

bool damagesBlock(FaultKind kind)
{
    return kind == FaultKind::wrongChecksum || kind == FaultKind::wrongTerminator ||
           kind == FaultKind::wrongLength || kind == FaultKind::blockRepeated;
}

std::string damageBlock(std::string& block, FaultKind kind)
{
    if (!isBlock(block)) {
        return unfit("no block", block.size());
    }
    switch (kind) {
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
    default:
        block += std::string(block);
        break;
    }
    return {};
}

std::string flipBit(std::string& answer, const Fault& fault)
{
    if (fault.byte >= answer.size()) {
        return unfit("no such byte", answer.size());
    }
    answer[fault.byte] = static_cast<char>(static_cast<unsigned char>(answer[fault.byte]) ^
                                           (1U << static_cast<unsigned>(fault.bit)));
    return {};
}

std::string cutOff(std::string& answer, std::size_t behind)
{
    if (behind >= answer.size()) {
        return unfit("nothing to cut off", answer.size());
    }
    answer.resize(behind);
    return {};
}

std::string replaceBy(std::string& answer, const std::string& answerBefore)
{
    if (answerBefore.empty()) {
        return "there was no answer before";
    }
    if (answerBefore == answer) {
        return "the answer before was the same";
    }
    answer = answerBefore;
    return {};
}

} // namespace

bool damagesAnswer(FaultKind kind)
{
    return damagesBlock(kind) || kind == FaultKind::flippedBit || kind == FaultKind::cut ||
           kind == FaultKind::extraBytes || kind == FaultKind::noise || kind == FaultKind::staleAnswer ||
           kind == FaultKind::executedNotAcknowledged;
}

std::string unfit(std::string_view whatIsNotThere, std::size_t size)
{
    return "there is " + std::string(whatIsNotThere) + " in an answer of " +
           (size == 1 ? "one byte" : std::to_string(size) + " bytes");
}

std::string damage(std::string& answer, const Fault& fault, const std::string& answerBefore)
{
    if (damagesAnswer(fault.kind) && answer.empty()) {
        return "there was no answer";
    }
    switch (fault.kind) {
    case FaultKind::flippedBit:
        return flipBit(answer, fault);
    case FaultKind::cut:
        return cutOff(answer, fault.byte);
    case FaultKind::extraBytes:
        answer += fault.bytes;
        return {};
    case FaultKind::noise:
        answer = fault.bytes + answer;
        return {};
    case FaultKind::staleAnswer:
        return replaceBy(answer, answerBefore);
    case FaultKind::executedNotAcknowledged:
        answer = {refused, static_cast<char>(fault.code)};
        return {};
    default:
        return damagesBlock(fault.kind) ? damageBlock(answer, fault.kind) : std::string();
    }
}

} // namespace virtual_printer
