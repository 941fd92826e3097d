#include "virtual_printer/faults/fault_json.h"

#include "virtual_printer/language/commands.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <span>
#include <stdexcept>

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

constexpr int longestDuration = 24 * 60 * 60 * 1000; // a day
constexpr int largestByte = 255;
constexpr int largestCount = 1'000'000;
constexpr int largestPlace = 65'535;
constexpr std::array<std::string_view, 4> moments = {"connection", "request", "answer", "afterwards"};
constexpr std::array<std::string_view, 3> probes = {"ready", "busy", "ignored"};

[[noreturn]] void fail(const std::string& sentence)
{
    throw std::runtime_error(sentence);
}

std::string inQuotes(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

std::string listOf(std::span<const std::string_view> names)
{
    std::string list;
    for (const std::string_view name : names) {
        list += (list.empty() ? "" : ", ") + std::string(name);
    }
    return list;
}

int wholeOf(const Json& value, std::string_view key, int smallest, int largest)
{
    const bool isWhole = value.is_number_integer() && value >= smallest && value <= largest;
    if (!isWhole) {
        fail(inQuotes(key) + " is a whole number from " + std::to_string(smallest) + " to " +
             std::to_string(largest) + ".");
    }
    return value.get<int>();
}

std::size_t choiceOf(const Json& value, std::string_view key, std::span<const std::string_view> names)
{
    const auto found =
        std::find(names.begin(), names.end(), value.is_string() ? value.get<std::string>() : "");
    if (found == names.end()) {
        fail(inQuotes(key) + " is one of " + listOf(names) + ".");
    }
    return static_cast<std::size_t>(found - names.begin());
}

int digitOf(char character)
{
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    constexpr std::size_t sixteen = 16;
    const std::size_t place = digits.find(character);
    return place == std::string_view::npos ? -1 : static_cast<int>(place < sixteen ? place : place - 6);
}

// "15 31" or "1531"; nothing when it is no such text.
std::optional<std::string> bytesOf(const Json& value)
{
    constexpr int sixteen = 16;
    std::string digits = value.is_string() ? value.get<std::string>() : "";
    std::erase(digits, ' ');
    std::string bytes;
    for (std::size_t index = 0; index + 1 < digits.size(); index += 2) {
        const int high = digitOf(digits[index]);
        const int low = digitOf(digits[index + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * sixteen + low);
    }
    return digits.empty() || digits.size() % 2 != 0 ? std::nullopt : std::optional(bytes);
}

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += {digits[value / digits.size()], digits[value % digits.size()]};
    }
    return text;
}

void readCommand(Fault& fault, const Json& value)
{
    const std::string text = value.is_string() ? value.get<std::string>() : "";
    const auto rules = commandRules();
    if (std::any_of(rules.begin(), rules.end(), [&](const CommandRule& rule) { return rule.name == text; })) {
        fault.commandName = text;
    } else if (const auto code = bytesOf(value); text.size() == 2 && code) {
        fault.commandCode = static_cast<unsigned char>(code->front());
    } else {
        fail(R"("command" is a name or a code of the command table, as "payment" or "30".)");
    }
}

void readProbability(Fault& fault, const Json& value)
{
    if (!value.is_number() || value <= 0 || value > 1) {
        fail(R"("probability" is a number above 0 and at most 1.)");
    }
    fault.probability = value.get<double>();
}

std::string readBytes(const Json& value)
{
    constexpr std::size_t most = 1024;
    const auto bytes = bytesOf(value);
    if (!bytes || bytes->size() > most) {
        fail(R"("bytes" are 1 to 1024 bytes as pairs of hexadecimal digits, as "15 31".)");
    }
    return *bytes;
}

struct Key
{
    std::string_view name;
    unsigned allowedBy; // one of these bits of the kind; 0: always
    unsigned neededBy;
    void (*read)(Fault&, const Json&);
};

// Keys of the selection are refused where there is nothing to select.
constexpr unsigned ofSelection = 1U << 31U;

constexpr std::array keys = {
    Key{"command", ofSelection, 0, readCommand},
    Key{"fromRequest", ofSelection, 0,
        [](Fault& fault, const Json& value) {
            fault.fromRequest = wholeOf(value, "fromRequest", 1, largestCount);
        }},
    Key{"fromCall", ofSelection, 0,
        [](Fault& fault, const Json& value) {
            fault.fromCall = wholeOf(value, "fromCall", 1, largestCount);
        }},
    Key{"requests", ofSelection, 0,
        [](Fault& fault, const Json& value) {
            fault.requests = wholeOf(value, "requests", 1, largestCount);
        }},
    Key{"calls", ofSelection, 0,
        [](Fault& fault, const Json& value) { fault.calls = wholeOf(value, "calls", 1, largestCount); }},
    Key{"probability", ofSelection, 0, readProbability},
    Key{"seed", ofSelection, 0, [](Fault& fault, const Json& value) { fault.seed = seedOf(value); }},
    // 0 would read as success.
    Key{"code", needsCode, needsCode,
        [](Fault& fault, const Json& value) {
            fault.code = static_cast<unsigned char>(wholeOf(value, "code", 1, largestByte));
        }},
    Key{"milliseconds", needsDuration | takesDuration, needsDuration,
        [](Fault& fault, const Json& value) {
            fault.duration = milliseconds(wholeOf(value, "milliseconds", 1, longestDuration));
        }},
    Key{"byte", needsByte, needsByte,
        [](Fault& fault, const Json& value) {
            fault.byte = static_cast<std::size_t>(wholeOf(value, "byte", 0, largestPlace));
        }},
    Key{"bit", takesBit, 0,
        [](Fault& fault, const Json& value) {
            constexpr int highest = 7;
            fault.bit = wholeOf(value, "bit", 0, highest);
        }},
    Key{"bytes", needsBytes, needsBytes,
        [](Fault& fault, const Json& value) { fault.bytes = readBytes(value); }},
    Key{"blocks", takesBlocks, 0,
        [](Fault& fault, const Json& value) { fault.blocks = wholeOf(value, "blocks", 1, largestCount); }},
    Key{"at", takesMoment, 0,
        [](Fault& fault, const Json& value) {
            fault.at = static_cast<FaultMoment>(choiceOf(value, "at", moments));
        }},
    Key{"probes", takesProbes, 0,
        [](Fault& fault, const Json& value) {
            fault.probes = static_cast<Probes>(choiceOf(value, "probes", probes));
        }},
};

