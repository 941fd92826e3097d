#include "virtual_printer/control/possible_exchange.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/control/exchange_harmony.h"
#include "virtual_printer/faults/fault.h"
#include "virtual_printer/faults/fault_values.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <array>
#include <limits>

namespace virtual_printer {
namespace {

using Kind = Exchanged::Kind;

constexpr std::size_t longestExchangeName = 100;
constexpr int largestByte = 255;

constexpr std::array otherExchanges = {
    OtherExchange{"unknown", Kind::request, false, false, ""},
    OtherExchange{"damagedRequest", Kind::damagedRequest, false, false, "00"},
    OtherExchange{"block", Kind::block, true, true, "d0, d1, d2, de or ed"},
    OtherExchange{"damagedBlock", Kind::damagedBlock, false, false, "00"},
    OtherExchange{"probe", Kind::probe, false, true, "00"},
};

// The name of a command, or of what is none.
void requireExchangeName(const std::string& name, const std::string& place)
{
    if (otherCalled(name) == nullptr && commandsCalled(name, "").empty()) {
        refuseEntry(
            "\"" + place + ".name\" is \"" + name +
            "\", and no exchange is called so; give a name of the command table, or block, damagedRequest, "
            "damagedBlock, probe or unknown.");
    }
}

std::string codeOf(const CommandRule& rule)
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(rule.command);
    return {digits[code / digits.size()], digits[code % digits.size()]};
}

// Each is one of a command that has this name and this code.
void requireFields(const Json& expected, std::string_view name, std::string_view code,
                   const std::string& place)
{
    std::vector<Field> fields;
    for (const CommandRule* command : commandsCalled(name, code)) {
        fields.insert(fields.end(), command->fields.begin(), command->fields.end());
    }
    Json form = Json::object();
    for (const Field& field : fields) {
        form[std::string(field.name)] = "";
    }
    requireForm(expected, form, place + ".fields");
    for (const auto& [member, value] : expected.items()) {
        const bool canBeSeen =
            std::any_of(fields.begin(), fields.end(), [&member = member](const Field& field) {
                return field.name == member && field.kind != FieldKind::secret;
            });
        if (!canBeSeen && value != "****") {
            std::string sentence = "\"" + place + ".fields.";
            sentence += member;
            refuseEntry(sentence + R"(" is a password, which is only ever shown as "****"; leave it out.)");
        }
    }
}

void requireCommand(const std::string& code, const std::string& name, const std::string& place)
{
    const bool isCode = code.size() == 2 && code.find_first_not_of("0123456789abcdef") == std::string::npos;
    if (!isCode) {
        refuseEntry("\"" + place +
                    R"(.command" is no code; write two hexadecimal digits in small letters, as "3a".)");
    }
    const auto named = commandsCalled(name, "");
    const OtherExchange* other = otherCalled(name);
    const std::string codes = other != nullptr                  ? std::string(other->codes)
                              : !name.empty() && !named.empty() ? codeOf(*named.front())
                                                                : "";
    if (!codes.empty() && codes.find(code) == std::string::npos) {
        refuseEntry("\"" + place + "\" is called " + name + " and has the code " + code +
                    ", and no exchange has both; it is " + codes + ".");
    }
}

struct Range
{
    std::string_view member;
    std::int64_t smallest;
    std::int64_t largest;
};

void requireWhole(const Json& expected, const Range& range, const std::string& place)
{
    static_cast<void>(
        Members(expected, place).whole(range.member, range.smallest, range.smallest, range.largest));
}

bool canSay(const RefusalText& text, const Json& refusal, const Codes& codes)
{
    const std::string whole(text.sentence);
    const std::string sentence = refusal.value("sentence", whole);
    const std::string behindIt = whole + " "; // what in particular was wrong
    const int code = codes.of(text.refusal);
    return refusal.value("name", std::string(text.name)) == text.name &&
           refusal.value("code", code) == code &&
           (sentence == whole || (sentence.starts_with(behindIt) && sentence.size() > behindIt.size()));
}

void requireRefusal(const Json& expected, const Codes& codes, const std::string& place)
{
    const auto name = expected.find("name");
    const bool isKnown =
        name == expected.end() || std::any_of(refusalTexts.begin(), refusalTexts.end(),
                                              [&](const RefusalText& text) { return *name == text.name; });
    if (!isKnown) {
        refuseEntry("\"" + place + ".refusal.name\" is " + shown(*name) +
                    ", and no refusal is called so; docs/virtual-printer.md lists them.");
    }
    requireWhole(expected, {"code", 1, largestByte}, place + ".refusal");
    if (std::none_of(refusalTexts.begin(), refusalTexts.end(),
                     [&](const RefusalText& text) { return canSay(text, expected, codes); })) {
        refuseEntry("No refusal is " + shown(expected) + ", as \"" + place +
                    ".refusal\" wants it; docs/virtual-printer.md lists them with their numbers.");
    }
}

// The trace tells what each fault did in a sentence, and of one that did nothing why.
void requireDeed(const std::string& said, const std::string& place)
{
    constexpr std::string_view idle = " did nothing: ";
    for (const FaultRule& rule : faultRules) {
        if ((rule.parameters & hasNoSelection) != 0) { // it hits no exchange
            continue;
        }
        const std::string didNothing = std::string(rule.name).append(idle);
        if (said == rule.deed || (said.starts_with(didNothing) && said.size() > didNothing.size())) {
            return;
        }
        if (said == rule.name) {
            refuseEntry(std::string("\"")
                            .append(place)
                            .append("\" is \"")
                            .append(said)
                            .append("\", and the trace has sentences there; give \"")
                            .append(rule.deed)
                            .append("\", or \"")
                            .append(didNothing)
                            .append("\" with why."));
        }
    }
    refuseEntry("\"" + place + "\" is " + shown(said) +
                ", and no fault does that; give a sentence of the trace, as \"the answer was lost\".");
}

// Every member that an exchange can have, with a value of its kind.
const Json& formOfExchange()
{
    static const Json form = [] {
        Exchanged exchanged;
        exchanged.repeatOf = 1;
        exchanged.refusal = Refusal::wrongChecksum;
        exchanged.faults = {""};
        Json members = toJson(exchanged);
        members["fields"] = Json::object();
        return members;
    }();
    return form;
}

// Numbers that no exchange has, and texts that are not as they are written there.
void requireValues(const Json& expected, const std::string& place)
{
    constexpr std::int64_t any = std::numeric_limits<std::int64_t>::max();
    constexpr int triesOfACall = 3;
    for (const Range& range :
         {Range{"number", 1, any}, Range{"till", 1, any}, Range{"address", 0, largestByte},
          Range{"repeatOf", 1, any}, Range{"repeatedAfter", 0, any}, Range{"attempt", 1, triesOfACall}}) {
        requireWhole(expected, range, place);
    }
    for (const char* duration : {"decide", "commit", "answer"}) {
        requireWhole(expected.value("microseconds", Json::object()), {duration, 0, any},
                     place + ".microseconds");
    }
    const Members members(expected, place);
    if (const auto moment = members.moment("moment"); moment && toText(*moment) != expected["moment"]) {
        refuseEntry("\"" + place + ".moment\" has its seconds in an exchange; write it as \"" +
                    toText(*moment) + "\".");
    }
    for (const char* bytes : {"fromTill", "toTill"}) {
        const Json* pairs = members.find(bytes);
        if (pairs != nullptr && *pairs != hexadecimal(bytesOf(*pairs).value_or(""))) {
            refuseEntry("\"" + place + "." + bytes +
                        R"(" is not written as bytes are; write them as "1c 01 e0 04 f9".)");
        }
    }
    const Json faults = expected.value("faults", Json::array());
    for (std::size_t index = 0; index < faults.size(); ++index) {
        requireDeed(faults[index].get<std::string>(), place + ".faults[" + std::to_string(index) + "]");
    }
}

} // namespace

