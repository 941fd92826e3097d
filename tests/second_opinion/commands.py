"""What each command export takes, logs, sends and delivers, a row each.

A row is: name, argument letters | log line | command code and fields | exchange and delivery.

Argument letters: i whole number, d double, h k x whole numbers in hundredths, thousandths and ten-thousandths,
T text, C character, S text whose first character counts, B truth, R result object, b buffer, n count, F file name, D image data.
In a log line {3} is the fourth argument. Its end is that of the line; a second line is written with a line end.
Fields, each with the number of its argument: i decimal, t text converted, r text raw, n item name, u unit,
f payment description, c character, 2 3 4 10 decimals, z2 z4 the same with the zero rule, + a sign before, g six
significant digits or nothing below zero, w truncated, ! "0" when true, # "0" when 1, ? "1" when true, = a constant.
"""
import re


def rows(text):
    return [[part.strip() for part in line.split("|")] for line in text.strip().splitlines() if line.strip()]


ITEM = ("row {1}, commodityName {2}, total price {3}, vat {4}, amount {5}, unit price {6}, unit {7}")
DISCOUNT = "row {1}, description {2}, operationType {3}"
PAYMENT = "row {1}, paymentNumber {2}, total {3}, payedAmount {4}, exchangeRate {5}, description {6}"
DRAWER = "row {1}, description {2}, operationType {3}, amount {4}, paymentNumber {5}"
SPACINGS = ", ".join(f"leftSpacing{n} {{{n + 1}}}" for n in range(1, 7))


def receipt_rows():
    """Plain, `_int` and `_str` forms of the item, discount and payment commands."""
    for name, code, more in (("itemSale", "24", ""), ("itemVoid", "25", "T"), ("itemReturn", "28", "T"),
                             ("itemNegative", "2D", "")):
        receipt = (", receiptNumber {8}", "t8") if more else ("", "")
        blank = " " if name == "itemSale" else ""
        logged = f"{name}_int" if name in ("itemVoid", "itemNegative") else f"{name}_str"
        for suffix, letters, label, amounts in (("", "iiTdCddT", name, "2:3 c4 3:5 2:6"),
                                                ("_int", "iiThSkxT", f"{name}_int", "2:3 c4 3:5 2:6"),
                                                ("_str", "iiTTSTTT", logged, "r3 c4 r5 r6")):
            yield [f"{name}{suffix} {letters}{more}", f"{label}{blank}Device {{0}}, {ITEM}{receipt[0]}",
                   f"{code} i1 n2 {amounts} u7 {receipt[1]}", "send"]
    for name, code, last, values, vat in (
            ("itemDiscount", "26", "discountValue {4}, vat {5}", "4", "v5"),
            ("itemDiscount2", "34", "discountValue {4}, vat {5}, discountTotalValue {6}", "46", "v5"),
            ("subTotalDiscount", "2C", "discountValue {4}, vat {5}", "4", "c5"),
            ("subTotalDiscount2", "35", "discountValue {4}, discountTotalValue {5}, vat {6}", "45", "c6")):
        for suffix, amount, letter in (("", "d", "C"), ("_int", "h", "S" if name[0] == "i" else "C"),
                                       ("_str", "T", "S")):
            letters = ["i", "i", "T", "i"] + [letter] * (len(values) + 1)
            fields = ["i1", "t2", "i3"] + [vat] * (len(values) + 1)
            for place in values:
                letters[int(place)] = amount
                fields[int(place) - 1] = f"r{place}" if suffix == "_str" else f"2:{place}"
            label = name if suffix == "_str" else name + suffix
            first = "itemDiscount_int\n" if name + suffix == "itemDiscount_int" else ""
            yield [f"{name}{suffix} {''.join(letters)}", f"{first}{label}Device {{0}}, {DISCOUNT}, {last}",
                   f"{code} {' '.join(fields)}", "send"]
    for name, code, sign, more in (("payment", "30", "", 0), ("payment1", "30", "+", 0), ("payment2", "36", "", 1)):
        for suffix, money, rate in (("", "d", "d"), ("_int", "h", "x"), ("_str", "T", "T")):
            if suffix == "_str" and name != "payment":
                continue
            blank = " " if name + suffix in ("payment", "payment_int", "payment_str", "payment2") else ""
            amounts = "r3 r4 r5" if suffix == "_str" else f"2:3 z2:4 {sign}z4:5"
            yield [f"{name}{suffix} iii{money}{money}{rate}T{money * more}",
                   f"{name}{suffix}{blank}device {{0}}, {PAYMENT}" + ", totalPayedAmount {7}" * more,
                   f"{code} i1 i2 {amounts} f6 {'z2:7' * more}", "send"]
    for suffix, money in (("", "d"), ("_int", "h"), ("_str", "T")):
        yield [f"depositeInDrawer{suffix} iiTi{money}i", f"depositeInDrawer{'_int' if suffix else ''}Device {{0}}, {DRAWER}",
               f"2E i1 t2 i3 {'r4' if suffix == '_str' else '2:4'} i5", "send"]


