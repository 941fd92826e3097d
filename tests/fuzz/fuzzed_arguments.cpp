#include "tests/fuzz/fuzzed_arguments.h"

#include <array>
#include <charconv>

namespace telvofm::fuzz {
namespace {

using tools::Argument;
using tools::Kind;

constexpr std::size_t bufferSize = 8192; // more than the longest input

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool readsFile(std::string_view function)
{
    return function.starts_with("prepareGraphicHeader") ||
           isOneOf(function, {"setAutKey", "setSubjectIDData"});
}

// Logs and replies go to devices; only what is read may be a file of the sources.
std::string fileFrom(FuzzedBytes& input, bool isRead)
{
    constexpr std::array written = {"/dev/null", "/dev/full", "", "no such folder/file"};
    constexpr std::array read = {TELVOFM_PICTURE, "/dev/null", "", "no such file"};
    return (isRead ? read : written)[input.choice(written.size())];
}

std::string numberText(double value)
{
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.begin(), text.end(), value).ptr};
}

Argument textFrom(FuzzedBytes& input)
{
    const std::size_t length = input.byte();
    constexpr std::size_t standsForNull = 0xFF;
    return length == standsForNull ? Argument{"null", true} : Argument{std::string(input.bytes(length))};
}

// The argument in front says what a size has to be.
std::string wholeFrom(FuzzedBytes& input, const tools::Parameter& parameter, Kind kindBefore,
                      const std::string& before)
{
    if (kindBefore == Kind::bytes) {
        return std::to_string(before.size());
    }
    if (kindBefore == Kind::buffer) { // rawRead's says how much is wanted
        return std::to_string(parameter.name == "count" ? input.number<std::uint16_t>() % bufferSize
                                                        : bufferSize);
    }
    return std::to_string(input.number<std::int32_t>());
}

} // namespace

std::string linkFrom(FuzzedBytes& input)
{
    constexpr std::array links = {"printer", "COM1", "printer:9100", R"(\\.\COM12)", "", "COM"};
    return links[input.choice(links.size())];
}

std::vector<Argument> argumentsFrom(FuzzedBytes& input, const tools::Export& function)
{
    std::vector<Argument> arguments;
    Kind kindBefore = Kind::marker;
    for (const tools::Parameter& parameter : function.parameters) {
        Argument argument;
        switch (parameter.kind) {
        case Kind::text:
            argument = parameter.name == "portName" ? Argument{linkFrom(input)}
                       : isOneOf(parameter.name, {"path", "fileName", "filePath", "journalFile"})
                           ? Argument{fileFrom(input, readsFile(function.name))}
                           : textFrom(input);
            break;
        case Kind::character:
            argument.text = {static_cast<char>(input.byte())};
            break;
        case Kind::whole:
            argument.text = wholeFrom(input, parameter, kindBefore,
                                      arguments.empty() ? std::string() : arguments.back().text);
            break;
        case Kind::number:
            argument.text = numberText(input.number<double>());
            break;
        case Kind::truth:
            argument.text = std::to_string(input.byte() & 1U);
            break;
        case Kind::bytes:
            argument.text = input.text();
            break;
        case Kind::buffer:
            argument.text = std::to_string(bufferSize);
            break;
        case Kind::count:
            argument = {"count", true};
            break;
        case Kind::result:
            argument = {"result", true};
            break;
        case Kind::marker:
            argument = {"marker", true};
            break;
        }
        kindBefore = parameter.kind;
        arguments.push_back(std::move(argument));
    }
    return arguments;
}

} // namespace telvofm::fuzz
