#include "virtual_printer/printer.h"

#include "device/command.h"
#include "virtual_printer/money.h"
#include "virtual_printer/settings.h"

#include <algorithm>
#include <array>
#include <limits>
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

int numberOf(const std::string& text, int otherwise)
{
    const auto value = parseDecimal(text, 0);
    return value && *value >= 0 && *value <= std::numeric_limits<int>::max() ? static_cast<int>(*value)
                                                                             : otherwise;
}

} // namespace

Printer::Printer(CodePage texts, Paper::Output paperOutput, std::function<std::string()> clock)
    : paper(texts, std::move(paperOutput)), received(paper), receipt(paper, storage, std::move(clock))
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
    case Command::getLastParagon:
    case Command::getJournal:
    case Command::getJournalStructD:
    case Command::getJournalStructD1:
    case Command::getJournalStructZ:
    case Command::getJournalStructZ1:
    case Command::getJournalStructU:
    case Command::getIntervalFPD:
    case Command::getIntervalFPC:
    case Command::getParagonIDs:
    case Command::getBCKP:
    case Command::getRAMMP:
        return data(request);
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
        return report(request);
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
        if (storage.all().empty()) {
            return Refusal::nothingSold;
        }
        paper.center("COPY");
        paper.print("Receipt " + std::to_string(storage.all().back().number),
                    formatCents(storage.all().back().total));
        return Refusal::none;
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
    case Command::setInvoiceNumber:
    case Command::setTransactionID:
    case Command::printIssuedParagon:
        return receipt.note(joined(fields));
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
    storage.remember(title, value);
    return Refusal::none;
}

Answer Printer::report(const Request& request)
{
    if (receipt.isReceiptOpen()) {
        return {.refusal = Refusal::receiptIsOpen, .data = std::nullopt};
    }
    printReport("REPORT " + joined(request.fields));
    return {};
}

void Printer::printReport(const std::string& title)
{
    paper.rule('=');
    paper.center(title);
    for (const auto& [vat, sum] : storage.turnover()) {
        paper.print(std::string("VAT ") + vat, formatCents(sum));
    }
    paper.print("Receipts", std::to_string(storage.all().size()));
    paper.print("Turnover EUR", formatCents(storage.total()));
    paper.rule('=');
}

Answer Printer::data(const Request& request)
{
    constexpr int all = std::numeric_limits<int>::max();
    const auto& fields = request.fields;
    const auto number = [&](std::size_t field, int otherwise) {
        return field < fields.size() ? numberOf(fields[field], otherwise) : otherwise;
    };
    switch (static_cast<Command>(request.command)) {
    case Command::getLastParagon:
        return {.refusal = Refusal::none, .data = storage.all().empty() ? "" : storage.all().back().text};
    case Command::getJournalStructZ:
        return {.refusal = Refusal::none, .data = storage.journal(number(0, 1), number(1, all))};
    case Command::getJournalStructZ1:
        return {.refusal = Refusal::none, .data = storage.journal(number(1, 1), number(2, all))};
    case Command::getJournalStructU:
        return {.refusal = Refusal::none, .data = storage.journal(number(0, 0), number(0, 0))};
    case Command::getParagonIDs: {
        std::string numbers;
        for (const Receipt& sold : storage.all()) {
            numbers += std::to_string(sold.number) + "\r\n";
        }
        return {.refusal = Refusal::none, .data = numbers};
    }
    case Command::getBCKP:
    case Command::getRAMMP:
        return {.refusal = Refusal::none, .data = storage.settingsText()};
    default:
        return {.refusal = Refusal::none, .data = storage.journal(1, all)};
    }
}

Answer Printer::variable(const Request& request)
{
    const std::string name = request.fields.empty() ? "" : request.fields.front();
    if (name == "RECEIPTS") {
        return {.refusal = Refusal::none, .data = std::to_string(storage.all().size()) + "\r\n"};
    }
    if (name == "TURNOVER") {
        return {.refusal = Refusal::none, .data = formatCents(storage.total()) + "\r\n"};
    }
    if (name == "STATE") {
        return {.refusal = Refusal::none, .data = receipt.isReceiptOpen() ? "open\r\n" : "closed\r\n"};
    }
    return {.refusal = Refusal::unknownVariable, .data = std::nullopt};
}

} // namespace virtual_printer
