// Moments as the printer writes them, "2026-01-31 12:00": their texts sort as they follow each other.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

// What a bound without a time means: the first or the last minute of its day.
enum class Edge
{
    first,
    last
};

// Takes "2026-01-31" and "31.01.2026", with or without a time ("31.01.2026 12:00"). An empty text bounds
// nothing: it is before or after every moment. Nothing when there is no such date.
std::optional<std::string> parseMoment(std::string_view text, Edge edge);

} // namespace virtual_printer
