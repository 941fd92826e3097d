#include "virtual_printer/answers/yearly_closure.h"

#include "virtual_printer/answers/archives.h"
#include "virtual_printer/answers/extract_paper.h"
#include "virtual_printer/paper/layout.h"

namespace virtual_printer {

Reply yearlyClosure(const Question& question)
{
    const int year = yearOf(question.now);
    const std::vector<Closure> closures = question.memory.closures(std::nullopt, periodOf(year));
    Sums sums;
    PaymentNames names; // the latest ones
    for (const Closure& closure : closures) {
        sums.add(closure.sums);
        for (const auto& [type, name] : closure.paymentNames) {
            names[type] = name;
        }
    }
    ExtractPaper paper("YEARLY CLOSURE " + std::to_string(year));
    paper.add({{.kind = Line::Kind::pair, .text = "Closures", .right = std::to_string(closures.size())}});
    paper.add(linesOf(sums, closures.empty() ? ByPayment() : closures.back().drawer, names));
    return {.lines = paper.takeLines()};
}

} // namespace virtual_printer
