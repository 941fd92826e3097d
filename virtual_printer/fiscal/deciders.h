// Who decides each command, by the file that it is in. All have the form of `Decider`.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/language/code_page.h"
#include "virtual_printer/language/fields.h"

namespace virtual_printer {

// receipt.cpp: its life
Verdict beginReceipt(Draft& draft, const Fields& fields);
Verdict endReceipt(Draft& draft, const Fields& fields);
Verdict cancelReceipt(Draft& draft, const Fields& fields);
// items.cpp
Verdict sellItem(Draft& draft, const Fields& fields);
Verdict voidItem(Draft& draft, const Fields& fields);
Verdict returnItem(Draft& draft, const Fields& fields);
Verdict sellNegativeItem(Draft& draft, const Fields& fields);
// discounts.cpp
Verdict discountItem(Draft& draft, const Fields& fields);
Verdict discountItemWithTotal(Draft& draft, const Fields& fields);
Verdict printSubtotal(Draft& draft, const Fields& fields);
Verdict discountSubtotal(Draft& draft, const Fields& fields);
Verdict discountSubtotalWithTotal(Draft& draft, const Fields& fields);
// vouchers.cpp
Verdict redeemVoucher(Draft& draft, const Fields& fields);
Verdict deductDownPayment(Draft& draft, const Fields& fields);
// payments.cpp
Verdict pay(Draft& draft, const Fields& fields);
Verdict payWithTotal(Draft& draft, const Fields& fields);
// drawer.cpp
Verdict moveDrawer(Draft& draft, const Fields& fields);
// notes.cpp: what a receipt carries beside its lines
Verdict setClient(Draft& draft, const Fields& fields);
Verdict setInvoiceNumber(Draft& draft, const Fields& fields);
Verdict setTransaction(Draft& draft, const Fields& fields);
Verdict setSeller(Draft& draft, const Fields& fields);
Verdict setVatExemption(Draft& draft, const Fields& fields);
Verdict correctDocument(Draft& draft, const Fields& fields);
Verdict setV48(Draft& draft, const Fields& fields);
Verdict setFreeIdentifier(Draft& draft, const Fields& fields);
Verdict printBarCode(Draft& draft, const Fields& fields);
// day.cpp
Verdict beginDay(Draft& draft, const Fields& fields);
Verdict report(Draft& draft, const Fields& fields);
// announcements.cpp: paper and display outside receipts
Verdict announce(Draft& draft, const Fields& fields);
Verdict announceNotFiscal(Draft& draft, const Fields& fields);
Verdict showOnDisplay(Draft& draft, const Fields& fields);
Verdict clearDisplay(Draft& draft, const Fields& fields);
// vat.cpp
Verdict setVat(Draft& draft, const Fields& fields);
Verdict setAllVats(Draft& draft, const Fields& fields);
// receipt_texts.cpp: in front of the lines of receipts and behind them
Verdict setHeader(Draft& draft, const Fields& fields);
Verdict setAdditionalHeader(Draft& draft, const Fields& fields);
Verdict setAdditionalFooter(Draft& draft, const Fields& fields);
Verdict setSuperFooter(Draft& draft, const Fields& fields);
Verdict setPreline(Draft& draft, const Fields& fields);
Verdict setPostline(Draft& draft, const Fields& fields);
// payment_types.cpp
Verdict setPaymentType(Draft& draft, const Fields& fields);
Verdict setNamedPaymentType(Draft& draft, const Fields& fields);
Verdict setEuroExchangeRate(Draft& draft, const Fields& fields);
// setup.cpp
Verdict setPassword(Draft& draft, const Fields& fields);
Verdict setPrinterType(Draft& draft, const Fields& fields);
Verdict setParameter(Draft& draft, const Fields& fields);
Verdict setPrinterParameter(Draft& draft, const Fields& fields);
Verdict setEscapeSequence(Draft& draft, const Fields& fields);
Verdict setDisplayForm(Draft& draft, const Fields& fields);
Verdict setBarCodeForm(Draft& draft, const Fields& fields);
Verdict setQrForm(Draft& draft, const Fields& fields);
Verdict setColumns(Draft& draft, const Fields& fields);
Verdict setSpeed(Draft& draft, const Fields& fields);
Verdict setDeltaSi(Draft& draft, const Fields& fields);
// registration.cpp: data of the online registration
Verdict setPosition(Draft& draft, const Fields& fields);
Verdict setAddress(Draft& draft, const Fields& fields);
Verdict setPlace(Draft& draft, const Fields& fields);
Verdict setEmail(Draft& draft, const Fields& fields);
Verdict setMailServer(Draft& draft, const Fields& fields);
Verdict setAuthenticationKey(Draft& draft, const Fields& fields);
Verdict setInterface(Draft& draft, const Fields& fields);
Verdict setSubjectData(Draft& draft, const Fields& fields);
Verdict printUnsentPackets(Draft& draft, const Fields& fields);
Verdict sendUnsentPacket(Draft& draft, const Fields& fields);
Verdict printLastTransactions(Draft& draft, const Fields& fields);
Verdict synchronize(Draft& draft, const Fields& fields);
// service.cpp
Verdict initFiscalPrinter(Draft& draft, const Fields& fields);
Verdict initFiscalMemory(Draft& draft, const Fields& fields);
Verdict initJournal(Draft& draft, const Fields& fields);
Verdict fiscalize(Draft& draft, const Fields& fields);
Verdict defiscalize(Draft& draft, const Fields& fields);
Verdict enableInspection(Draft& draft, const Fields& fields);
Verdict inspect(Draft& draft, const Fields& fields);
Verdict verifyJournal(Draft& draft, const Fields& fields);
Verdict closeJournalCard(Draft& draft, const Fields& fields);
Verdict setDateTime(Draft& draft, const Fields& fields);
Verdict resetSoftware(Draft& draft, const Fields& fields);
Verdict testPrinter(Draft& draft, const Fields& fields);
Verdict clearErrorStates(Draft& draft, const Fields& fields);
Verdict restoreBackup(Draft& draft, const Fields& fields);
// uploads.cpp
Verdict announceRaster(Draft& draft, const Fields& fields);
Verdict announceBands(Draft& draft, const Fields& fields);
Verdict announceColumns(Draft& draft, const Fields& fields);
Verdict announceRamPicture(Draft& draft, const Fields& fields);
Verdict announceGraphic(Draft& draft, const Fields& fields);
Verdict announceQrCode(Draft& draft, const Fields& fields);
// A block of the upload that was announced; see decideBlock.
Verdict takeBlock(Draft& draft, std::string_view data, bool isLast, CodePage codePage);

} // namespace virtual_printer
