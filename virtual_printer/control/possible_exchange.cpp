#include "virtual_printer/control/possible_exchange.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <array>
#include <vector>

namespace virtual_printer {
namespace {

using Kind = Exchanged::Kind;

constexpr std::size_t longestExchangeName = 100;

constexpr std::array otherExchanges = {OtherExchange{"unknown", Kind::request, false, false},
                                       OtherExchange{"damagedRequest", Kind::damagedRequest, false, false},
                                       OtherExchange{"block", Kind::block, true, true},
                                       OtherExchange{"damagedBlock", Kind::damagedBlock, false, false},
                                       OtherExchange{"probe", Kind::probe, false, true}};

[[noreturn]] void refuseEntry(const std::string& sentence)
{
    throw ControlRefusal(status::badRequest, sentence);
}

bool isCommand(std::string_view name)
{
    const auto rules = commandRules();
    return std::any_of(rules.begin(), rules.end(),
                       [name](const CommandRule& rule) { return rule.name == name; });
}

// The name of a command, or of what is none.
void requireExchangeName(const std::string& name, const std::string& place)
{
    if (otherCalled(name) == nullptr && !isCommand(name)) {
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

// Of the commands that have this name and this code; where one is empty it may be any.
std::vector<Field> fieldsOf(std::string_view name, std::string_view code)
{
    std::vector<Field> fields;
    for (const CommandRule& rule : commandRules()) {
        if ((name.empty() || rule.name == name) && (code.empty() || codeOf(rule) == code)) {
            fields.insert(fields.end(), rule.fields.begin(), rule.fields.end());
        }
    }
    return fields;
}

void requireFields(const Json& expected, const std::vector<Field>& fields, const std::string& place)
{
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
    for (const CommandRule& rule : commandRules()) {
        if (rule.name == name && codeOf(rule) != code) {
            std::string sentence = "\"" + place + "\" is called ";
            sentence.append(name).append(" and has the code ").append(code);
            refuseEntry(sentence + ", and no command has both; it is " + codeOf(rule) + ".");
        }
    }
}

void requireRefusal(const Json& expected, const std::string& place)
{
    const auto name = expected.find("name");
    const bool isKnown =
        name == expected.end() || std::any_of(refusalTexts.begin(), refusalTexts.end(),
                                              [&](const RefusalText& text) { return *name == text.name; });
    if (!isKnown) {
        refuseEntry("\"" + place + ".refusal.name\" is " + shown(*name) +
                    ", and no refusal is called so; docs/virtual-printer.md lists them.");
    }
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

bool isSet(const Json& expected, const char* member, bool value)
{
    const auto found = expected.find(member);
    return found != expected.end() && found->is_boolean() && *found == value;
}

// What is called so never comes to it.
void requireReachable(const OtherExchange* other, bool isExecuted, bool isAcknowledged)
{
    if (other == nullptr) {
        return;
    }
    const bool isNeverExecuted = isExecuted && !other->isExecuted;
    if (isNeverExecuted || (isAcknowledged && !other->isAcknowledged)) {
        refuseEntry("What is called " + std::string(other->name) + " is never " +
                    (isNeverExecuted ? "executed" : "acknowledged") + "; ask whether it is \"received\".");
    }
}

// What is carried out, kept or accepted was not refused, and what is kept was carried out.
void requireHarmony(const Json& expected, Stage stage, const std::string& place)
{
    const bool isExecuted = stage == Stage::executed || isSet(expected, "executed", true);
    const bool isAcknowledged = stage == Stage::acknowledged || isSet(expected, "acknowledged", true);
    const bool isCommitted = isSet(expected, "committed", true);
    const bool isRefused = expected.contains("refusal") && !expected["refusal"].is_null();
    requireReachable(otherCalled(expected.value("name", "")), isExecuted || isCommitted, isAcknowledged);
    const auto require = [&place](bool isImpossible, const char* one, const char* other) {
        if (isImpossible) {
            refuseEntry("\"" + place + "\" is " + one + " and " + other +
                        ", and no exchange is both; leave one of them out.");
        }
    };
    require(isExecuted && isRefused, "executed", "refused");
    require(isAcknowledged && isRefused, "acknowledged", "refused");
    require(isCommitted && isRefused, "committed", "refused");
    require(isExecuted && isSet(expected, "executed", false), "executed", "not executed");
    require(isAcknowledged && isSet(expected, "acknowledged", false), "acknowledged", "not acknowledged");
    require(isCommitted && isSet(expected, "executed", false), "committed", "not executed");
}

} // namespace

const OtherExchange* otherCalled(std::string_view name)
{
    const auto* found = std::find_if(otherExchanges.begin(), otherExchanges.end(),
                                     [name](const OtherExchange& other) { return other.name == name; });
    return found == otherExchanges.end() ? nullptr : found;
}

void requirePossible(const Json& expected, Stage stage, const std::string& place)
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
        requireFields(*fields, fieldsOf(name, command), place);
        withValues.erase("fields");
    }
    requireForm(withValues, formOfExchange(), place);
    if (withValues.contains("refusal")) {
        requireRefusal(withValues["refusal"], place);
    }
    requireHarmony(expected, stage, place);
}

} // namespace virtual_printer
