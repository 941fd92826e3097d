// Finds a name that an object of JSON has twice, while it is parsed: one of both would be forgotten silently.
// For scenario files and for the bodies of requests.
#pragma once

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace virtual_printer {

class RepeatedName
{
public:
    using Json = nlohmann::ordered_json;

    // Wants to be told of everything that the parser comes upon.
    void note(Json::parse_event_t event, const Json& parsed)
    {
        if (event == Json::parse_event_t::object_start) {
            names.emplace_back();
        } else if (event == Json::parse_event_t::object_end) {
            names.pop_back();
        } else if (event == Json::parse_event_t::key &&
                   !names.back().insert(parsed.get<std::string>()).second) {
            twice = parsed.get<std::string>();
        }
    }

    // The last one; empty when there is none.
    [[nodiscard]] const std::string& name() const { return twice; }

private:
    std::vector<std::set<std::string>> names; // of the objects that are open
    std::string twice;
};

} // namespace virtual_printer
