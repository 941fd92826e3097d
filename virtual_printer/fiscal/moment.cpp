#include "virtual_printer/fiscal/moment.h"

#include <algorithm>

namespace virtual_printer {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

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

// With zeros in front.
std::string padded(int number, std::size_t digits)
{
    const std::string text = std::to_string(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

std::chrono::year_month_day dateOf(int year, int month, int day)
{
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

std::optional<std::chrono::local_days> parseDate(std::string_view text)
{
    std::chrono::year_month_day date{};
    if (looksLike(text, "00.00.0000")) {
        date = dateOf(numberOf(text.substr(6)), numberOf(text.substr(3, 2)), numberOf(text.substr(0, 2)));
    } else if (looksLike(text, "0000-00-00")) {
        date = dateOf(numberOf(text.substr(0, 4)), numberOf(text.substr(5, 2)), numberOf(text.substr(8)));
    }
    return date.ok() ? std::optional<std::chrono::local_days>(date) : std::nullopt;
}

// Since the beginning of the day.
std::optional<seconds> parseTime(std::string_view text, Edge edge)
{
    constexpr int longestMinute = 59;
    const bool hasSeconds = looksLike(text, "00:00:00");
    if (!hasSeconds && !looksLike(text, "00:00")) {
        return std::nullopt;
    }
    const hours hour(numberOf(text.substr(0, 2)));
    const minutes minute(numberOf(text.substr(3, 2)));
    const seconds second(hasSeconds ? numberOf(text.substr(6)) : edge == Edge::last ? longestMinute : 0);
    if (hour >= hours(24) || minute >= hours(1) || second >= minutes(1)) {
        return std::nullopt;
    }
    return hour + minute + second;
}

} // namespace

std::optional<Moment> parseMoment(std::string_view text, Edge edge)
{
    constexpr std::size_t dateSize = 10;
    constexpr seconds lastSecond = hours(24) - seconds(1);
    if (text.empty()) {
        text = edge == Edge::first ? "0000-01-01" : "9999-12-31"; // memories can sort these
    }
    const auto date = parseDate(text.substr(0, dateSize));
    if (!date) {
        return std::nullopt;
    }
    if (text.size() <= dateSize) {
        return *date + (edge == Edge::first ? seconds(0) : lastSecond);
    }
    const auto time = parseTime(text.substr(dateSize + 1), edge);
    if (text[dateSize] != ' ' || !time) {
        return std::nullopt;
    }
    return *date + *time;
}

std::string onPaper(Moment moment)
{
    constexpr std::size_t size = 16; // without the seconds
    return toText(moment).substr(0, size);
}

std::string toText(Moment moment)
{
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    return padded(static_cast<int>(date.year()), 4) + "-" +
           padded(static_cast<int>(static_cast<unsigned>(date.month())), 2) + "-" +
           padded(static_cast<int>(static_cast<unsigned>(date.day())), 2) + " " +
           padded(static_cast<int>(time.hours().count()), 2) + ":" +
           padded(static_cast<int>(time.minutes().count()), 2) + ":" +
           padded(static_cast<int>(time.seconds().count()), 2);
}

} // namespace virtual_printer
