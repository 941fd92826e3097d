// Texts in UTF-8 on lines of a fixed number of columns, one character a column, as a printer has them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

std::size_t widthOf(std::string_view text);
// Control characters become blanks: they must not move a terminal, or the paper.
std::string withoutControls(std::string_view text);

// Breaks what is longer than a line; an empty text is an empty line.
std::vector<std::string> broken(std::string_view text, std::size_t columns);
// At the two edges; a left part that is too long gets lines of its own in front.
std::vector<std::string> spread(std::string_view left, std::string_view right, std::size_t columns);
// In the middle; what is longer is broken first.
std::vector<std::string> centred(std::string_view text, std::size_t columns);

} // namespace virtual_printer
