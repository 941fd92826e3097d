#include "virtual_printer/printer.h"

#include "device/command.h"
#include "virtual_printer/extracts.h"
#include "virtual_printer/reports.h"
#include "virtual_printer/settings.h"
#include "virtual_printer/variables.h"

#include <algorithm>
#include <array>
#include <utility>

namespace virtual_printer {
namespace {

using telvofm::Command;

std::string joined(const std::vector<std::string>& fields)
{
    std::string text;
    for (const std::string& field : fields) {
        text += (text.empty() ? "" : " ") + field;
    }
    return text;
}

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

// Everything that only wants to be accepted.
Refusal Printer::sell(const Request& request)
{
    constexpr std::size_t description = 1;
    constexpr std::size_t discountValue = 3;
    const auto& fields = request.fields;
    switch (static_cast<Command>(request.command)) {
    case Command::sellingDayBegin:
        return receipt.beginDay();
    case Command::paragonBegin:
        return receipt.beginReceipt();
    case Command::paragonEnd:
        return receipt.endReceipt();
    case Command::itemSale:
        return receipt.addItem(request, 1);
    case Command::itemReturn:
    case Command::itemNegative:
        return receipt.addItem(request, -1);
    case Command::itemVoid:
        return receipt.voidItem(request);
    case Command::itemDiscount:
    case Command::itemDiscount2:
    case Command::subTotalDiscount:
    case Command::subTotalDiscount2:
        return fields.size() > discountValue ? receipt.addDiscount(fields[description], fields[discountValue])
                                             : Refusal::wrongFields;
    case Command::subTotal:
        return receipt.printSubtotal();
    case Command::payment:
    case Command::payment2:
        return receipt.pay(request);
    case Command::depositeInDrawer:
        return receipt.drawer(request);
    case Command::destroyParagon:
        return fields.size() > description ? receipt.cancelReceipt(fields[description])
                                           : Refusal::wrongFields;
    case Command::repeatParagon:
        return receipt.printCopyOfLast();
    case Command::printAnnouncement:
    case Command::printAnnouncementNF:
        paper.print(fields.size() > description ? fields[description] : "");
        return Refusal::none;
    case Command::redeemVoucher:
    case Command::deductDownPayment:
        return fields.size() > discountValue ? receipt.addDiscount(fields[0], fields[discountValue])
                                             : Refusal::wrongFields;
    case Command::setClientID:
    case Command::setSellerID:
    case Command::printIssuedParagon:
        return receipt.note(joined(fields));
    case Command::setInvoiceNumber:
        return receipt.note(joined(fields), &Document::invoice);
    case Command::setTransactionID:
        return receipt.note(joined(fields), &Document::transaction);
    default:
        break;
    }
    return set(request);
}

// Settings and service: shown, kept, and given back with the memory image.
Refusal Printer::set(const Request& request)
{
    constexpr auto uploads = std::array{Command::loadGHMMC, Command::loadGHMMC1, Command::loadGHNVOrRAMBitMap,
                                        Command::printGraphic, Command::printQRCode};
    if (std::find(uploads.begin(), uploads.end(), static_cast<Command>(request.command)) != uploads.end()) {
        return Refusal::none; // what they are about comes behind them
    }
    const Setting* setting = findSetting(request.command);
    if (setting == nullptr) {
        return Refusal::unknownCommand;
    }
    auto first = request.fields.begin();
    first += static_cast<std::ptrdiff_t>(std::min(setting->passwords, request.fields.size()));
    std::string title(setting->title);
    if (setting->hasKey && first != request.fields.end()) {
        title += " " + *first++;
    }
    const std::string value = joined({first, request.fields.end()});
    paper.print(title, value.size() + title.size() < Paper::columns ? value : "");
    if (value.size() + title.size() >= Paper::columns) {
        paper.print(value);
    }
    storage.settings[title] = value;
    return Refusal::none;
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
