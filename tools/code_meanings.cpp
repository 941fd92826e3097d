#include "tools/code_meanings.h"

#include <algorithm>
#include <array>

namespace telvofm::tools {
namespace {

constexpr std::array meanings = std::to_array<CodeMeaning>({
#include "tools/codes.inc"
});

} // namespace

std::span<const CodeMeaning> codeMeanings()
{
    return meanings;
}

const CodeMeaning* meaningOf(int code)
{
    const auto* const found = std::find_if(meanings.begin(), meanings.end(), [&](const CodeMeaning& m) {
        return m.first <= code && code <= m.last;
    });
    return found == meanings.end() ? nullptr : found;
}

std::string numbersOf(const CodeMeaning& meaning)
{
    const std::string first = std::to_string(meaning.first);
    return meaning.first == meaning.last ? first : first + " to " + std::to_string(meaning.last);
}

std::string_view wordOf(Executed executed)
{
    switch (executed) {
    case Executed::yes:
        return "yes";
    case Executed::no:
        return "no";
    case Executed::unknown:
        break;
    }
    return "unknown";
}

std::string_view sentenceOf(Executed executed)
{
    switch (executed) {
    case Executed::yes:
        return "The printer has carried it out.";
    case Executed::no:
        return "The printer has not carried it out.";
    case Executed::unknown:
        break;
    }
    return "Whether the printer has carried it out is unknown.";
}

} // namespace telvofm::tools
