#include "tests/wire/checks.h"

#include <fstream>
#include <iterator>

namespace wire {
namespace {

std::string difference(const std::string& what, const std::string& expected, const std::string& actual)
{
    return what + " should be\n      " + expected + "\n    and is\n      " + actual;
}

// The log is a text file: on Windows each line feed is written as two bytes.
std::string withWindowsLineEnds(std::string text)
{
    for (auto at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
        text.insert(at, 1, '\r');
    }
    return text;
}

} // namespace

std::string checkResult(const Call& call, const std::string& result)
{
    if (!call.result || call.result->text == result) {
        return {};
    }
    return difference("the result", call.result->text, result);
}

std::string checkOutputs(const Call& call, const telvofm::tools::CallContext& context,
                         const std::string& resultObject)
{
    if (call.buffer) {
        const std::string_view all(context.buffer.data(), context.buffer.size());
        if (all.substr(0, call.buffer->size()) != *call.buffer) {
            return difference("the buffer", hexadecimal(*call.buffer),
                              hexadecimal(all.substr(0, call.buffer->size())));
        }
    }
    if (call.count && *call.count != context.count) {
        return difference("the count", std::to_string(*call.count), std::to_string(context.count));
    }
    if (call.resultObject && *call.resultObject != resultObject) {
        return difference("the result object", hexadecimal(*call.resultObject), hexadecimal(resultObject));
    }
    return {};
}

std::string checkFiles(const Call& call, const std::filesystem::path& folder)
{
    for (const auto& [name, expected, isText] : call.files) {
        const auto contents = readFile(folder.string() + "/" + name);
        const bool isSameText = isText && expected && contents == withWindowsLineEnds(*expected);
        if (contents != expected && !isSameText) {
            return difference("the file " + name, expected ? hexadecimal(*expected) : "absent",
                              contents ? hexadecimal(*contents) : "absent");
        }
    }
    return {};
}

std::string LogFollower::check(const std::string& expected) const
{
    const std::string all = readFile(path.string()).value_or("");
    const std::string added = all.substr(std::min(seen, all.size()));
    if (added == expected || added == withWindowsLineEnds(expected)) {
        return {};
    }
    return difference("the call log", expected, added);
}

void LogFollower::callIsDone()
{
    seen = readFile(path.string()).value_or("").size();
}

std::optional<std::string> readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace wire
