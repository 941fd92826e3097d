#include "virtual_printer/printers/output_lines.h"

#include "virtual_printer/paper/layout.h"
#include "virtual_printer/paper/text_lines.h"

namespace virtual_printer {
namespace {

std::string refusalLine(const Happened& event, const Codes& codes)
{
    const RefusalText& text = textOf(event.refusal);
    return "! " + (event.command.empty() ? "request" : event.command) + " refused with " +
           std::to_string(codes.of(event.refusal)) + " " + std::string(text.name) + ": " +
           withoutControls(sentenceOf(event.refusal, event.detail));
}

std::vector<std::string> linesOf(const Shown& shown, std::size_t columns)
{
    if (const auto* printed = std::get_if<Printed>(&shown)) {
        return layout(printed->line, columns);
    }
    if (const auto* display = std::get_if<DisplayShows>(&shown)) {
        return {"[display] " + withoutControls(display->text)};
    }
    return {"[drawer opens]"};
}

} // namespace

std::vector<std::string> linesFor(const Happened& event, std::size_t columns, const Codes& codes)
{
    if (event.refusal != Refusal::none) {
        return {refusalLine(event, codes)};
    }
    std::vector<std::string> lines;
    for (const Shown& shown : event.shown) {
        for (std::string& line : linesOf(shown, columns)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

} // namespace virtual_printer
