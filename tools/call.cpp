#include "tools/call.h"

#include "tools/given_arguments.h"
#include "tools/performed_call.h"
#include "tools/windows_1250.h"

#include <algorithm>
#include <iterator>

namespace telvofm::tools {
namespace {

struct PlannedCall
{
    const Export* function;
    std::vector<Argument> arguments;
};

// Everything is looked at before anything is called.
std::vector<PlannedCall> planOf(const std::vector<std::string>& words)
{
    std::vector<PlannedCall> plan;
    for (auto first = words.begin();; ++first) {
        const auto end = std::find(first, words.end(), "--then");
        if (first == end) {
            throw Failure(Ending::wrongUse, "no function is named; write: telvofm call FUNCTION ARGUMENT...");
        }
        const Export& function = exportNamed(*first);
        plan.push_back({&function, argumentsOf(function, {first + 1, end})});
        if (end == words.end()) {
            return plan;
        }
        first = end;
    }
}

void show(const PerformedCall& call, Output& output)
{
    const std::string returned = readable(call.returned, windows1250);
    const std::string meaning = meaningOf(call);
    output.line(call.name + " returned " + returned + (meaning.empty() ? "" : ", " + meaning));
    if (call.data) {
        output.line(std::to_string(call.data->size()) +
                    (call.data->size() == 1 ? " byte came:" : " bytes came:"));
        output.line(readable(*call.data, windows1250));
    }
    output.document["calls"].push_back(jsonOf(call));
}

void list(const Export& function, Output& output)
{
    output.line(usageOf(function));
    Json parameters = Json::array();
    for (const Parameter& parameter : givenParameters(function)) {
        parameters.push_back(parameter.name);
    }
    output.document["functions"].push_back({{"name", function.name}, {"arguments", parameters}});
}

} // namespace

Ending callFunctions(const PrinterOptions& printer, const std::vector<std::string>& words, Output& output)
{
    const std::vector<PlannedCall> plan = planOf(words);
    PrinterSession session(printer);
    CallContext context;
    if (!printer.address.empty()) {
        session.open();
    }
    for (const PlannedCall& planned : plan) {
        const PerformedCall call = perform(*planned.function, planned.arguments, context);
        show(call, output);
        if (call.hasFailed()) {
            return call.code.value_or(-1) > 0 ? Ending::refused : Ending::noAnswer;
        }
    }
    return Ending::done;
}

Ending listFunctions(const std::vector<std::string>& names, Output& output)
{
    std::vector<const Export*> named;
    std::transform(names.begin(), names.end(), std::back_inserter(named),
                   [](const std::string& name) { return &exportNamed(name); });
    for (const Export& function : exportTable()) {
        if (names.empty() || std::find(named.begin(), named.end(), &function) != named.end()) {
            list(function, output);
        }
    }
    return Ending::done;
}

} // namespace telvofm::tools
