#include "virtual_printer/faults/fault_keys.h"

#include "virtual_printer/faults/fault_values.h"
#include "virtual_printer/language/commands.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

constexpr int longestDuration = 24 * 60 * 60 * 1000; // a day
constexpr int largestByte = 255;
constexpr int largestCount = 1'000'000;
constexpr int largestPlace = 65'535;

void readCommand(Fault& fault, const Json& value)
{
    const std::string text = value.is_string() ? value.get<std::string>() : "";
    const auto rules = commandRules();
    if (text == nameOfBlocks ||
        std::any_of(rules.begin(), rules.end(), [&](const CommandRule& rule) { return rule.name == text; })) {
        fault.commandName = text;
    } else if (const auto code = bytesOf(value); text.size() == 2 && code) {
        fault.commandCode = static_cast<unsigned char>(code->front());
    } else {
        refuseFault(
            R"("command" is a name or a code of the command table, as "payment" or "30", or "block"; a code )"
            R"(may also be one that no command has.)");
    }
}

void readProbability(Fault& fault, const Json& value)
{
    if (!value.is_number() || value <= 0 || value > 1) {
        refuseFault(R"("probability" is a number above 0 and at most 1.)");
    }
    fault.probability = value.get<double>();
}

std::string readBytes(const Json& value)
{
    constexpr std::size_t most = 1024;
    const auto bytes = bytesOf(value);
    if (!bytes || bytes->size() > most) {
        refuseFault(R"("bytes" are 1 to 1024 bytes as pairs of hexadecimal digits, as "15 31".)");
    }
    return *bytes;
}

// Keys of the selection are refused where there is nothing to select.
constexpr unsigned ofSelection = 1U << 31U;

constexpr std::array keys = {
    FaultKey{"command", ofSelection, 0, readCommand},
    FaultKey{"fromRequest", ofSelection, 0,
             [](Fault& fault, const Json& value) {
                 fault.fromRequest = wholeOf(value, "fromRequest", 1, largestCount);
             }},
    FaultKey{"fromCall", ofSelection, 0,
             [](Fault& fault, const Json& value) {
                 fault.fromCall = wholeOf(value, "fromCall", 1, largestCount);
             }},
    FaultKey{"requests", ofSelection, 0,
             [](Fault& fault, const Json& value) {
                 fault.requests = wholeOf(value, "requests", 1, largestCount);
             }},
    FaultKey{"calls", ofSelection, 0,
             [](Fault& fault, const Json& value) { fault.calls = wholeOf(value, "calls", 1, largestCount); }},
    FaultKey{"probability", ofSelection, 0, readProbability},
    FaultKey{"seed", ofSelection, 0, [](Fault& fault, const Json& value) { fault.seed = seedOf(value); }},
    // 0 would read as success.
    FaultKey{"code", needsCode, needsCode,
             [](Fault& fault, const Json& value) {
                 fault.code = static_cast<unsigned char>(wholeOf(value, "code", 1, largestByte));
             }},
    FaultKey{"milliseconds", needsDuration | takesDuration, needsDuration,
             [](Fault& fault, const Json& value) {
                 fault.duration = milliseconds(wholeOf(value, "milliseconds", 1, longestDuration));
             }},
    FaultKey{"byte", needsByte, needsByte,
             [](Fault& fault, const Json& value) {
                 fault.byte = static_cast<std::size_t>(wholeOf(value, "byte", 0, largestPlace));
             }},
    FaultKey{"bit", takesBit, 0,
             [](Fault& fault, const Json& value) {
                 constexpr int highest = 7;
                 fault.bit = wholeOf(value, "bit", 0, highest);
             }},
    FaultKey{"bytes", needsBytes, needsBytes,
             [](Fault& fault, const Json& value) { fault.bytes = readBytes(value); }},
    FaultKey{
        "blocks", takesBlocks, 0,
        [](Fault& fault, const Json& value) { fault.blocks = wholeOf(value, "blocks", 1, largestCount); }},
    FaultKey{"at", takesMoment, 0,
             [](Fault& fault, const Json& value) {
                 fault.at = static_cast<FaultMoment>(choiceOf(value, "at", momentNames));
             }},
    FaultKey{"probes", takesProbes, 0,
             [](Fault& fault, const Json& value) {
                 fault.probes = static_cast<Probes>(choiceOf(value, "probes", probesNames));
             }},
};

} // namespace

std::span<const FaultKey> faultKeys()
{
    return keys;
}

bool takes(const FaultRule& rule, const FaultKey& key)
{
    if (key.allowedBy == ofSelection) {
        return (rule.parameters & hasNoSelection) == 0;
    }
    return (rule.parameters & key.allowedBy) != 0;
}

} // namespace virtual_printer
