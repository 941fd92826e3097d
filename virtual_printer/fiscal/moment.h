// Moments of the printer's own clock, to the second, and the two ways in which they are written.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

using Moment = std::chrono::local_seconds;

// No date is written with more digits.
inline constexpr Moment lastMoment = std::chrono::local_days(std::chrono::year(9999) / 12 / 31) +
                                     std::chrono::hours(24) - std::chrono::seconds(1);

// What a text without a time means, the first or the last second of its day, and one without seconds, those
// of its minute.
enum class Edge
{
    first,
    last
};

// Takes "2026-01-31" and "31.01.2026", with or without a time ("31.01.2026 12:00" or "12:00:00"). An empty
// text bounds nothing: it is before or after every moment. Nothing when there is no such date.
std::optional<Moment> parseMoment(std::string_view text, Edge edge);

// "2026-01-31 12:00", as the paper has it.
std::string onPaper(Moment moment);
// "2026-01-31 12:00:00", as memories keep it: these texts sort as the moments follow each other.
std::string toText(Moment moment);

} // namespace virtual_printer
