// What the codes mean that the functions return.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace telvofm::tools {

// Whether the printer has carried the call out.
enum class Executed
{
    yes,
    no,
    unknown
};

struct CodeMeaning
{
    int first;
    int last;
    std::string_view name;
    std::string_view happened;
    Executed executed;
    std::string_view advice;
};

std::span<const CodeMeaning> codeMeanings();
// Null for a number that the library never returns.
const CodeMeaning* meaningOf(int code);

// As a reader knows it: "-10202", "1 to 255".
std::string numbersOf(const CodeMeaning& meaning);
std::string_view wordOf(Executed executed);
// One sentence on whether the printer has done it.
std::string_view sentenceOf(Executed executed);

} // namespace telvofm::tools
