#include "tools/argument_text.h"

#include "tools/console.h"
#include "tools/ending.h"
#include "tools/paths.h"
#include "tools/windows_1250.h"

#include <charconv>
#include <fstream>
#include <iterator>

namespace telvofm::tools {
namespace {

[[noreturn]] void refuseArgument(const std::string& sentence)
{
    throw Failure(Ending::wrongUse, sentence);
}

// The library opens these itself.
bool namesFile(const Parameter& parameter)
{
    return parameter.name == "fileName" || parameter.name == "journalFile" || parameter.name == "path";
}

std::string contentsOf(const std::string& name)
{
    std::error_code ignored;
    std::ifstream file(pathOf(name), std::ios::binary);
    if (!file || std::filesystem::is_directory(pathOf(name), ignored)) {
        throw Failure(Ending::noFile, "the file " + name + " cannot be read; name one that is there");
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

// "1c 01 e0 04", or a file behind "@".
std::string bytesIn(const Parameter& parameter, const std::string& text)
{
    if (text.starts_with('@')) {
        return contentsOf(text.substr(1));
    }
    std::string digits = text;
    std::erase(digits, ' ');
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        unsigned byte = 0;
        const char* const end = digits.data() + i + 2;
        if (std::from_chars(digits.data() + i, end, byte, 16).ptr != end) {
            break;
        }
        bytes.push_back(static_cast<char>(byte));
    }
    if (bytes.size() * 2 != digits.size()) {
        refuseArgument(std::string(parameter.name) + ": '" + text +
                       "' are no bytes; write them as hexadecimal pairs such as '1c 01 e0 04', or @FILE");
    }
    return bytes;
}

std::string truthIn(const Parameter& parameter, const std::string& text)
{
    if (text == "1" || text == "true") {
        return "1";
    }
    if (text == "0" || text == "false") {
        return "0";
    }
    refuseArgument(std::string(parameter.name) + ": '" + text + "' is neither true nor false");
}

} // namespace

std::string textFor(const Parameter& parameter, const std::string& text)
{
    switch (parameter.kind) {
    case Kind::bytes:
        return bytesIn(parameter, text);
    case Kind::truth:
        return truthIn(parameter, text);
    case Kind::text:
    case Kind::character:
        if (namesFile(parameter)) {
            return nameForLibrary(text);
        }
        try {
            return windows1250Of(text);
        } catch (const std::invalid_argument& wrong) {
            refuseArgument(std::string(parameter.name) + ": " + wrong.what());
        }
    default:
        return text;
    }
}

} // namespace telvofm::tools
