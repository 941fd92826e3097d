#include "tools/given_arguments.h"

#include "tools/argument_text.h"
#include "tools/ending.h"
#include "tools/nearest_name.h"

#include <algorithm>
#include <iterator>

namespace telvofm::tools {
namespace {

// rawRead's count is no size of its buffer: it says how much is wanted.
bool isSizeOf(const Parameter& before, const Parameter& parameter)
{
    return before.kind == Kind::bytes || (before.kind == Kind::buffer && parameter.name != "count");
}

bool isGiven(std::span<const Parameter> parameters, std::size_t index)
{
    switch (parameters[index].kind) {
    case Kind::buffer:
    case Kind::count:
    case Kind::result:
    case Kind::marker:
        return false;
    default:
        return index == 0 || !isSizeOf(parameters[index - 1], parameters[index]);
    }
}

[[noreturn]] void refuse(const std::string& sentence)
{
    throw Failure(Ending::wrongUse, sentence);
}

Argument hidden(const Parameter& parameter, bool isBehindBytes, const std::string& before)
{
    switch (parameter.kind) {
    case Kind::buffer:
        return {std::to_string(bufferSize)};
    case Kind::count:
        return {"count", true};
    case Kind::result:
        return {"result", true};
    case Kind::marker:
        return {"marker", true};
    default: // a size: of bytes, or of a buffer, whose argument is its size
        return {isBehindBytes ? std::to_string(before.size()) : before};
    }
}

void requireRoom(const Export& function, std::span<const Argument> arguments)
{
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const bool isWanted = function.parameters[i - 1].kind == Kind::buffer &&
                              function.parameters[i].name == "count" && arguments[i].text.size() > 7;
        if (isWanted) {
            refuse("count: " + arguments[i].text + " bytes are too many at once; read at most 9999999");
        }
    }
}

} // namespace

std::vector<Parameter> givenParameters(const Export& function)
{
    std::vector<Parameter> given;
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        if (isGiven(function.parameters, i)) {
            given.push_back(function.parameters[i]);
        }
    }
    return given;
}

std::string usageOf(const Export& function)
{
    std::string usage(function.name);
    for (const Parameter& parameter : givenParameters(function)) {
        usage += " " + std::string(parameter.name);
    }
    return usage;
}

std::vector<Argument> withHidden(const Export& function, std::span<const std::string> given)
{
    std::vector<Argument> arguments;
    auto next = given.begin();
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        const Parameter& parameter = function.parameters[i];
        if (isGiven(function.parameters, i)) {
            arguments.push_back({*next++});
        } else {
            const bool isBehindBytes = i > 0 && function.parameters[i - 1].kind == Kind::bytes;
            arguments.push_back(
                hidden(parameter, isBehindBytes, arguments.empty() ? std::string{} : arguments.back().text));
        }
    }
    return arguments;
}

std::vector<Argument> argumentsOf(const Export& function, std::span<const std::string> given)
{
    const std::size_t wanted = givenParameters(function).size();
    if (given.size() != wanted) {
        const bool hasOption = std::any_of(given.begin(), given.end(),
                                           [](const std::string& word) { return word.starts_with("--"); });
        refuse(std::string(function.name) + " takes " + std::to_string(wanted) +
               (wanted == 1 ? " argument, not " : " arguments, not ") + std::to_string(given.size()) +
               "; write: " + usageOf(function) +
               (hasOption ? ", with the tool's own options before the function" : ""));
    }
    const std::vector<Parameter> parameters = givenParameters(function);
    std::vector<std::string> texts;
    std::transform(parameters.begin(), parameters.end(), given.begin(), std::back_inserter(texts), textFor);
    std::vector<Argument> arguments = withHidden(function, texts);
    requireRoom(function, arguments);
    return arguments;
}

const Export& exportNamed(const std::string& name)
{
    const Export* const found = findExport(name);
    if (found == nullptr) {
        std::vector<std::string_view> names;
        for (const Export& one : exportTable()) {
            names.push_back(one.name);
        }
        const std::string_view nearest = nearestName(name, names);
        refuse("the library has no function " + name +
               (nearest.empty() ? "; 'telvofm call --list' lists all"
                                : "; did you mean " + std::string(nearest) + "?"));
    }
    return *found;
}

} // namespace telvofm::tools
