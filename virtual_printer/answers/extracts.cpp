#include "virtual_printer/answers/extracts.h"

#include "virtual_printer/answers/archives.h"
#include "virtual_printer/answers/extract_paper.h"
#include "virtual_printer/memory/journal_reading.h"
#include "virtual_printer/paper/layout.h"

#include <charconv>
#include <functional>

namespace virtual_printer {
namespace {

constexpr std::size_t firstBound = 1; // behind the letter or the print type

// As a request has them; without a time a day counts whole.
Period periodIn(const Fields& fields)
{
    return {fields.moment(firstBound, Edge::first), fields.moment(firstBound + 1, Edge::last)};
}

std::pair<int, int> numbersIn(const Fields& fields, std::size_t first)
{
    return {fields.whole(first), fields.whole(first + 1)};
}

Document::Kind kindOf(const Fields& fields)
{
    return fields.letter(0) == 'Z' ? Document::Kind::closure : Document::Kind::receipt;
}

// The receipt's number is a text: one that is no number is no receipt's.
std::optional<int> receiptNumber(const std::string& text)
{
    int number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::string titled(std::string title, std::string_view archive)
{
    if (!archive.empty()) {
        title.append(" ").append(archive);
    }
    return title;
}

Reply extractOfJournal(const Question& question, const DocumentQuery& query, std::string_view archive = {})
{
    if (question.rule.wants == Wants::reply) {
        return {.further = [reading = JournalReading(question.memory, query),
                            columns = question.columns()]() mutable {
            const auto document = reading.next();
            return document ? std::optional(textOf(*document, columns)) : std::nullopt;
        }};
    }
    Reply reply;
    ExtractPaper paper(titled("JOURNAL", archive));
    JournalReading reading(question.memory, query);
    for (auto document = reading.next(); document && paper.add(document->lines);) {
        document = reading.next();
    }
    reply.lines = paper.takeLines();
    return reply;
}

Reply extractOfFiscalMemory(const Question& question, std::vector<Closure> closures,
                            std::string_view archive = {})
{
    if (question.rule.wants == Wants::reply) {
        return {.further = [all = std::move(closures), next = std::size_t{0},
                            columns = question.columns()]() mutable {
            return next < all.size() ? std::optional(textOf(all[next++], columns)) : std::nullopt;
        }};
    }
    Reply reply;
    ExtractPaper paper(titled("FISCAL MEMORY", archive));
    for (const Closure& closure : closures) {
        paper.add(linesOf(closure));
    }
    reply.lines = paper.takeLines();
    return reply;
}

Reply oneReceipt(const Question& question, std::optional<Period> moments, std::string_view archive)
{
    DocumentQuery query;
    query.kinds = {Document::Kind::receipt};
    query.moments = moments;
    // No receipt has the number 0.
    const int number = receiptNumber(question.fields.text(0)).value_or(0);
    query.numbers = {number, number};
    return extractOfJournal(question, query, archive);
}

// The name of the archive is the last field.
Reply inArchive(const Question& question,
                const std::function<Reply(const Period&, std::string_view)>& extract)
{
    const std::string name = question.fields.text(question.fields.count() - 1);
    const auto archive = findArchive(name, question.memory, question.now);
    return archive ? extract(*archive, name) : Reply{.verdict = Refusal::noSuchArchive};
}

} // namespace

Reply wholeJournal(const Question& question)
{
    return extractOfJournal(question, {});
}

Reply journalOfDay(const Question& question)
{
    constexpr std::size_t journalNumber = 1;
    const int closure = question.fields.whole(journalNumber);
    DocumentQuery query;
    if (closure != 0) {
        query.closure = closure;
    }
    return extractOfJournal(question, query);
}

Reply documentsByDates(const Question& question)
{
    return extractOfJournal(question,
                            {.kinds = {kindOf(question.fields)}, .moments = periodIn(question.fields)});
}

Reply documentsByNumbers(const Question& question)
{
    return extractOfJournal(
        question, {.kinds = {kindOf(question.fields)}, .numbers = numbersIn(question.fields, firstBound)});
}

Reply receiptsByNumbers(const Question& question)
{
    return extractOfJournal(question,
                            {.kinds = {Document::Kind::receipt}, .numbers = numbersIn(question.fields, 0)});
}

Reply receiptByNumber(const Question& question)
{
    return oneReceipt(question, std::nullopt, {});
}

Reply closuresByDates(const Question& question)
{
    return extractOfFiscalMemory(question, question.memory.closures(std::nullopt, periodIn(question.fields)));
}

Reply closuresByNumbers(const Question& question)
{
    return extractOfFiscalMemory(
        question, question.memory.closures(numbersIn(question.fields, firstBound), std::nullopt));
}

Reply archivedDocumentsByDates(const Question& question)
{
    return inArchive(question, [&](const Period& year, std::string_view name) {
        return extractOfJournal(
            question,
            {.kinds = {kindOf(question.fields)}, .moments = shared(periodIn(question.fields), year)}, name);
    });
}

Reply archivedReceipt(const Question& question)
{
    return inArchive(question, [&](const Period& year, std::string_view name) {
        return oneReceipt(question, year, name);
    });
}

Reply archivedClosuresByDates(const Question& question)
{
    return inArchive(question, [&](const Period& year, std::string_view name) {
        return extractOfFiscalMemory(
            question, question.memory.closures(std::nullopt, shared(periodIn(question.fields), year)), name);
    });
}

} // namespace virtual_printer
