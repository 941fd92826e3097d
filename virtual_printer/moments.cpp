#include "virtual_printer/moments.h"

#include <chrono>

namespace virtual_printer {
namespace {

// In the patterns a 0 stands for any digit.
bool looksLike(std::string_view text, std::string_view pattern)
{
    if (text.size() != pattern.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '0' ? !isDigit : text[i] != pattern[i]) {
            return false;
        }
    }
    return true;
}

int numberOf(std::string_view digits)
{
    int number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
    }
    return number;
}

// The date as "2026-01-31".
std::optional<std::string> parseDate(std::string_view text)
{
    std::string date(text);
    if (looksLike(text, "00.00.0000")) {
        date.assign(text.substr(6)).append("-").append(text.substr(3, 2)).append("-").append(text, 0, 2);
    } else if (!looksLike(text, "0000-00-00")) {
        return std::nullopt;
    }
    const std::string_view parts = date;
    const std::chrono::year_month_day day(
        std::chrono::year(numberOf(parts.substr(0, 4))),
        std::chrono::month(static_cast<unsigned>(numberOf(parts.substr(5, 2)))),
        std::chrono::day(static_cast<unsigned>(numberOf(parts.substr(8)))));
    return day.ok() ? std::optional(date) : std::nullopt;
}

bool isTime(std::string_view text)
{
    constexpr int hours = 24;
    constexpr int minutes = 60;
    return looksLike(text, "00:00") && numberOf(text.substr(0, 2)) < hours &&
           numberOf(text.substr(3)) < minutes;
}

} // namespace

std::optional<std::string> parseMoment(std::string_view text, Edge edge)
{
    constexpr std::size_t dateSize = 10;
    if (text.empty()) {
        return edge == Edge::first ? "0000-01-01 00:00" : "9999-12-31 23:59";
    }
    const auto date = parseDate(text.substr(0, dateSize));
    if (!date) {
        return std::nullopt;
    }
    if (text.size() == dateSize) {
        return *date + (edge == Edge::first ? " 00:00" : " 23:59");
    }
    const std::string_view time = text.substr(dateSize + 1);
    if (text[dateSize] != ' ' || !isTime(time)) {
        return std::nullopt;
    }
    return *date + " " + std::string(time);
}

} // namespace virtual_printer
