#include "virtual_printer/faults/fault_json.h"

#include "virtual_printer/faults/fault_keys.h"
#include "virtual_printer/faults/fault_values.h"
#include "virtual_printer/language/commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;
using std::chrono::milliseconds;

const FaultRule& kindOf(const Json& json)
{
    if (!json.is_object()) {
        refuseFault(R"(A fault is a JSON object, as {"kind": "refuse", "code": 49}.)");
    }
    const auto kind = json.find("kind");
    const std::string name = kind != json.end() && kind->is_string() ? kind->get<std::string>() : "";
    const auto* const rule = std::find_if(faultRules.begin(), faultRules.end(),
                                          [&](const FaultRule& known) { return known.name == name; });
    if (rule == faultRules.end()) {
        std::array<std::string_view, faultRules.size()> names;
        std::transform(faultRules.begin(), faultRules.end(), names.begin(),
                       [](const FaultRule& known) { return known.name; });
        refuseFault(R"("kind" is one of )" + listOf(names) + ".");
    }
    return *rule;
}

// Whether what the fault selects may be a command of this kind. Blocks are none, and what the printer does
// not know is none.
template <typename Condition>
bool mayMeet(const Fault& fault, Condition condition)
{
    if (fault.commandName.empty() && !fault.commandCode) {
        return true;
    }
    const auto rules = commandRules();
    return std::any_of(rules.begin(), rules.end(), [&](const CommandRule& rule) {
        return (rule.name == fault.commandName ||
                fault.commandCode == static_cast<unsigned char>(rule.command)) &&
               condition(rule);
    });
}

bool isQuestion(const CommandRule& rule)
{
    return rule.wants == Wants::reply;
}

// What it hinders must come: nothing is written or carried out upon a question, and what the printer does not
// know it refuses itself.
void requireCarryingOut(const Fault& fault)
{
    if (fault.commandName == nameOfBlocks) {
        return;
    }
    const bool isOfKeeping =
        fault.kind == FaultKind::diskFull || fault.kind == FaultKind::acknowledgedNotExecuted;
    const bool isOfAny = fault.kind == FaultKind::executedNotAcknowledged;
    const auto fits = [isOfKeeping](const CommandRule& rule) { return !isOfKeeping || !isQuestion(rule); };
    if ((isOfKeeping || isOfAny) && !mayMeet(fault, fits)) {
        refuseFault("A fault of the kind " + std::string(ruleOf(fault.kind).name) +
                    " is done to what is carried out" + (isOfKeeping ? " and kept" : "") +
                    ", and nothing is upon what \"command\" selects.");
    }
}

void requireSense(const Fault& fault)
{
    const FaultRule& rule = ruleOf(fault.kind);
    const bool isOfReply = (rule.parameters & takesBlocks) != 0 && (rule.parameters & needsByte) == 0;
    if (isOfReply && !mayMeet(fault, isQuestion)) {
        refuseFault(
            "A fault of the kind " + std::string(rule.name) +
            " is done to the blocks of a reply, and what \"command\" selects is answered without one.");
    }
    requireCarryingOut(fault);
    if (fault.kind == FaultKind::powerLoss && fault.at &&
        (*fault.at == FaultMoment::connection || *fault.at == FaultMoment::afterwards)) {
        refuseFault(R"(A powerLoss is "at" request, before anything is kept, or at answer, when it is.)");
    }
    if (fault.at == FaultMoment::connection && (fault.commandCode || !fault.commandName.empty())) {
        refuseFault(R"(A fault "at" connection meets no command; leave "command" away.)");
    }
}

} // namespace

Fault faultFromJson(const Json& json)
{
    const FaultRule& rule = kindOf(json);
    Fault fault;
    fault.kind = rule.kind;
    for (const auto& [name, value] : json.items()) {
        const auto key = std::find_if(faultKeys().begin(), faultKeys().end(),
                                      [&name = name](const FaultKey& known) { return known.name == name; });
        if (key != faultKeys().end() && takes(rule, *key)) {
            key->read(fault, value);
        } else if (name != "kind") {
            refuseFault("A fault of the kind " + std::string(rule.name) + " takes no " + inQuotes(name) +
                        ".");
        }
    }
    for (const FaultKey& key : faultKeys()) {
        if ((rule.parameters & key.neededBy) != 0 && !json.contains(key.name)) {
            refuseFault("A fault of the kind " + std::string(rule.name) + " wants " + inQuotes(key.name) +
                        ".");
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
        momentNames.at(static_cast<std::size_t>(fault.at.value_or(FaultMoment::request))));
    add("probes", fault.probes.has_value(),
        probesNames.at(static_cast<std::size_t>(fault.probes.value_or(Probes::ready))));
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
