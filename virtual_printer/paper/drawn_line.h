// A line of a document as it is drawn, on a page or in a picture: characters on a grid, and codes and
// pictures as the dots that a scanner reads.
#pragma once

#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/fiscal/settings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

// A character of the paper is so many dots wide and high.
inline constexpr int dotsAcross = 12;
inline constexpr int dotsDown = 26;

struct DrawnLine
{
    std::vector<std::string> text{}; // below the dots, where there are both
    std::optional<Picture> dots{};
    std::string content{}; // of a code
};

// The settings give the width of the paper and the form of codes. What would be wider than the paper is drawn
// smaller where that can still be read, and named otherwise.
DrawnLine draw(const Line& line, const Settings& settings);

// "item", "qrCode".
std::string_view nameOf(Line::Kind kind);

} // namespace virtual_printer
