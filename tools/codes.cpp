#include "tools/codes.h"

#include <charconv>

namespace telvofm::tools {
namespace {

void show(const CodeMeaning& meaning, const std::string& number, Output& output)
{
    output.line(number + "  " + std::string(meaning.name));
    output.line("    " + std::string(meaning.happened));
    output.line("    " + std::string(sentenceOf(meaning.executed)));
    output.line("    " + std::string(meaning.advice));
}

int numberIn(const std::string& text)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end) {
        throw Failure(Ending::wrongUse, "'" + text + "' is no code; a code is a whole number such as -10202");
    }
    return number;
}

} // namespace

Json jsonOf(int code, const CodeMeaning& meaning)
{
    return {{"code", code},
            {"name", meaning.name},
            {"happened", meaning.happened},
            {"executed", wordOf(meaning.executed)},
            {"advice", meaning.advice}};
}

Ending showCodes(const std::string& code, Output& output)
{
    if (!code.empty()) {
        const int number = numberIn(code);
        const CodeMeaning* const meaning = meaningOf(number);
        if (meaning == nullptr) {
            throw Failure(Ending::wrongUse, "the library returns no code " + code +
                                                "; 'telvofm codes' lists all that there are");
        }
        output.document["codes"] = Json::array({jsonOf(number, *meaning)});
        show(*meaning, code, output);
        return Ending::done;
    }
    for (const CodeMeaning& meaning : codeMeanings()) {
        Json entry = jsonOf(meaning.first, meaning);
        if (meaning.first != meaning.last) {
            entry.erase("code");
            entry["from"] = meaning.first;
            entry["to"] = meaning.last;
        }
        output.document["codes"].push_back(entry);
        show(meaning, numbersOf(meaning), output);
    }
    return Ending::done;
}

} // namespace telvofm::tools
