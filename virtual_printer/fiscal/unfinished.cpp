#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/decide.h"
#include "virtual_printer/paper/codes.h"
namespace virtual_printer {
Refusal beginDay(Draft&, const Fields&) { return Refusal::none; }
Refusal report(Draft&, const Fields&) { return Refusal::none; }
Refusal announce(Draft&, const Fields&) { return Refusal::none; }
Refusal announceNotFiscal(Draft&, const Fields&) { return Refusal::none; }
Refusal showOnDisplay(Draft&, const Fields&) { return Refusal::none; }
Refusal clearDisplay(Draft&, const Fields&) { return Refusal::none; }
Refusal setVat(Draft&, const Fields&) { return Refusal::none; }
Refusal setAllVats(Draft&, const Fields&) { return Refusal::none; }
Refusal setPaymentType(Draft&, const Fields&) { return Refusal::none; }
Refusal setNamedPaymentType(Draft&, const Fields&) { return Refusal::none; }
Refusal setPassword(Draft&, const Fields&) { return Refusal::none; }
Refusal setPrinterType(Draft&, const Fields&) { return Refusal::none; }
Refusal setParameter(Draft&, const Fields&) { return Refusal::none; }
Refusal setPrinterParameter(Draft&, const Fields&) { return Refusal::none; }
Refusal setHeader(Draft&, const Fields&) { return Refusal::none; }
Refusal setAdditionalHeader(Draft&, const Fields&) { return Refusal::none; }
Refusal setAdditionalFooter(Draft&, const Fields&) { return Refusal::none; }
Refusal setSuperFooter(Draft&, const Fields&) { return Refusal::none; }
Refusal setPreline(Draft&, const Fields&) { return Refusal::none; }
Refusal setPostline(Draft&, const Fields&) { return Refusal::none; }
Refusal setEuroExchangeRate(Draft&, const Fields&) { return Refusal::none; }
Refusal setEscapeSequence(Draft&, const Fields&) { return Refusal::none; }
Refusal setDisplayForm(Draft&, const Fields&) { return Refusal::none; }
Refusal setBarCodeForm(Draft&, const Fields&) { return Refusal::none; }
Refusal setQrForm(Draft&, const Fields&) { return Refusal::none; }
Refusal setColumns(Draft&, const Fields&) { return Refusal::none; }
Refusal setSpeed(Draft&, const Fields&) { return Refusal::none; }
Refusal setDeltaSi(Draft&, const Fields&) { return Refusal::none; }
Refusal setPosition(Draft&, const Fields&) { return Refusal::none; }
Refusal setAddress(Draft&, const Fields&) { return Refusal::none; }
Refusal setPlace(Draft&, const Fields&) { return Refusal::none; }
Refusal setEmail(Draft&, const Fields&) { return Refusal::none; }
Refusal setMailServer(Draft&, const Fields&) { return Refusal::none; }
Refusal setAuthenticationKey(Draft&, const Fields&) { return Refusal::none; }
Refusal setInterface(Draft&, const Fields&) { return Refusal::none; }
Refusal setSubjectData(Draft&, const Fields&) { return Refusal::none; }
Refusal printUnsentPackets(Draft&, const Fields&) { return Refusal::none; }
Refusal sendUnsentPacket(Draft&, const Fields&) { return Refusal::none; }
Refusal printLastTransactions(Draft&, const Fields&) { return Refusal::none; }
Refusal synchronize(Draft&, const Fields&) { return Refusal::none; }
Refusal initFiscalPrinter(Draft&, const Fields&) { return Refusal::none; }
Refusal initFiscalMemory(Draft&, const Fields&) { return Refusal::none; }
Refusal initJournal(Draft&, const Fields&) { return Refusal::none; }
Refusal fiscalize(Draft&, const Fields&) { return Refusal::none; }
Refusal defiscalize(Draft&, const Fields&) { return Refusal::none; }
Refusal enableInspection(Draft&, const Fields&) { return Refusal::none; }
Refusal inspect(Draft&, const Fields&) { return Refusal::none; }
Refusal verifyJournal(Draft&, const Fields&) { return Refusal::none; }
Refusal closeJournalCard(Draft&, const Fields&) { return Refusal::none; }
Refusal setDateTime(Draft&, const Fields&) { return Refusal::none; }
Refusal resetSoftware(Draft&, const Fields&) { return Refusal::none; }
Refusal testPrinter(Draft&, const Fields&) { return Refusal::none; }
Refusal clearErrorStates(Draft&, const Fields&) { return Refusal::none; }
Refusal restoreBackup(Draft&, const Fields&) { return Refusal::none; }
Refusal checkPassword(Draft&, const Fields&) { return Refusal::none; }
Refusal checkArchive(Draft&, const Fields&) { return Refusal::none; }
Refusal announceRaster(Draft&, const Fields&) { return Refusal::none; }
Refusal announceBands(Draft&, const Fields&) { return Refusal::none; }
Refusal announceColumns(Draft&, const Fields&) { return Refusal::none; }
Refusal announceRamPicture(Draft&, const Fields&) { return Refusal::none; }
Refusal announceGraphic(Draft&, const Fields&) { return Refusal::none; }
Refusal announceQrCode(Draft&, const Fields&) { return Refusal::none; }
std::optional<Picture> drawBarCode(int kind, std::string_view text, const CodeForm&) { if (kind < 1 || text.empty()) return std::nullopt; return Picture(); }
}