void refuseEntry(const std::string& sentence)
{
    throw ControlRefusal(status::badRequest, sentence);
}

std::vector<const CommandRule*> commandsCalled(std::string_view name, std::string_view code)
{
    std::vector<const CommandRule*> found;
    for (const CommandRule& rule : commandRules()) {
        if ((name.empty() || rule.name == name) && (code.empty() || codeOf(rule) == code)) {
            found.push_back(&rule);
        }
    }
    return found;
}

const OtherExchange* otherCalled(std::string_view name)
{
    const auto* found = std::find_if(otherExchanges.begin(), otherExchanges.end(),
                                     [name](const OtherExchange& other) { return other.name == name; });
    return found == otherExchanges.end() ? nullptr : found;
}

void requirePossible(const Json& expected, Stage stage, const Codes& codes, const std::string& place)
{
    Json withValues = expected;
    for (const char* member : {"repeatOf", "repeatedAfter", "refusal"}) {
        if (const auto found = withValues.find(member); found != withValues.end() && found->is_null()) {
            withValues.erase(found); // none of it
        }
    }
    const Members members(expected, place);
    const std::string name = members.text("name", "", 0, longestExchangeName);
    const std::string command = members.text("command", "", 0, longestExchangeName);
    if (expected.contains("name")) {
        requireExchangeName(name, place);
    }
    if (expected.contains("command")) {
        requireCommand(command, name, place);
    }
    if (const auto fields = withValues.find("fields"); fields != withValues.end()) {
        requireFields(*fields, name, command, place);
        withValues.erase("fields");
    }
    requireForm(withValues, formOfExchange(), place);
    requireValues(withValues, place);
    if (withValues.contains("refusal")) {
        requireRefusal(withValues["refusal"], codes, place);
    }
    requireHarmony(expected, stage, place);
}

} // namespace virtual_printer
