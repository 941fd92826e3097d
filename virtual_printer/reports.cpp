#include "virtual_printer/reports.h"

#include "virtual_printer/money.h"

#include <algorithm>

namespace virtual_printer {
namespace {

void printSums(Paper& paper, const Sums& sums)
{
    for (const auto& [vat, sum] : sums.byVat) {
        paper.print(std::string("VAT ") + vat, formatCents(sum));
    }
    paper.print("Receipts", std::to_string(sums.receipts));
    paper.print("Cancelled receipts", std::to_string(sums.cancelled));
    paper.print("Drawer EUR", formatCents(sums.drawer));
    paper.print("Turnover EUR", formatCents(sums.turnover()));
}

void printLines(Paper& paper, std::string_view text)
{
    constexpr std::string_view lineEnd = "\r\n";
    while (!text.empty()) {
        const std::size_t size = std::min(text.find(lineEnd), text.size());
        paper.print(text.substr(0, size));
        text.remove_prefix(std::min(size + lineEnd.size(), text.size()));
    }
}

} // namespace

void printDay(Paper& paper, const FiscalMemory& memory, std::string_view title, std::string_view moment)
{
    paper.rule('=');
    paper.center(title);
    paper.print("Time", moment);
    printSums(paper, memory.day());
    paper.print("Turnover ever EUR", formatCents(memory.ever().turnover()));
    paper.rule('=');
}

void printYear(Paper& paper, const FiscalMemory& memory, std::string_view year)
{
    Sums sums;
    int closures = 0;
    for (const Closure& closure : memory.closures()) {
        if (closure.moment.starts_with(year)) {
            sums.add(closure.sums);
            ++closures;
        }
    }
    paper.rule('=');
    paper.center("YEARLY CLOSURE " + std::string(year));
    paper.print("Closures", std::to_string(closures));
    printSums(paper, sums);
    paper.rule('=');
}

void printExtract(Paper& paper, std::string_view title, std::string_view text)
{
    paper.rule('=');
    paper.center(title);
    printLines(paper, text.empty() ? "Nothing within these bounds" : text);
    paper.rule('=');
}

std::string closureText(const Closure& closure)
{
    Paper draft(CodePage::windows1250, [](std::string_view) {}); // its copy is in the code page of the link
    draft.print("Closure " + std::to_string(closure.number), closure.moment);
    printSums(draft, closure.sums);
    return draft.takeCopy();
}

void printCopy(Paper& paper, std::string_view receipt)
{
    paper.center("COPY");
    printLines(paper, receipt);
}

} // namespace virtual_printer
