#include "virtual_printer/control/exchange_pattern.h"

#include "virtual_printer/control/difference.h"
#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>

namespace virtual_printer {

const Json& ExchangeView::member(std::size_t place)
{
    if (members.empty()) {
        members.resize(exchangedMembers().size(), Json(Json::value_t::discarded));
    }
    Json& value = members[place];
    if (!value.is_discarded()) {
        return value;
    }
    std::string text;
    exchangedMembers()[place].write(text, *shownExchange);
    value = Json::parse(text);
    return value;
}

Json ExchangeView::fields() const
{
    const Json all = toJson(*shownExchange);
    Json byName = Json::object();
    for (const Json& field : all["fields"]) {
        byName[field["name"].get<std::string>()] = field["value"];
    }
    return byName;
}

ExchangePattern::ExchangePattern(Json entry, Stage wanted, const Codes& codes, const std::string& place)
    : stage(wanted), expected(std::move(entry))
{
    expected.erase("count");
    requirePossible(expected, stage, codes, place);
    name = expected.value("name", "");
    if (const OtherExchange* other = otherCalled(name)) {
        wantedKind = other->kind;
    }
    const auto all = exchangedMembers();
    for (const bool isLong : {false, true}) {
        for (std::size_t member = 0; member < all.size(); ++member) {
            const auto found = expected.find(all[member].name);
            if (found != expected.end() && found.key() != "fields" && all[member].isLong == isLong) {
                const bool isText = !found->is_structured() && !found->is_number_float();
                parts.push_back({member, *found, isText ? found->dump() : ""});
            }
        }
    }
    if (const auto found = expected.find("fields"); found != expected.end()) {
        for (const auto& [field, value] : found->items()) {
            fields.emplace_back(field, value.get<std::string>());
        }
    }
}

bool ExchangePattern::counts(const Exchanged& exchanged) const
{
    if (exchanged.kind != wantedKind) {
        return false;
    }
    switch (stage) {
    case Stage::received:
        return true;
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
           fieldsThatDiffer(exchanged) == 0 &&
           std::all_of(parts.begin(), parts.end(),
                       [&view](const Part& part) { return placesIn(part, view) == 0; });
}

std::size_t ExchangePattern::distanceTo(ExchangeView& view) const
{
    std::size_t places = fieldsThatDiffer(view.exchanged());
    for (const Part& part : parts) {
        places += placesIn(part, view);
    }
    return places;
}

// Of thousands of exchanges at once: what can be compared as it is written is not read as JSON.
std::size_t ExchangePattern::placesIn(const Part& part, ExchangeView& view)
{
    if (part.text.empty()) {
        return distance(part.value, view.member(part.member));
    }
    std::string text;
    exchangedMembers()[part.member].write(text, view.exchanged());
    return text == part.text ? 0 : 1;
}

std::size_t ExchangePattern::fieldsThatDiffer(const Exchanged& exchanged) const
{
    return static_cast<std::size_t>(
        std::count_if(fields.begin(), fields.end(), [&exchanged](const FieldWanted& wanted) {
            return !showsField(exchanged, wanted.first, wanted.second);
        }));
}

std::string ExchangePattern::differenceFrom(ExchangeView& view) const
{
    Json actual = Json::object();
    for (const Part& part : parts) {
        actual[std::string(exchangedMembers()[part.member].name)] = view.member(part.member);
    }
    if (!fields.empty()) {
        actual["fields"] = view.fields();
    }
    return virtual_printer::differenceFrom(expected, actual);
}

} // namespace virtual_printer
