// A document as the lines of text that it is searched by. Letters have no case in them, and a comma is a
// point: who looks for 12,50 finds 12.50.
#pragma once

#include "virtual_printer/fiscal/document.h"

#include <string>
#include <vector>

namespace virtual_printer {

// UTF-8 in and out, with the letters that the printer's code pages have. Control characters become blanks.
std::string foldedText(std::string text);

// What each line of the paper says, folded: its texts, then its sums; and what the till calls the document.
std::vector<std::string> searchedLines(const Document& document);

} // namespace virtual_printer
