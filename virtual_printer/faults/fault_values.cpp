#include "virtual_printer/faults/fault_values.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace virtual_printer {

using Json = nlohmann::ordered_json;

namespace {

int digitOf(char character)
{
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    constexpr std::size_t sixteen = 16;
    const std::size_t place = digits.find(character);
    return place == std::string_view::npos ? -1 : static_cast<int>(place < sixteen ? place : place - 6);
}

} // namespace

void refuseFault(const std::string& sentence)
{
    throw std::runtime_error(sentence);
}

std::string inQuotes(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

std::string listOf(std::span<const std::string_view> names)
{
    std::string list;
    for (const std::string_view name : names) {
        list += (list.empty() ? "" : ", ") + std::string(name);
    }
    return list;
}

int wholeOf(const Json& value, std::string_view key, int smallest, int largest)
{
    const bool isWhole = value.is_number_integer() && value >= smallest && value <= largest;
    if (!isWhole) {
        refuseFault(inQuotes(key) + " is a whole number from " + std::to_string(smallest) + " to " +
                    std::to_string(largest) + ".");
    }
    return value.get<int>();
}

std::size_t choiceOf(const Json& value, std::string_view key, std::span<const std::string_view> names)
{
    const auto found =
        std::find(names.begin(), names.end(), value.is_string() ? value.get<std::string>() : "");
    if (found == names.end()) {
        refuseFault(inQuotes(key) + " is one of " + listOf(names) + ".");
    }
    return static_cast<std::size_t>(found - names.begin());
}

std::optional<std::string> bytesOf(const Json& value)
{
    constexpr int sixteen = 16;
    std::string digits = value.is_string() ? value.get<std::string>() : "";
    std::erase(digits, ' ');
    std::string bytes;
    for (std::size_t index = 0; index + 1 < digits.size(); index += 2) {
        const int high = digitOf(digits[index]);
        const int low = digitOf(digits[index + 1]);
        if (high < 0 || low < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * sixteen + low);
    }
    return digits.empty() || digits.size() % 2 != 0 ? std::nullopt : std::optional(bytes);
}

std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += {digits[value / digits.size()], digits[value % digits.size()]};
    }
    return text;
}

std::uint32_t seedOf(const Json& value)
{
    if (!value.is_number_unsigned() || value > std::numeric_limits<std::uint32_t>::max()) {
        refuseFault(R"("seed" is a whole number from 0 to 4294967295.)");
    }
    return value.get<std::uint32_t>();
}

} // namespace virtual_printer
