#include "virtual_printer/control/difference.h"

#include <limits>

namespace virtual_printer {
namespace {

void compare(const Json& expected, const Json& actual, const std::string& name,
             std::vector<std::string>& found)
{
    const std::string place = name.empty() ? "it" : name;
    if (expected.is_object() && actual.is_object()) {
        for (const auto& [member, value] : expected.items()) {
            std::string memberName = name.empty() ? "" : name + ".";
            memberName += member;
            if (const auto there = actual.find(member); there != actual.end()) {
                compare(value, *there, memberName, found);
            } else {
                found.push_back("there is no " + memberName + ", " + shown(value) + " is expected");
            }
        }
    } else if (expected.is_array() && actual.is_array()) {
        if (expected.size() != actual.size()) {
            found.push_back(place + " has " + std::to_string(actual.size()) + " entries, " +
                            std::to_string(expected.size()) + " are expected");
        }
        for (std::size_t index = 0; index < std::min(expected.size(), actual.size()); ++index) {
            compare(expected[index], actual[index], name + "[" + std::to_string(index) + "]", found);
        }
    } else if (expected != actual) {
        found.push_back(place + " is " + shown(actual) + ", " + shown(expected) + " is expected");
    }
}

} // namespace

std::vector<std::string> differences(const Json& expected, const Json& actual)
{
    std::vector<std::string> found;
    compare(expected, actual, "", found);
    return found;
}

int nearest(const Json& expected, const std::vector<Json>& actual)
{
    int best = -1;
    std::size_t fewest = std::numeric_limits<std::size_t>::max();
    for (std::size_t index = 0; index < actual.size(); ++index) {
        const std::size_t count = differences(expected, actual[index]).size();
        if (count < fewest) {
            fewest = count;
            best = static_cast<int>(index);
        }
    }
    return best;
}

std::string shown(const Json& value)
{
    constexpr std::size_t longest = 200;
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > longest) {
        text = text.substr(0, text.rfind(',', longest)) + " ...";
    }
    return text;
}

} // namespace virtual_printer
