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
    requirePossible(expected, stage, place);
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
