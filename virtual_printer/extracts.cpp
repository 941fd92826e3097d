#include "virtual_printer/extracts.h"

#include "device/command.h"
#include "virtual_printer/bounds.h"
#include "virtual_printer/reports.h"

namespace virtual_printer {
namespace {

using telvofm::Command;

Document::Kind kindOf(const std::string& letter)
{
    return letter == "Z" ? Document::Kind::closure : Document::Kind::receipt;
}

Extract wholeOrOneDay(const Journal& journal, const Request& request)
{
    constexpr std::size_t journalNumber = 1;
    if (request.fields.size() <= journalNumber) {
        return {.refusal = Refusal::none, .text = journal.text([](const Document&) { return true; })};
    }
    const auto day = parseDecimal(request.fields[journalNumber], 0);
    if (!day) {
        return {.refusal = Refusal::badNumber, .text = {}};
    }
    return {.refusal = Refusal::none, .text = journal.text([&](const Document& document) {
                return *day == 0 || document.day == *day;
            })};
}

Extract byDates(const Journal& journal, const Request& request)
{
    Dates dates;
    if (const Refusal refusal = readBounds(request, 1, dates); refusal != Refusal::none) {
        return {.refusal = refusal, .text = {}};
    }
    const Document::Kind kind = kindOf(request.fields.front());
    return {.refusal = Refusal::none, .text = journal.text([&](const Document& document) {
                return document.kind == kind && dates.contain(document.moment);
            })};
}

Extract byNumbers(const Journal& journal, const Request& request, std::size_t first)
{
    Numbers numbers{};
    if (const Refusal refusal = readBounds(request, first, numbers); refusal != Refusal::none) {
        return {.refusal = refusal, .text = {}};
    }
    const Document::Kind kind = first == 0 ? Document::Kind::receipt : kindOf(request.fields.front());
    return {.refusal = Refusal::none, .text = journal.text([&](const Document& document) {
                return document.kind == kind && numbers.contain(document.number);
            })};
}

// The receipt's number is a text: one that is no number is no receipt's.
Extract oneReceipt(const Journal& journal, const Request& request)
{
    if (request.fields.empty()) {
        return {.refusal = Refusal::wrongFields, .text = {}};
    }
    const auto number = parseDecimal(request.fields.front(), 0);
    return {.refusal = Refusal::none, .text = journal.text([&](const Document& document) {
                return document.kind == Document::Kind::receipt && number == document.number;
            })};
}

} // namespace

Extract extractFromJournal(const Journal& journal, const Request& request)
{
    switch (static_cast<Command>(request.command)) {
    case Command::getJournalStructD:
    case Command::getJournalStructD1:
    case Command::printJournalStructD:
    case Command::printJournalStructD1:
    case Command::printJournalStructDArchive:
        return byDates(journal, request);
    case Command::getJournalStructZ:
    case Command::printJournalStructZ:
        return byNumbers(journal, request, 0);
    case Command::getJournalStructZ1:
    case Command::printJournalStructZ1:
        return byNumbers(journal, request, 1);
    case Command::getJournalStructU:
    case Command::printJournalStructU:
    case Command::printJournalStructUArchive:
        return oneReceipt(journal, request);
    default:
        return wholeOrOneDay(journal, request);
    }
}

Extract extractFromFiscalMemory(const FiscalMemory& memory, const Request& request)
{
    const auto command = static_cast<Command>(request.command);
    const bool goesByNumbers = command == Command::getIntervalFPC || command == Command::printIntervalFPC;
    Dates dates;
    Numbers numbers{};
    const Refusal refusal = goesByNumbers ? readBounds(request, 1, numbers) : readBounds(request, 1, dates);
    Extract extract = {.refusal = refusal, .text = {}};
    if (refusal != Refusal::none) {
        return extract;
    }
    for (const Closure& closure : memory.closures()) {
        if (goesByNumbers ? numbers.contain(closure.number) : dates.contain(closure.moment)) {
            extract.text += closureText(closure);
        }
    }
    return extract;
}

} // namespace virtual_printer