def vat_rows():
    for suffix, letters in (("", "iTCdd"), ("_str", "iTSdd"), ("_int", "iTShh")):
        label = "setVAT_int" if suffix == "_int" else "setVAT"
        yield [f"setVAT{suffix} {letters}",
               f"{label}device {{0}}, password *****, vat {{2}}, vatValue {{3}}, reverseConstant {{4}}",
               "BE t1 c2 w3 g4", "send"]
    for name, letter, pairs in (("setAllVats", "d", "ABCDE"), ("setAllVats2", "d", "ABCDEEEE"),
                                ("setAllVats3", "i", "ABCDEEEE")):
        values = range(2, 2 + 2 * len(pairs))
        labels = "".join(f", vatValue{rate} {{{2 + 2 * place}}}, reverseConstant{rate} {{{3 + 2 * place}}}"
                         for place, rate in enumerate(pairs))
        date = len(pairs) > 5
        last = 2 + 2 * len(pairs)
        yield [f"{name} iT{letter * len(values)}{'T' * date}",
               f"setAllVatsdevice {{0}}, password *****{labels}" + f", date {{{last}}}" * date,
               f"90 t1 {' '.join(f'w{place}' for place in values)} " + f"t{last}" * date, "send"]


RECEIPT = rows("""
paragonBegin iiiiiii | paragonBegin Device {0}, row {1}, sale type {2}, comm type {3}, paragon type {4}, recapitulation {5}, graphics header {6} | 20 i1 i2 i3 i4 i5 i6 | send
paragonEnd iii | paragonEnd Device {0}, row {1}, graphics header {2} | 22 i1 i2 | send
sellingDayBegin ii | sellingDayBegindeviceNumber {0}, saleMode {1} | 29 i1 | send
destroyParagon iiT | destroyParagondevice {0}, row {1}, description {2} | 2B i1 t2 | send
repeatParagon i | repeatParagondevice {0} | 2A | send
printJobCancel i | printJobCancel device {0} | E0 | send
confirmNote i | confirmNote device {0} | E1 | send
subTotal iiTi | subTotalDevice {0}, row {1}, description {2}, operationType {3} | 27 i1 t2 i3 | send
setClientID iTi | setClientIDdevice {0}number {1}type {2} | CB t1 i2 | send
printIssuedParagon iiT | printIssuedParagondevice {0}orderNumber {1}dateTime {2} | CA i1 r2 | send
setInvoiceNumber iT | setInvoiceNumberdevice {0}invoiceNumber {1} | C9 r1 | send
redeemVoucher iTdCdT | redeemVoucherdevice {0}title {1}amount {2}vat {3}price {4}voucherNumber {5} | C0 t1 2:2 c3 2:4 r5 | send
redeemVoucher_str iTTSTT | redeemVoucherdevice {0}title {1}amount {2}vat {3}price {4}voucherNumber {5} | C0 t1 r2 c3 r4 r5 | send
deductDownPayment iTdCd | deductDownPaymentdevice {0}title {1}amount {2}vat {3}price {4} | B3 t1 2:2 c3 2:4 | send
deductDownPayment_str iTTST | deductDownPaymentdevice {0}title {1}amount {2}vat {3}price {4} | B3 t1 r2 c3 r4 | send
getParagonIDs iCTbi | getParagonIDsdevice {0}inputType {1}input {2} | AF c1 r2 | query text
getParagonIDs_str iSTbi | getParagonIDsdevice {0}inputType {1}input {2} | AF c1 r2 | query text
getParagonIDs_ResultObject iCTR | getParagonIDs_ResultObjectdevice {0}inputType {1}input {2} | AF c1 r2 | query object
getParagonIDs_str_ResultObject iSTR | getParagonIDs_str_ResultObjectdevice {0}inputType {1}input {2} | AF c1 r2 | query object
setTransactionID iT | setTransactionIDdevice {0}internalCode {1} | AE r1 | send
setV48 iTC | setV48device {0}password {1}v48 {2} | A4 r1 c2 | send
setV48_str iTS | setV48device {0}password {1}v48 {2} | A4 r1 c2 | send
Popis0DPH iC | Popis0DPHdevice {0}type {1} | 9E c1 | send
Popis0DPH_str iS | Popis0DPHdevice {0}type {1} | 9E c1 | send
setSellerID iTC | setSellerIDdevice {0}number {1}type {2} | 96 r1 c2 | send
setSellerID_str iTS | setSellerIDdevice {0}number {1}type {2} | 96 r1 c2 | send
opravaDokladu iT | opravaDokladudevice {0}errCode {1} | 95 r1 | send
synchronizationToPPEKK i | synchronizationToPPEKKdevice {0} | 8E | send
""")

