// The requests that only want to be accepted: what is sold, and what is set.
#include "device/command.h"
#include "virtual_printer/printer.h"
#include "virtual_printer/settings.h"

#include <algorithm>
#include <array>

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

} // namespace

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

} // namespace virtual_printer
