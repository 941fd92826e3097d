#include "virtual_printer/printers/codes.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace virtual_printer {
namespace {

constexpr int largest = 255;

nlohmann::json contentOf(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    nlohmann::json content = nlohmann::json::parse(stream, nullptr, false);
    if (!content.is_object()) {
        throw std::runtime_error(file.string() +
                                 " holds no JSON object; write one as {\"noSellingDay\": 31}");
    }
    return content;
}

} // namespace

Codes::Codes()
{
    for (std::size_t number = 0; number < numbers.size(); ++number) {
        numbers[number] = static_cast<unsigned char>(number);
    }
}

Codes::Codes(const std::filesystem::path& file) : Codes()
{
    const nlohmann::json content = contentOf(file); // its items are looked at while it lives
    for (const auto& [name, number] : content.items()) {
        const auto* text =
            std::find_if(refusalTexts.begin(), refusalTexts.end(),
                         [&name = name](const RefusalText& known) { return known.name == name; });
        if (text == refusalTexts.end()) {
            throw std::runtime_error("there is no refusal \"" + name +
                                     "\"; docs/virtual-printer.md lists them");
        }
        // 0 would read as success.
        if (!number.is_number_integer() || number < 1 || number > largest) {
            throw std::runtime_error("the code of \"" + name + "\" is no number from 1 to 255");
        }
        numbers[static_cast<unsigned char>(text->refusal)] = number.get<unsigned char>();
    }
}

} // namespace virtual_printer