SETUP = rows("""
setEscapeSequence iT | setEscapeSequenceDevice {0}, sequence {1} | C7 t1 | send
setPaymentType iidB | setPaymentTypeDevice {0}, paymentTypeNumber {1}, minCurrency {2}, overPay {3} | BB i1 2:2 !3 | send
setPaymentType_int iihi | setPaymentType_intDevice {0}, paymentTypeNumber {1}, minCurrency {2}, overPay {3} | BB i1 2:2 #3 | send
setPaymentType2 iTidB | setPaymentType2Device {0}, paymentTypeName {1}, paymentTypeNumber {2}, minCurrency {3}, overPay {4} | B8 t1 i2 2:3 !4 | send
setPaymentType2_int iTihi | setPaymentType2_intDevice {0}, paymentTypeName {1}, paymentTypeNumber {2}, minCurrency {3}, overPay {4} | B8 t1 i2 2:3 #4 | send
setPassword iTT | setPasswordDevice {0}, oldPassword *****, newPassword ***** | B7 t1 t2 | send
setPrinterType iTii | setPrinterTypeDevice {0}, servicePassword *****, printerType {2}, printFormat {3} | B6 t1 i2 i3 | send
setParameter iTii | setParameterdevice {0}, password *****, paramNumber {2}, paramValue {3} | BD t1 i2 i3 | send
setHeader iTiT | setHeader device {0}, password *****, rowNumber {2}, text {3} | BC t1 i2 t3 | send
setAdditionalHeader iT | setAdditionalHeader device {0}, text {1} | C1 t1 | send
setAdditionalFooter iT | setAdditionalFooter device {0}, text {1} | C2 t1 | send
setSuperFooter iT | setSuperFooter device {0}, text {1} | CE t1 | send
setPreline iT | | C3 t1 | send
setPostline iT | setPostline device {0}, description {1} | C4 t1 | send
setEuroExchangeRate id | setEuroExchangeRate device {0}, exchangeRate {1} | B2 4:1 | send
setEuroExchangeRate_int ix | setEuroExchangeRate_intdevice {0}, exchangeRate_2 {1} | B2 4:1 | send
initFP iT | initFPDevice {0}, servicePassword ***** | F0 t1 | send
defiscalizationFM iT | defiscalizationFMDevice {0}, servicePassword ***** | F1 t1 | send
initELJ iT | initELJDevice {0}, servicePassword ***** | F3 t1 | send
initFM iT | initFMDevice {0}, servicePassword ***** | F4 t1 | send
inspectionEnabled iT | inspectionEnabledDevice {0}, servicePassword ***** | F6 t1 | send
inspectionE1 iTi | inspectionE1device {0}deltaSI {2} | F9 t1 i2 | send
verifyCRCELJ ii | verifyCRCELJdevice {0}closureNumber {1} | F5 i1 | send
closeELJcard i | closeELJcarddevice {0} | F7 | send
fiscalization iTT | fiscalizationdevice {0}, password *****, dkp {2} | B0 t1 t2 | send
setDateTime iT | setDateTimedevice {0}, date {1} | BF t1 | send
freeID iBT | freeIDdevice {0}print {1}freeID {2} | 38 ?1 r2 | send
swReset iT | swResetdevice {0}password {1} | 77 r1 | send
testTelvoFM iTi | testTelvoFMdevice {0}password {1}device {2} | 7A r1 i2 | send
clearErrorStates i | resetStates | E2 | send
printAnnouncement iiT | printAnnouncementdevice {0}, rowNumber {1}, text {2} | 31 i1 t2 | send
printAnnouncementNF iiT | printAnnouncementNFdevice {0}, rowNumber {1}, text {2} | 32 i1 t2 | send
printDisplay iiTT | printDisplaydevice {0}, displayType {1}, escSequence {2}, text {3} | C5 i1 t2 t3 | send
clearDisplay iiT | clearDisplaydevice {0}, displayType {1}, escSequence {2} | C6 i1 t2 | send
setDispF iTiiT | setDispFdevice {0}dispF {2}dispT {3}parameter {4} | DB t1 i2 i3 t4 | send
printBC iiT | printBCdevice {0}, codeType {1}, code {2} | 37 i1 t2 | send
setBCparm iiiii | setBCparmdevice {0}, textPosition {1}, textFont {2}, height {3}, width {4} | D5 i1 i2 i3 i4 | send
setQRparm iiiiii | setQRparmdevice {0}model {1}moduleWidth {2}errorCorrectionLevel {3}leftMargin {4}viewMode {5} | EC i1 i2 i3 i4 i5 | send
printQRCode iT | printQRCodedevice {0}text {1} | ED | code
setPRNcolumns ii | setPRNcolumnsdevice {0}, width {1} | D8 i1 | send
setPParameter iTii | setPParameterdevice {0}, password *****, paramType {2}, value {3} | D6 t1 i2 i3 | send
setPRNBd ii | setPRNBddevice {0}baud {1} | B4 i1 | send
setDeltaSI iTi | setDeltaSIdevice {0} | DA t1 i2 | send
setLocationGPS idd | setLocationGPSdevice {0}vertX {1}vertY {2} | CC =0 10:1 10:2 | send
setLocationAddress iTTTTT | setLocationAddressdevice {0}municipality {1}street {2}number {3}subNumber {4}zip {5} | CC =1 r1 r2 r3 r4 r5 | send
setLocationOther iT | setLocationOtherdevice {0}description {1} | CC =2 r1 | send
setEmail iT | setEmaildevice {0}email {1} | A7 r1 | send
setSMTP iSTiT | setSMTPdevice {0}type {1}ipAddress {2}port {3}localDir {4} | A6 c1 r2 i3 r4 | send
setAutKey iTT | setAutKeydevice {0}password {1}filePath {2} | A3 r1 r2 | send
setPCHDU iCT | setPCHDUdevice {0}interfaceType {1}interfaceTitle {2} | CD c1 r2 | send
setPCHDU_str iST | setPCHDUdevice {0}interfaceType {1}interfaceTitle {2} | CD c1 r2 | send
setSubjectIDData iT | setSubjectIDDatadevice {0}filePath {1} | A1 r1 | send
sendUnsentSFSpacket i | sendUnsendedSFSpacketdevice {0} | A2 | send
printUnsentSFSpackets i | printUnsendedSFSpacketsdevice {0} | A8 | send
getLastTransactionPackets ii | getLastTransactionPacketstransactionCount {1} | 8D i1 | send
""")

