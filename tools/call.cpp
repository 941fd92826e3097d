#include "tools/call.h"

#include "tools/given_arguments.h"
#include "tools/performed_call.h"
#include "tools/windows_1250.h"

#include <algorithm>

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

} // namespace

Ending endingOf(int code)
{
    if (code == 0) {
        return Ending::done;
    }
    return code > 0 ? Ending::refused : Ending::noAnswer;
}

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
        if (call.code.value_or(0) != 0) {
            return endingOf(*call.code);
        }
    }
    return Ending::done;
}

Ending listFunctions(Output& output)
{
    for (const Export& function : exportTable()) {
        output.line(usageOf(function));
        Json parameters = Json::array();
        for (const Parameter& parameter : givenParameters(function)) {
            parameters.push_back(parameter.name);
        }
        output.document["functions"].push_back({{"name", function.name}, {"arguments", parameters}});
    }
    return Ending::done;
}

} // namespace telvofm::tools
