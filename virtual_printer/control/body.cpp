#include "virtual_printer/control/body.h"

#include "virtual_printer/faults/repeated_name.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>
#include <string>

namespace virtual_printer {
namespace {

constexpr std::size_t longestShown = 100;

[[noreturn]] void refuse(const std::string& sentence)
{
    throw ControlRefusal(status::badRequest, sentence);
}

std::string listed(std::initializer_list<std::string_view> words)
{
    std::string list;
    for (const std::string_view word : words) {
        list += (list.empty() ? "\"" : ", \"") + std::string(word) + "\"";
    }
    return list;
}

} // namespace

Json parseBody(const std::string& body)
{
    if (body.empty()) {
        return Json::object();
    }
    constexpr int deepest = 16;
    bool isTooDeep = false;
    RepeatedName twice;
    // Nothing deeper is kept: whoever walks through it needs the stack for it.
    const Json::parser_callback_t keep = [&](int depth, Json::parse_event_t event, Json& parsed) {
        isTooDeep = isTooDeep || depth > deepest;
        twice.note(event, parsed);
        return !isTooDeep;
    };
    Json content = Json::parse(body, keep, false);
    if (isTooDeep) {
        refuse("The body is nested deeper than " + std::to_string(deepest) +
               " levels; nothing here needs that.");
    }
    if (!twice.name().empty()) {
        refuse("\"" + twice.name().substr(0, longestShown) + "\" is there twice; give it once.");
    }
    if (!content.is_object()) {
        refuse(R"(The body is no JSON object; send one as {"name": "value"}.)");
    }
    return content;
}

Members::Members(const Json& wholeObject, std::string itsName) : object(wholeObject), name(std::move(itsName))
{
    if (!object.is_object()) {
        refuse("\"" + name + R"(" is no JSON object; send one as {"name": "value"}.)");
    }
}

void Members::allow(std::initializer_list<std::string_view> names) const
{
    for (const auto& [member, value] : object.items()) {
        if (std::find(names.begin(), names.end(), member) == names.end()) {
            refuse("There is no \"" + nameOf(member.substr(0, longestShown)) + "\"; there are " +
                   listed(names) + ".");
        }
    }
}

const Json* Members::find(std::string_view member) const
{
    const auto found = object.find(member);
    return found == object.end() ? nullptr : &*found;
}

bool Members::flag(std::string_view member, bool otherwise) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return otherwise;
    }
    if (!value->is_boolean()) {
        refuse("\"" + nameOf(member) + "\" is neither true nor false; give one of them.");
    }
    return value->get<bool>();
}

std::int64_t Members::whole(std::string_view member, std::int64_t otherwise, std::int64_t smallest,
                            std::int64_t largest) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return otherwise;
    }
    // A larger number than the type holds is kept without a sign.
    const bool isHuge = value->is_number_unsigned() && value->get<std::uint64_t>() > INT64_MAX;
    if (!value->is_number_integer() || isHuge || value->get<std::int64_t>() < smallest ||
        value->get<std::int64_t>() > largest) {
        refuse("\"" + nameOf(member) + "\" is no whole number from " + std::to_string(smallest) + " to " +
               std::to_string(largest) + "; give one.");
    }
    return value->get<std::int64_t>();
}

std::string Members::text(std::string_view member, std::string_view otherwise, std::size_t shortest,
                          std::size_t longest) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return std::string(otherwise);
    }
    if (!value->is_string() ||
        checkLength(value->get_ref<const std::string&>(), shortest, longest) != Refusal::none) {
        refuse("\"" + nameOf(member) + "\" is no text of " + std::to_string(shortest) + " to " +
               std::to_string(longest) + " characters; give one.");
    }
    return value->get<std::string>();
}

std::int64_t Members::decimal(std::string_view member, std::int64_t otherwise, int decimals) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return otherwise;
    }
    const auto parsed =
        value->is_string() ? parseDecimal(value->get_ref<const std::string&>(), decimals) : std::nullopt;
    if (!parsed || parsed->decimals > decimals || parsed->units < 0 || parsed->units >= largestUnits) {
        refuse("\"" + nameOf(member) + "\" is no text of a number with at most " + std::to_string(decimals) +
               " decimals that is not below zero; write it as \"12.50\".");
    }
    return parsed->units;
}

std::string Members::oneOf(std::string_view member, std::string_view otherwise,
                           std::initializer_list<std::string_view> words) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return std::string(otherwise);
    }
    if (!value->is_string() ||
        std::find(words.begin(), words.end(), value->get_ref<const std::string&>()) == words.end()) {
        refuse("\"" + nameOf(member) + "\" is none of " + listed(words) + "; give one of them.");
    }
    return value->get<std::string>();
}

std::optional<Moment> Members::moment(std::string_view member) const
{
    const Json* value = find(member);
    if (value == nullptr) {
        return std::nullopt;
    }
    const auto parsed = value->is_string() && !value->get_ref<const std::string&>().empty()
                            ? parseMoment(value->get_ref<const std::string&>(), Edge::first)
                            : std::nullopt;
    if (!parsed) {
        refuse("\"" + nameOf(member) + R"(" is no time; write it as "2026-01-31 12:00".)");
    }
    return parsed;
}

std::string Members::nameOf(std::string_view member) const
{
    return name.empty() ? std::string(member) : name + "." + std::string(member);
}

} // namespace virtual_printer