REPORTS = rows("""
printReport iCi | printReportdevice {0}, reportType {1}, reportNumber {2} | 50 c1 i2 | send
printReport_str iSi | printReport_strdevice {0}, reportType {1}, reportNumber {2} | 50 c1 i2 | send
printJournal iCi | printJournaldevice {0}, journalType {1}, journalNumber {2} | 51 c1 i2 | send
printJournal_str iSi | printJournal_strdevice {0}, journalType {1}, journalNumber {2} | 51 c1 i2 | send
printJournalStructD iCTT | printJournalStructDdevice {0}, journalType {1}, dateFrom {2}, dateTo {3} | 57 c1 t2 t3 | send
printJournalStructD_str iSTT | printJournalStructD_strdevice {0}, journalType {1}, dateFrom {2}, dateTo {3} | 57 c1 t2 t3 | send
printJournalStructD1 iSTT | printJournalStructD_strdevice {0}, journalType {1}, dateFrom {2}, dateTo {3} | 5A c1 t2 t3 | send
printJournalStructZ iii | printJournalStructZ deviceNumber {0}, numberFrom {1}, numberTo {2} | 58 i1 i2 | send
printJournalStructZ1 iSii | printJournalStructZ1 deviceNumber {0}, docType {1}, numberFrom {2}, numberTo {3} | 5B c1 i2 i3 | send
printJournalStructU iT | printJournalStructU deviceNumber {0}, paragonSn {1} | 59 t1 | send
printYearlyClosure iT | printYearlyClosure deviceNumber {0}, password ***** | 52 t1 | send
printIntervalFPD iiTT | printIntervalFPD device {0}, printType {1}, dateFrom {2}, dateTo {3} | 52 i1 t2 t3 | send
printIntervalFPC iiii | printIntervalFPC device {0}, printType {1}, numberFrom {2}, numberTo {3} | 53 i1 i2 i3 | send
getJournal ibi | getJournal device {0} | 9F | query exact
getJournal_ResultObject iR | *getJournal device {0}, result  | 9F | query object
getJournal_str_count ibin | getJournal_str_count device {0} | 9F | query exact count
getJournal_str_tofile iF | getJournal_str_tofile device {0}, fileName {1} | 9F | query file
getJournalStructD iCTTbi | getJournalStructD device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 97 c1 t2 t3 | query blank
getJournalStructD_ResultObject iCTTR | getJournalStructD_ResultObject device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 97 c1 t2 t3 | query object
getJournalStructD_str iSTTbi | getJournalStructD_str device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 97 c1 t2 t3 | query blank
getJournalStructD_Str_ResultObject iSTTR | getJournalStructD_str_ResultObject device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 97 c1 t2 t3 | query object
getJournalStructD_str_tofile iSTTF | getJournalStructD_str_tofile device {0}, journalType {1}, dateFrom {2}, dateTo {3}, fileName {4} | 97 c1 t2 t3 | query file
getJournalStructD1 iSTTbi | getJournalStructD1 device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 9A c1 t2 t3 | query exact
getJournalStructD1_ResultObject iSTTR | getJournalStructD1_ResultObject device {0}, journalType {1}, dateFrom {2}, dateTo {3} | 9A c1 t2 t3 | query object
getJournalStructD1_tofile iSTTF | getJournalStructD1_tofile device {0}, journalType {1}, dateFrom {2}, dateTo {3}, fileName {4} | 97 c1 t2 t3 | query file
getJournalStructZ iiibi | getJournalStructZ device {0}, numberFrom {1}, numberTo {2} | 98 i1 i2 | query exact
getJournalStructZ_ResultObject iiiR | getJournalStructZ_ResultObject device {0}, numberFrom {1}, numberTo {2} | 98 i1 i2 | query object
getJournalStructZ_tofile iiiF | getJournalStructZ_tofile device {0}, numberFrom {1}, numberTo {2}, fileName {3} | 98 i1 i2 | query file
getJournalStructZ1 iSiibi | getJournalStructZ1 device {0}docType {1}, numberFrom {2}, numberTo {3} | 9B c1 i2 i3 | query exact
getJournalStructZ1_ResultObject iSiiR | getJournalStructZ1_ResultObject device {0}docType {1}, numberFrom {2}, numberTo {3} | 9B c1 i2 i3 | query object
getJournalStructZ1_tofile iSiiF | getJournalStructZ1_tofile device {0}docType {1}, numberFrom {2}, numberTo {3}, fileName {4} | 9B c1 i2 i3 | strict
getJournalStructU iTbi | getJournalStructU device {0}, paragonSn {1} | 99 t1 | query exact
getJournalStructU_ResultObject iTR | getJournalStructU_ResultObject device {0}, paragonSn {1} | 99 t1 | query object
getJournalStructU_tofile iTF | getJournalStructU_tofile device {0}, paragonSn {1}, fileName {2} | 99 t1 | query file
saveJournalToFile iCiF | saveJournalToFiledevice {0}, journalType {1}, journalNumber {2}, journalFile {3} | 9F c1 i2 | strict
saveJournalToFile_str iSiF | saveJournalToFile_strdevice {0}, journalType {1}, journalNumber {2}, journalFile {3} | 9F c1 i2 | strict
getVariable iTbi | *getVariable device {0}, variableCode {1}, result  | 92 t1 | query text trimmed
getVariableResultObject iTR | *getVariable device {0}, variableCode {1}, result  | 92 t1 | query object trimmed
getVariableStr iT | *getVariableStr device {0}, variableCode {1}, result  | 92 t1 | query returned trimmed
getLastParagon ibi | *getLastParagon (# bytes)\\n | 93 | query blanked
getLastParagonResultObject iR | *getLastParagonResultObject (# bytes) | 93 | query object
getIntervalFPD iiTTbi | getIntervalFPD device {0}, printType {1}, dateFrom {2}, dateTo {3} | 9C i1 t2 t3 | query text
getIntervalFPC iiiibi | getIntervalFPC device {0}, printType {1}, numberFrom {2}, numberTo {3} | 9D i1 i2 i3 | query text
restoreBCKP iT | restoreBCKPdevice {0}password {1} | 78 r1 | send
getBCKP iTibi | getBCKP device {0}password {1}page {2} | 79 r1 i2 | query exact
saveBCKP iTiF | saveBCKPdevice {0}password {1}page {2} | 79 r1 i2 | strict
getRAMMP iTbi | getRAMMP device {0}password {1} | 7B r1 | query exact
saveRAMMP iTF | saveRAMMPdevice {0}password {1} | 7B r1 | strict
validateArchiveDb iT | validateArchiveDb device {0}, archiveDbName {1} | 80 r1 | send
printIntervalFPDArchive iiTTT | printIntervalFPDArchive device {0}, printType {1}, dateFrom {2}, dateTo {3}, journalType {4} | 81 i1 r2 r3 r4 | send
printJournalStructUArchive iTT | printJournalStructUArchive device {0}, paragonSn {1}, journalType {2} | 82 r1 r2 | send
printJournalStructDArchive iCTTT | printJournalStructDArchive device {0}, journalType {1}, dateFrom {2}, dateTo {3}, archiveDbName {4} | 83 c1 r2 r3 r4 | send
""")

