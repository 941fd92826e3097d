// Who decides each command, by the file that it is in. All have the form of `Decider`.
#pragma once

#include "virtual_printer/fiscal/draft.h"
#include "virtual_printer/language/code_page.h"
#include "virtual_printer/language/fields.h"

namespace virtual_printer {

// receipt.cpp: its life
Refusal beginReceipt(Draft& draft, const Fields& fields);
Refusal endReceipt(Draft& draft, const Fields& fields);
Refusal cancelReceipt(Draft& draft, const Fields& fields);
// items.cpp
Refusal sellItem(Draft& draft, const Fields& fields);
Refusal voidItem(Draft& draft, const Fields& fields);
Refusal returnItem(Draft& draft, const Fields& fields);
Refusal sellNegativeItem(Draft& draft, const Fields& fields);
// discounts.cpp
Refusal discountItem(Draft& draft, const Fields& fields);
Refusal discountItemWithTotal(Draft& draft, const Fields& fields);
Refusal printSubtotal(Draft& draft, const Fields& fields);
Refusal discountSubtotal(Draft& draft, const Fields& fields);
Refusal discountSubtotalWithTotal(Draft& draft, const Fields& fields);
// vouchers.cpp
Refusal redeemVoucher(Draft& draft, const Fields& fields);
Refusal deductDownPayment(Draft& draft, const Fields& fields);
// payments.cpp
Refusal pay(Draft& draft, const Fields& fields);
Refusal payWithTotal(Draft& draft, const Fields& fields);
// drawer.cpp
Refusal moveDrawer(Draft& draft, const Fields& fields);
// notes.cpp: what a receipt carries beside its lines
Refusal setClient(Draft& draft, const Fields& fields);
Refusal setInvoiceNumber(Draft& draft, const Fields& fields);
Refusal setTransaction(Draft& draft, const Fields& fields);
Refusal setSeller(Draft& draft, const Fields& fields);
Refusal setVatExemption(Draft& draft, const Fields& fields);
Refusal correctDocument(Draft& draft, const Fields& fields);
Refusal setV48(Draft& draft, const Fields& fields);
Refusal setFreeIdentifier(Draft& draft, const Fields& fields);
Refusal printBarCode(Draft& draft, const Fields& fields);
// day.cpp
Refusal beginDay(Draft& draft, const Fields& fields);
Refusal report(Draft& draft, const Fields& fields);
// announcements.cpp: paper and display outside receipts
Refusal announce(Draft& draft, const Fields& fields);
Refusal announceNotFiscal(Draft& draft, const Fields& fields);
Refusal showOnDisplay(Draft& draft, const Fields& fields);
Refusal clearDisplay(Draft& draft, const Fields& fields);
// vat.cpp
Refusal setVat(Draft& draft, const Fields& fields);
Refusal setAllVats(Draft& draft, const Fields& fields);
// receipt_texts.cpp: in front of the lines of receipts and behind them
Refusal setHeader(Draft& draft, const Fields& fields);
Refusal setAdditionalHeader(Draft& draft, const Fields& fields);
Refusal setAdditionalFooter(Draft& draft, const Fields& fields);
Refusal setSuperFooter(Draft& draft, const Fields& fields);
Refusal setPreline(Draft& draft, const Fields& fields);
Refusal setPostline(Draft& draft, const Fields& fields);
// payment_types.cpp
Refusal setPaymentType(Draft& draft, const Fields& fields);
Refusal setNamedPaymentType(Draft& draft, const Fields& fields);
Refusal setEuroExchangeRate(Draft& draft, const Fields& fields);
// setup.cpp
Refusal setPassword(Draft& draft, const Fields& fields);
Refusal setPrinterType(Draft& draft, const Fields& fields);
Refusal setParameter(Draft& draft, const Fields& fields);
Refusal setPrinterParameter(Draft& draft, const Fields& fields);
Refusal setEscapeSequence(Draft& draft, const Fields& fields);
Refusal setDisplayForm(Draft& draft, const Fields& fields);
Refusal setBarCodeForm(Draft& draft, const Fields& fields);
Refusal setQrForm(Draft& draft, const Fields& fields);
Refusal setColumns(Draft& draft, const Fields& fields);
Refusal setSpeed(Draft& draft, const Fields& fields);
Refusal setDeltaSi(Draft& draft, const Fields& fields);
// registration.cpp: data of the online registration
Refusal setPosition(Draft& draft, const Fields& fields);
Refusal setAddress(Draft& draft, const Fields& fields);
Refusal setPlace(Draft& draft, const Fields& fields);
Refusal setEmail(Draft& draft, const Fields& fields);
Refusal setMailServer(Draft& draft, const Fields& fields);
Refusal setAuthenticationKey(Draft& draft, const Fields& fields);
Refusal setInterface(Draft& draft, const Fields& fields);
Refusal setSubjectData(Draft& draft, const Fields& fields);
Refusal printUnsentPackets(Draft& draft, const Fields& fields);
Refusal sendUnsentPacket(Draft& draft, const Fields& fields);
Refusal printLastTransactions(Draft& draft, const Fields& fields);
Refusal synchronize(Draft& draft, const Fields& fields);
// service.cpp
Refusal initFiscalPrinter(Draft& draft, const Fields& fields);
Refusal initFiscalMemory(Draft& draft, const Fields& fields);
Refusal initJournal(Draft& draft, const Fields& fields);
Refusal fiscalize(Draft& draft, const Fields& fields);
Refusal defiscalize(Draft& draft, const Fields& fields);
Refusal enableInspection(Draft& draft, const Fields& fields);
Refusal inspect(Draft& draft, const Fields& fields);
Refusal verifyJournal(Draft& draft, const Fields& fields);
Refusal closeJournalCard(Draft& draft, const Fields& fields);
Refusal setDateTime(Draft& draft, const Fields& fields);
Refusal resetSoftware(Draft& draft, const Fields& fields);
Refusal testPrinter(Draft& draft, const Fields& fields);
Refusal clearErrorStates(Draft& draft, const Fields& fields);
Refusal restoreBackup(Draft& draft, const Fields& fields);
// uploads.cpp
Refusal announceRaster(Draft& draft, const Fields& fields);
Refusal announceBands(Draft& draft, const Fields& fields);
Refusal announceColumns(Draft& draft, const Fields& fields);
Refusal announceRamPicture(Draft& draft, const Fields& fields);
Refusal announceGraphic(Draft& draft, const Fields& fields);
Refusal announceQrCode(Draft& draft, const Fields& fields);
// A block of the upload that was announced; see decideBlock.
Refusal takeBlock(Draft& draft, std::string_view data, bool isLast, CodePage codePage);

} // namespace virtual_printer
