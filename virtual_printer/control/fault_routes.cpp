// The faults that a printer is armed with.
#include "virtual_printer/control/routes.h"
#include "virtual_printer/faults/fault_json.h"
#include "virtual_printer/faults/scenario.h"

namespace virtual_printer {

Json faultsToJson(const Faults& faults)
{
    Json list = Json::array();
    for (const Armed& armed : faults.list()) {
        list.push_back(toJson(armed));
    }
    return {{"faults", list}};
}

namespace {

// One, or those of a scenario.
std::vector<Fault> faultsIn(const Json& body)
{
    try {
        if (body.contains("faults")) {
            return scenarioFromJson(body).faults;
        }
        return {faultFromJson(body)};
    } catch (const std::runtime_error& wrong) {
        throw ControlRefusal(status::badRequest, wrong.what());
    }
}

} // namespace

Outcome showFaults(const Call& call)
{
    return jsonAnswer(faultsToJson(call.printer().station.faults));
}

Outcome armFaults(const Call& call)
{
    Faults& faults = call.printer().station.faults;
    const std::vector<Fault> wanted = faultsIn(call.body);
    if (faults.list().size() + wanted.size() > Faults::mostArmed) {
        throw ControlRefusal(status::conflict,
                             "A printer has at most " + std::to_string(Faults::mostArmed) +
                                 " faults, those that have ended included; disarm some first.");
    }
    for (const Fault& fault : wanted) {
        faults.arm(fault);
    }
    constexpr int created = 201;
    return jsonAnswer(faultsToJson(faults), created);
}

Outcome disarmFaults(const Call& call)
{
    Faults& faults = call.printer().station.faults;
    faults.disarmAll();
    return jsonAnswer(faultsToJson(faults));
}

Outcome disarmFault(const Call& call)
{
    constexpr std::size_t place = 3; // in the path
    const std::string& name = call.target.path.at(place);
    const Json asked = queryOf(Target("/?number=" + name));
    const bool isNumber = asked["number"].is_number_unsigned() || asked["number"].is_number_integer();
    Faults& faults = call.printer().station.faults;
    if (!isNumber || asked["number"] < 1 || !faults.disarm(asked["number"].get<std::uint64_t>())) {
        throw ControlRefusal(status::notFound,
                             "There is no fault " + name.substr(0, 20) + " here; GET lists them.");
    }
    return jsonAnswer(faultsToJson(faults));
}

} // namespace virtual_printer