GRAPHICS = rows(f"""
prepareGraphicHeader iT | prepareGraphicHeaderimageIndex {{0}}, fileName {{1}} | | prepare
prepareGraphicHeader_inverse iTi | prepareGraphicHeader_inverseimageIndex {{0}}, fileName {{1}}, inverse {{2}} | | prepare
loadGHMMC iii | loadGHMMCdevice {{0}}, imageNumber {{1}}, leftSpacing {{2}} | D0 i1 i2 | picture A
loadGHMMC1 iii | loadGHMMC1device {{0}}, imageNumber {{1}}, leftSpacing {{2}} | D2 i1 i2 | picture B
loadGHNV iiiiiiiii | loadGHNVdevice {{0}}, imageCount {{1}}, {SPACINGS}, printLogoAfterPrint {{8}} | D1 i1 s2 ?8 | pictures C
loadGHNV2 iiiiiiiii | loadGHNV2device {{0}}, imageCount {{1}}, {SPACINGS}, printLogoAfterPrint {{8}} | D1 i1 s2 ?8 | pictures D
loadRAMBitMap iii | loadRAMBitMapdevice {{0}}, leftSpacing {{1}}, printLogoAfterPrint {{2}} | D1 = =9 i1 ?2 | memory
printGraphic iiiDi | printGraphicdevice {{0}}, printType {{1}}, graphicIndex {{2}}, imageDataByteSize {{4}} | DE i1 i2 | data
""")


class Command:
    def __init__(self, first, log, request, exchange):
        self.name, self.letters = first.split(" ")
        # After a "*" the line is written when the reply is there, and ends with it.
        self.logs_reply = log.startswith("*")
        log = log.lstrip("*").replace("\\n", "\n")
        if log.endswith("result"):
            log += " "
        # The length of the reply, where the line tells it, is behind all arguments.
        self.log = [int(part[1:-1]) if part.startswith("{") else -1 if part == "#" else part.encode()
                    for part in re.split(r"(\{\d+\}|#)", log) if part]
        code, *fields = request.split() or [""]
        self.code = bytes.fromhex(code)
        self.fields = [self.field(text) for text in fields]
        self.exchange, *self.delivery = exchange.split()

    @staticmethod
    def field(text):
        """The kind of a field and the number of its argument, or its constant."""
        if text.startswith("="):
            return "=", text[1:].encode()
        kind, place = text.split(":") if ":" in text else re.fullmatch(r"(\D+)(\d+)", text).groups()
        return kind, int(place)


COMMANDS = {command.name: command for command in (
    Command(*row) for row in [*receipt_rows(), *vat_rows(), *RECEIPT, *SETUP, *REPORTS, *GRAPHICS])}
