#include "virtual_printer/control/difference.h"

#include "virtual_printer/control/body.h"

#include <algorithm>

namespace virtual_printer {
namespace {

// "items.name".
std::string memberOf(const std::string& whole, const std::string& member)
{
    return whole.empty() ? member : std::string(whole).append(".").append(member);
}

// Calls `tell` with a function that makes the sentence, for each place.
template <typename Tell>
void compare(const Json& expected, const Json& actual, const std::string& name, const Tell& tell)
{
    const auto place = [&name] { return name.empty() ? "it" : name; };
    if (expected.is_object() && actual.is_object()) {
        for (const auto& [member, value] : expected.items()) {
            const std::string memberName = memberOf(name, member);
            if (const auto there = actual.find(member); there != actual.end()) {
                compare(value, *there, memberName, tell);
            } else {
                tell([&, &wanted = value] {
                    return "there is no " + memberName + ", " + shown(wanted) + " is expected";
                });
            }
        }
    } else if (expected.is_array() && actual.is_array()) {
        if (expected.size() != actual.size()) {
            tell([&] {
                return place() + " has " + std::to_string(actual.size()) + " entries, " +
                       std::to_string(expected.size()) + " are expected";
            });
        }
        for (std::size_t index = 0; index < std::min(expected.size(), actual.size()); ++index) {
            compare(expected[index], actual[index], name + "[" + std::to_string(index) + "]", tell);
        }
    } else if (expected != actual) {
        tell([&] { return place() + " is " + shown(actual) + ", " + shown(expected) + " is expected"; });
    }
}

std::string_view kindOf(const Json& form)
{
    return form.is_string() ? "text" : form.is_boolean() ? "boolean" : form.is_array() ? "list" : "number";
}

bool isOfKind(const Json& value, const Json& form)
{
    return value.type() == form.type() || (value.is_number() && form.is_number());
}

void requireMember(const Json& form, const std::string& member, const std::string& name)
{
    if (form.contains(member)) {
        return;
    }
    std::string names;
    for (const auto& [known, value] : form.items()) {
        names += (names.empty() ? "" : ", ") + known;
    }
    constexpr std::size_t longest = 100;
    throw ControlRefusal(status::badRequest, "There is no \"" + name + "." + member.substr(0, longest) +
                                                 "\", and nothing would ever fit it; there are " + names +
                                                 ".");
}

} // namespace

std::size_t distance(const Json& expected, const Json& actual)
{
    std::size_t places = 0;
    compare(expected, actual, "", [&places](const auto& /*sentence*/) { ++places; });
    return places;
}

std::string differenceFrom(const Json& expected, const Json& actual)
{
    std::string all;
    compare(expected, actual, "",
            [&all](const auto& sentence) { all += (all.empty() ? "" : "; ") + sentence(); });
    return all;
}

std::string shown(const Json& value)
{
    constexpr std::size_t longest = 200;
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() <= longest) {
        return text;
    }
    std::size_t end = text.rfind(',', longest);
    if (end == std::string::npos || end < longest / 2) {
        end = longest;
        while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) { // in the middle of a character
            --end;
        }
    }
    return text.substr(0, end) + " ...";
}

void requireForm(const Json& expected, const Json& form, const std::string& name)
{
    if (form.is_object()) {
        static_cast<void>(Members(expected, name)); // refuses what is no object
        for (const auto& [member, value] : expected.items()) {
            requireMember(form, member, name);
            requireForm(value, form[member], memberOf(name, member));
        }
        return;
    }
    if (!isOfKind(expected, form)) {
        throw ControlRefusal(status::badRequest, "\"" + name + "\" is no " + std::string(kindOf(form)) +
                                                     ", and nothing would ever fit it; give one.");
    }
    for (std::size_t index = 0; form.is_array() && !form.empty() && index < expected.size(); ++index) {
        requireForm(expected[index], form[0], name + "[" + std::to_string(index) + "]");
    }
}

} // namespace virtual_printer
