#include "virtual_printer/control/roll.h"

#include <algorithm>

namespace virtual_printer {
namespace {

std::size_t sizeOf(const Line& line)
{
    return line.text.size() + line.right.size();
}

} // namespace

void Roll::begin(const Printer& printer)
{
    constexpr std::int64_t documentsShown = 20;
    lines.clear();
    bytes = 0;
    DocumentQuery newest;
    newest.newestFirst = true;
    newest.most = documentsShown;
    std::vector<RollLine> newestFirst;
    try {
        printer.memory().read(newest, [&](const Document& document, std::int64_t position) {
            std::for_each(document.lines.rbegin(), document.lines.rend(), [&](const Line& line) {
                newestFirst.push_back({.document = position, .line = line});
            });
            return true;
        });
    } catch (
        const MemoryDamaged&) { // NOLINT(bugprone-empty-catch): the paper is only blank, commands are refused
    }
    std::for_each(newestFirst.rbegin(), newestFirst.rend(), [this](RollLine& line) { add(std::move(line)); });
    if (const auto& receipt = printer.state().receipt) {
        for (const Line& line : receipt->document.lines) {
            add({.document = printer.state().standing->documents + 1, .line = line});
        }
    }
}

void Roll::add(const Happened& event)
{
    for (const Shown& shown : event.shown) {
        if (const auto* printed = std::get_if<Printed>(&shown)) {
            add({.exchange = event.exchange, .document = event.document, .line = printed->line});
        }
    }
}

void Roll::forgetDocuments()
{
    for (RollLine& line : lines) {
        line.document = 0;
    }
}

void Roll::add(RollLine line)
{
    constexpr std::size_t mostLines = 2'000;
    constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;
    line.number = following++;
    bytes += sizeOf(line.line);
    lines.push_back(std::move(line));
    while (lines.size() > mostLines || (lines.size() > 1 && bytes > mostBytes)) {
        bytes -= sizeOf(lines.front().line);
        lines.pop_front();
    }
}

} // namespace virtual_printer
