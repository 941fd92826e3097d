#include "virtual_printer/faults/scenario.h"

#include "virtual_printer/faults/fault_json.h"
#include "virtual_printer/faults/fault_values.h"
#include "virtual_printer/faults/faults.h"
#include "virtual_printer/faults/repeated_name.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace virtual_printer {

using Json = nlohmann::ordered_json;

Scenario scenarioFromJson(const Json& json)
{
    constexpr std::string_view form =
        R"(A scenario is a JSON object, as {"trouble": "The paper is out", "seed": 7, "faults": [{"kind": "paperOut"}]}.)";
    if (!json.is_object() || !json.contains("faults") || !json["faults"].is_array() ||
        !json.contains("trouble") || !json["trouble"].is_string()) {
        throw std::runtime_error(std::string(form));
    }
    if (json["faults"].size() > Faults::mostArmed) {
        throw std::runtime_error("A scenario has at most " + std::to_string(Faults::mostArmed) + " faults.");
    }
    Scenario scenario{json["trouble"].get<std::string>(), {}};
    const std::uint32_t seed = json.contains("seed") ? seedOf(json["seed"]) : 1;
    for (const auto& [name, value] : json.items()) {
        if (name != "trouble" && name != "seed" && name != "faults") {
            throw std::runtime_error("A scenario takes no \"" + name + "\".");
        }
    }
    if (json["faults"].empty()) {
        throw std::runtime_error("A scenario without faults is no trouble; give it one at least.");
    }
    for (const Json& one : json["faults"]) {
        Fault fault = faultFromJson(one);
        fault.seed = fault.seed.value_or(seed);
        scenario.faults.push_back(std::move(fault));
    }
    return scenario;
}

Scenario readScenario(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    RepeatedName twice;
    const Json::parser_callback_t note = [&twice](int, Json::parse_event_t event, Json& parsed) {
        twice.note(event, parsed);
        return true;
    };
    const Json json = Json::parse(stream, note, false);
    if (json.is_discarded()) {
        throw std::runtime_error(file.string() + " is no JSON.");
    }
    if (!twice.name().empty()) {
        throw std::runtime_error(file.string() + ": " + inQuotes(twice.name()) +
                                 " is there twice; give it once.");
    }
    try {
        return scenarioFromJson(json);
    } catch (const std::runtime_error& wrong) {
        throw std::runtime_error(file.string() + ": " + wrong.what());
    }
}

} // namespace virtual_printer
