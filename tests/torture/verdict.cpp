#include "tests/torture/verdict.h"

#include <algorithm>
#include <array>
#include <set>

namespace telvofm::test::torture {
namespace {

using sweep::Exchange;
using sweep::judgedByPrinter;
using sweep::Link;

constexpr std::string_view noMemory = "std::bad_alloc";

// Their blocks are made when their command has been accepted: the one place where memory may end for the
// caller although the printer has heard something.
constexpr auto makeTheirBlocksLate = std::to_array<std::string_view>({"printQRCode", "loadRAMBitMap"});

bool hasSentItsCommandOnly(const TorturedRecord& record)
{
    const auto& heard = record.atPrinter.heard;
    return std::find(makeTheirBlocksLate.begin(), makeTheirBlocksLate.end(), record.call.name) !=
               makeTheirBlocksLate.end() &&
           heard.size() == 1 && heard.front().bytes == record.plan.request() &&
           heard.front().uploaded.empty();
}

Verdict verdictOfThrown(const TorturedRecord& record)
{
    if (!record.lacksMemory || record.outcome.thrown != noMemory) {
        return {"VIOLATION", "an exception passed out: " + record.outcome.thrown};
    }
    if (record.atPrinter.bytes == 0) {
        return {"thrown before anything was sent", {}};
    }
    if (hasSentItsCommandOnly(record)) {
        return {"thrown between a command and its blocks", {}};
    }
    return {"VIOLATION", "memory ended for the caller when the printer had heard " +
                             std::to_string(record.atPrinter.bytes) + " bytes"};
}

// Which codes say that memory has ended within an exchange.
std::set<int> codesForLackOfMemory(const TorturedRecord& record)
{
    constexpr int inCommandOverTcp = -10001;
    constexpr int elsewhere = -10000;
    constexpr int ofFile = -10201;
    if (record.call.name == "getVariableStr") {
        return {-1};
    }
    std::set<int> codes;
    const bool isCommand = record.call.kind == Exchange::Kind::command;
    codes.insert(isCommand && record.link == Link::tcp ? inCommandOverTcp : elsewhere);
    if (isCommand && !record.plan.blocks().empty()) {
        codes.insert(elsewhere);
    }
    if (!record.call.file.empty()) {
        codes.insert(ofFile);
    }
    return codes;
}

} // namespace

Verdict verdictOf(const TorturedRecord& record)
{
    const int result = record.outcome.result;
    const auto judgement = judgedByPrinter({record.plan,
                                            record.outcome,
                                            record.link,
                                            {},
                                            {},
                                            {},
                                            record.atPrinter.heard,
                                            record.atPrinter.refusals,
                                            record.atPrinter.metLateAnswer});
    const std::string name(sweep::nameOf(judgement.verdict));
    if (record.mustSucceed && judgement.verdict != sweep::Verdict::success) {
        return {"VIOLATION", "it must change nothing, and the call " +
                                 (record.outcome.thrown.empty() ? "returned " + std::to_string(result)
                                                                : "threw " + record.outcome.thrown)};
    }
    if (!record.outcome.thrown.empty()) {
        return verdictOfThrown(record);
    }
    if (judgement.verdict == sweep::Verdict::violation) {
        return {name, judgement.why};
    }
    if (judgement.verdict != sweep::Verdict::success && judgement.verdict != sweep::Verdict::failure) {
        return {name, "it returned " + std::to_string(result) + ", and nothing can be late or damaged here"};
    }
    if (record.lacksMemory && result != 0 && !codesForLackOfMemory(record).contains(result)) {
        return {"VIOLATION", "it returned " + std::to_string(result) + " for want of memory"};
    }
    return {name, {}};
}

} // namespace telvofm::test::torture
