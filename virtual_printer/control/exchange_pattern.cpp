#include "virtual_printer/control/exchange_pattern.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/control/difference.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

using Kind = Exchanged::Kind;

constexpr std::size_t longestExchangeName = 100;

// What is no request of the command table, and what comes of it.
struct OtherExchange
{
    std::string_view name;
    Kind kind;
    bool isExecuted;
    bool isAcknowledged;
};
constexpr std::array otherExchanges = {OtherExchange{"unknown", Kind::request, false, false},
                                       OtherExchange{"damagedRequest", Kind::damagedRequest, false, false},
                                       OtherExchange{"block", Kind::block, true, true},
                                       OtherExchange{"damagedBlock", Kind::damagedBlock, false, false},
                                       OtherExchange{"probe", Kind::probe, false, true}};

const OtherExchange* otherCalled(std::string_view name)
{
    const auto* found = std::find_if(otherExchanges.begin(), otherExchanges.end(),
                                     [name](const OtherExchange& other) { return other.name == name; });
    return found == otherExchanges.end() ? nullptr : found;
}

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

void requireName(const std::string& name, Stage stage, const std::string& place)
{
    const OtherExchange* other = otherCalled(name);
    if (other == nullptr && !isCommand(name)) {
        refuseEntry(
            "\"" + place + ".name\" is \"" + name +
            "\", and no exchange is called so; give a name of the command table, or block, damagedRequest, "
            "damagedBlock, probe or unknown.");
    }
    const bool never = other != nullptr && ((stage == Stage::executed && !other->isExecuted) ||
                                            (stage == Stage::acknowledged && !other->isAcknowledged));
    if (never) {
        refuseEntry("What is called " + name + " is never " +
                    (stage == Stage::executed ? "executed" : "acknowledged") +
                    "; ask whether it is \"received\".");
    }
}

// Of the command of this name, of all commands without one.
std::vector<Field> fieldsOf(std::string_view name)
{
    std::vector<Field> fields;
    for (const CommandRule& rule : commandRules()) {
        if (name.empty() || rule.name == name) {
            fields.insert(fields.end(), rule.fields.begin(), rule.fields.end());
        }
    }
    return fields;
}

void requireFields(const Json& expected, const std::string& name, const std::string& place)
{
    const std::vector<Field> fields = fieldsOf(name);
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

void requireCommand(const std::string& code, const std::string& place)
{
    const bool isCode = code.size() == 2 && code.find_first_not_of("0123456789abcdef") == std::string::npos;
    if (!isCode) {
        refuseEntry("\"" + place +
                    R"(.command" is no code; write two hexadecimal digits in small letters, as "3a".)");
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

void requireSense(const Json& expected, Stage stage, const std::string& place)
{
    Json withValues = expected;
    for (const char* member : {"repeatOf", "repeatedAfter", "refusal"}) {
        if (const auto found = withValues.find(member); found != withValues.end() && found->is_null()) {
            withValues.erase(found); // none of it
        }
    }
    const std::string name = Members(expected, place).text("name", "", 0, longestExchangeName);
    if (const auto fields = withValues.find("fields"); fields != withValues.end()) {
        if (expected.contains("name")) {
            requireName(name, stage, place);
        }
        requireFields(*fields, name, place);
        withValues.erase("fields");
    }
    requireForm(withValues, formOfExchange(), place);
    if (expected.contains("name")) {
        requireName(name, stage, place);
    }
    if (withValues.contains("command")) {
        requireCommand(withValues["command"].get<std::string>(), place);
    }
    if (withValues.contains("refusal")) {
        requireRefusal(withValues["refusal"], place);
    }
}

} // namespace

const Json& ExchangeView::member(std::size_t place)
{
    if (members.empty()) {
        members.resize(exchangedMembers().size(), Json(Json::value_t::discarded));
    }
    Json& value = members[place];
    if (!value.is_discarded()) {
        return value;
    }
    const ExchangedMember& member = exchangedMembers()[place];
    value = member.of(*shownExchange);
    if (member.name == "fields") {
        Json byName = Json::object();
        for (const Json& field : value) {
            byName[field["name"].get<std::string>()] = field["value"];
        }
        value = std::move(byName);
    }
    return value;
}

ExchangePattern::ExchangePattern(Json entry, Stage wanted, const std::string& place)
    : stage(wanted), expected(std::move(entry))
{
    expected.erase("count");
    requireSense(expected, stage, place);
    name = expected.value("name", "");
    if (const OtherExchange* other = otherCalled(name)) {
        receivedKind = other->kind;
    }
    const auto all = exchangedMembers();
    for (const bool isLong : {false, true}) {
        for (std::size_t member = 0; member < all.size(); ++member) {
            const auto found = expected.find(all[member].name);
            if (found != expected.end() && all[member].isLong == isLong) {
                parts.push_back({member, *found});
            }
        }
    }
}

bool ExchangePattern::counts(const Exchanged& exchanged) const
{
    switch (stage) {
    case Stage::received:
        return exchanged.kind == receivedKind;
    case Stage::executed:
        return exchanged.isExecuted;
    case Stage::acknowledged:
        break;
    }
    return exchanged.isAcknowledged;
}

bool ExchangePattern::fits(ExchangeView& view) const
{
    const Exchanged& exchanged = view.exchanged();
    return counts(exchanged) && (name.empty() || exchanged.name() == name) &&
           std::all_of(parts.begin(), parts.end(), [&view](const Part& part) {
               return distance(part.value, view.member(part.member)) == 0;
           });
}

std::size_t ExchangePattern::distanceTo(ExchangeView& view) const
{
    std::size_t places = 0;
    for (const Part& part : parts) {
        places += distance(part.value, view.member(part.member));
    }
    return places;
}

std::string ExchangePattern::differenceFrom(ExchangeView& view) const
{
    Json actual = Json::object();
    for (const Part& part : parts) {
        actual[std::string(exchangedMembers()[part.member].name)] = view.member(part.member);
    }
    return virtual_printer::differenceFrom(expected, actual);
}

} // namespace virtual_printer
