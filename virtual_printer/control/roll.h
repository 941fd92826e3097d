// What has come out of a printer and nobody has torn off: the newest lines of its paper, each with the
// exchange that printed it and the document that it belongs to. A ring that is bounded in number and in
// bytes; numbers go on for ever.
#pragma once

#include "virtual_printer/printers/printer.h"

#include <cstdint>
#include <deque>

namespace virtual_printer {

struct RollLine
{
    std::uint64_t number = 0;   // from 1
    std::uint64_t exchange = 0; // 0: of a document that was there before
    std::int64_t document = 0;  // its place in the journal, also while it is being printed; 0: of none
    Line line;
};

class Roll
{
public:
    // New paper, on which stand the newest documents of the printer, and what is open.
    void begin(const Printer& printer);
    void add(const Happened& event);
    // The journal was cleared: places in it mean other documents from here on.
    void forgetDocuments();

    // The numbers of the lines that are there are from `first` up to, and without, `end`.
    [[nodiscard]] std::uint64_t first() const { return end() - lines.size(); }
    [[nodiscard]] std::uint64_t end() const { return following; }
    // It must be there.
    [[nodiscard]] const RollLine& at(std::uint64_t number) const { return lines[number - first()]; }

private:
    void add(RollLine line);

    std::deque<RollLine> lines;
    std::size_t bytes = 0;
    std::uint64_t following = 1;
};

} // namespace virtual_printer
