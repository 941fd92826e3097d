#include "virtual_printer/answers/extract_paper.h"

#include <utility>

namespace virtual_printer {
namespace {

Line endRule()
{
    return {.kind = Line::Kind::rule, .text = "="};
}

} // namespace

ExtractPaper::ExtractPaper(std::string title)
{
    lines.push_back(endRule());
    lines.push_back({.kind = Line::Kind::heading, .text = std::move(title)});
    headSize = lines.size();
}

bool ExtractPaper::add(const std::vector<Line>& document)
{
    if (lines.size() + document.size() > mostExtractLines) {
        lines.push_back({.text = "No more room on this roll"});
        return false;
    }
    lines.insert(lines.end(), document.begin(), document.end());
    if (lines.back().kind == Line::Kind::cut) {
        lines.pop_back(); // documents in an extract are not cut off from each other
    }
    return true;
}

std::vector<Line> ExtractPaper::takeLines()
{
    if (lines.size() == headSize) {
        lines.push_back({.text = "Nothing within these bounds"});
    }
    lines.push_back(endRule());
    lines.push_back({.kind = Line::Kind::cut});
    return std::move(lines);
}

} // namespace virtual_printer