bool takes(const FaultRule& rule, const Key& key)
{
    if (key.allowedBy == ofSelection) {
        return (rule.parameters & hasNoSelection) == 0;
    }
    return (rule.parameters & key.allowedBy) != 0;
}

const FaultRule& kindOf(const Json& json)
{
    if (!json.is_object()) {
        fail(R"(A fault is a JSON object, as {"kind": "refuse", "code": 49}.)");
    }
    const auto kind = json.find("kind");
    const std::string name = kind != json.end() && kind->is_string() ? kind->get<std::string>() : "";
    const auto* const rule = std::find_if(faultRules.begin(), faultRules.end(),
                                          [&](const FaultRule& known) { return known.name == name; });
    if (rule == faultRules.end()) {
        std::array<std::string_view, faultRules.size()> names;
        std::transform(faultRules.begin(), faultRules.end(), names.begin(),
                       [](const FaultRule& known) { return known.name; });
        fail(R"("kind" is one of )" + listOf(names) + ".");
    }
    return *rule;
}

void requireSense(const Fault& fault)
{
    if (fault.kind == FaultKind::powerLoss && fault.at &&
        (*fault.at == FaultMoment::connection || *fault.at == FaultMoment::afterwards)) {
        fail(R"(A powerLoss is "at" request, before anything is kept, or at answer, when it is.)");
    }
    if (fault.at == FaultMoment::connection && (fault.commandCode || !fault.commandName.empty())) {
        fail(R"(A fault "at" connection meets no command; leave "command" away.)");
    }
}

} // namespace

std::uint32_t seedOf(const Json& value)
{
    if (!value.is_number_unsigned() || value > std::numeric_limits<std::uint32_t>::max()) {
        fail(R"("seed" is a whole number from 0 to 4294967295.)");
    }
    return value.get<std::uint32_t>();
}

Fault faultFromJson(const Json& json)
{
    const FaultRule& rule = kindOf(json);
    Fault fault;
    fault.kind = rule.kind;
    for (const auto& [name, value] : json.items()) {
        const auto* const key = std::find_if(keys.begin(), keys.end(),
                                             [&name = name](const Key& known) { return known.name == name; });
        if (key != keys.end() && takes(rule, *key)) {
            key->read(fault, value);
        } else if (name != "kind") {
            fail("A fault of the kind " + std::string(rule.name) + " takes no " + inQuotes(name) + ".");
        }
    }
    for (const Key& key : keys) {
        if ((rule.parameters & key.neededBy) != 0 && !json.contains(key.name)) {
            fail("A fault of the kind " + std::string(rule.name) + " wants " + inQuotes(key.name) + ".");
        }
    }
    requireSense(fault);
    return fault;
}

Json toJson(const Fault& fault)
{
    const FaultRule& rule = ruleOf(fault.kind);
    Json json = {{"kind", rule.name}};
    const auto add = [&](std::string_view key, bool isThere, const Json& value) {
        if (isThere) {
            json[std::string(key)] = value;
        }
    };
    const bool isSelecting = (rule.parameters & hasNoSelection) == 0;
    add("command", !fault.commandName.empty(), fault.commandName);
    if (fault.commandCode) {
        json["command"] = hexadecimal({reinterpret_cast<const char*>(&*fault.commandCode), 1});
    }
    add("fromRequest", isSelecting && fault.fromRequest != 1, fault.fromRequest);
    add("fromCall", isSelecting && fault.fromCall != 1, fault.fromCall);
    add("requests", isSelecting && fault.requests, fault.requests.value_or(0));
    add("calls", isSelecting && fault.calls, fault.calls.value_or(0));
    add("probability", isSelecting && fault.probability < 1, fault.probability);
    add("seed", isSelecting && fault.seed, fault.seed.value_or(0));
    add("code", (rule.parameters & needsCode) != 0, fault.code);
    add("milliseconds", fault.duration.has_value(), fault.duration.value_or(milliseconds(0)).count());
    add("byte", (rule.parameters & needsByte) != 0, fault.byte);
    add("bit", (rule.parameters & takesBit) != 0, fault.bit);
    add("bytes", (rule.parameters & needsBytes) != 0, hexadecimal(fault.bytes));
    add("blocks", (rule.parameters & takesBlocks) != 0, fault.blocks);
    add("at", fault.at.has_value(),
        moments.at(static_cast<std::size_t>(fault.at.value_or(FaultMoment::request))));
    add("probes", fault.probes.has_value(),
        probes.at(static_cast<std::size_t>(fault.probes.value_or(Probes::ready))));
    return json;
}

Json toJson(const Armed& armed)
{
    return {{"number", armed.number},     {"fault", toJson(armed.fault)},
            {"ended", armed.hasEnded},    {"requestsMet", armed.requestsMet},
            {"callsMet", armed.callsMet}, {"requestsHit", armed.requestsHit},
            {"callsHit", armed.callsHit}, {"exchanges", armed.exchanges}};
}

} // namespace virtual_printer
