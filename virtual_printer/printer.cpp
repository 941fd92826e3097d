#include "virtual_printer/printer.h"

#include "device/command.h"
#include "virtual_printer/extracts.h"
#include "virtual_printer/reports.h"
#include "virtual_printer/variables.h"

#include <utility>

namespace virtual_printer {
namespace {

using telvofm::Command;

Answer readExtract(Extract extract)
{
    if (extract.refusal != Refusal::none) {
        return {.refusal = extract.refusal, .data = std::nullopt};
    }
    return {.refusal = Refusal::none, .data = std::move(extract.text)};
}

} // namespace

Printer::Printer(CodePage texts, Paper::Output paperOutput, std::function<std::string()> clock)
    : paper(texts, std::move(paperOutput)), received(paper), now(std::move(clock)),
      receipt(paper, storage, now)
{
}

Answer Printer::execute(const Request& request)
{
    Answer answer = carryOut(request);
    if (answer.refusal == Refusal::none) {
        received.begin(request);
    } else {
        received.forbid(); // what follows a refused request is noise
    }
    return answer;
}

Answer Printer::carryOut(const Request& request)
{
    switch (static_cast<Command>(request.command)) {
    case Command::getVariable:
        return variable(request);
    case Command::getLastParagon: {
        const Document* last = storage.journal.lastReceipt();
        return {.refusal = Refusal::none, .data = last == nullptr ? "" : last->text};
    }
    case Command::getJournal:
    case Command::getJournalStructD:
    case Command::getJournalStructD1:
    case Command::getJournalStructZ:
    case Command::getJournalStructZ1:
    case Command::getJournalStructU:
        return readExtract(extractFromJournal(storage.journal, request));
    case Command::getIntervalFPD:
    case Command::getIntervalFPC:
        return readExtract(extractFromFiscalMemory(storage.fiscalMemory, request));
    case Command::getParagonIDs:
        return readExtract(findReceipts(storage.journal, request));
    case Command::getBCKP:
    case Command::getRAMMP:
        return {.refusal = Refusal::none, .data = storage.settingsText()};
    case Command::printReport:
    case Command::printJournal:
    case Command::printYearlyClosureOrIntervalFPD:
    case Command::printIntervalFPC:
    case Command::printJournalStructD:
    case Command::printJournalStructD1:
    case Command::printJournalStructZ:
    case Command::printJournalStructZ1:
    case Command::printJournalStructU:
    case Command::printIntervalFPDArchive:
    case Command::printJournalStructUArchive:
    case Command::printJournalStructDArchive:
        return {.refusal = report(request), .data = std::nullopt};
    default:
        return {.refusal = sell(request), .data = std::nullopt};
    }
}

Refusal Printer::report(const Request& request)
{
    if (receipt.isReceiptOpen()) {
        return Refusal::receiptIsOpen;
    }
    const auto command = static_cast<Command>(request.command);
    if (command == Command::printReport) {
        if (request.fields.empty()) {
            return Refusal::wrongFields;
        }
        const std::string& letter = request.fields.front();
        if (letter == "Z") {
            return receipt.closeDay();
        }
        printDay(paper, storage.fiscalMemory, "REPORT " + letter, now());
        return Refusal::none;
    }
    if (command == Command::printYearlyClosureOrIntervalFPD && request.fields.size() == 1) {
        constexpr std::size_t yearSize = 4;
        printYear(paper, storage.fiscalMemory, now().substr(0, yearSize)); // the field is a password
        return Refusal::none;
    }
    const bool isOfFiscalMemory = command == Command::printYearlyClosureOrIntervalFPD ||
                                  command == Command::printIntervalFPC ||
                                  command == Command::printIntervalFPDArchive;
    const Extract extract = isOfFiscalMemory ? extractFromFiscalMemory(storage.fiscalMemory, request)
                                             : extractFromJournal(storage.journal, request);
    if (extract.refusal == Refusal::none) {
        printExtract(paper, isOfFiscalMemory ? "FISCAL MEMORY" : "JOURNAL", extract.text);
    }
    return extract.refusal;
}

Answer Printer::variable(const Request& request)
{
    const std::string name = request.fields.empty() ? "" : request.fields.front();
    auto text = variableText(name, storage.fiscalMemory, receipt.isReceiptOpen());
    if (!text) {
        return {.refusal = Refusal::unknownVariable, .data = std::nullopt};
    }
    return {.refusal = Refusal::none, .data = *text + "\r\n"};
}

} // namespace virtual_printer
