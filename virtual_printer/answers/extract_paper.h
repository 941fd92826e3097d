// An extract on the paper: what was selected between two rules under a title, as lines.
#pragma once

#include "virtual_printer/fiscal/document.h"

#include <string>
#include <vector>

namespace virtual_printer {

// A roll of paper has room for about as many.
inline constexpr std::size_t mostExtractLines = 20'000;

class ExtractPaper
{
public:
    explicit ExtractPaper(std::string title);

    // The lines of a document; it is not cut off from the next one. False when the paper has no room for
    // them: then it says so, and takes nothing more.
    bool add(const std::vector<Line>& document);
    // With their end; that nothing was selected is said.
    std::vector<Line> takeLines();

private:
    std::vector<Line> lines;
    std::size_t headSize;
};

} // namespace virtual_printer
