#include "virtual_printer/language/commands.h"

#include "virtual_printer/fiscal/deciders.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

using telvofm::Command;
using enum FieldKind;
using enum Situation;

// Where commands are legal.
constexpr Situations always = {noDay, idle, open, paying, overdue, defiscalized};
constexpr Situations betweenDays = {noDay};
constexpr Situations withoutReceipt = {noDay, idle};
constexpr Situations forReading = {noDay, idle, overdue, defiscalized};
constexpr Situations inTheDay = {idle};
constexpr Situations forClosing = {idle, overdue};
constexpr Situations inReceipt = {open};
constexpr Situations inPayment = {open, paying};
constexpr Situations aroundReceipt = {noDay, idle, open, paying};

constexpr Field row = {whole, "row"};
constexpr Field description = {text, "description"};
constexpr Field password = {secret, "password"};
constexpr Field servicePassword = {secret, "servicePassword"};

constexpr std::array<Field, 0> noFields = {};
constexpr std::array onlyText = {Field{text, "text"}};
constexpr std::array onlyPassword = {password};
constexpr std::array onlyServicePassword = {servicePassword};
constexpr std::array item = {row,
                             Field{text, "commodityName"},
                             Field{money, "totalPrice"},
                             Field{letter, "vat"},
                             Field{quantity, "amount"},
                             Field{money, "unitPrice"},
                             Field{text, "unit"}};
constexpr std::array itemOfReceipt = {row,
                                      Field{text, "commodityName"},
                                      Field{money, "totalPrice"},
                                      Field{letter, "vat"},
                                      Field{quantity, "amount"},
                                      Field{money, "unitPrice"},
                                      Field{text, "unit"},
                                      Field{text, "receiptNumber"}};
constexpr std::array itemDiscount = {row, description, Field{whole, "operationType"},
                                     Field{money, "discountValue"}, Field{letterOrEmpty, "vat"}};
constexpr std::array itemDiscount2 = {row,
                                      description,
                                      Field{whole, "operationType"},
                                      Field{money, "discountValue"},
                                      Field{letterOrEmpty, "vat"},
                                      Field{money, "discountTotalValue"}};
constexpr std::array subTotal = {row, description, Field{whole, "operationType"}};
constexpr std::array subTotalDiscount = {row, description, Field{whole, "operationType"},
                                         Field{money, "discountValue"}, Field{letterOrEmpty, "vat"}};
constexpr std::array subTotalDiscount2 = {row,
                                          description,
                                          Field{whole, "operationType"},
                                          Field{money, "discountValue"},
                                          Field{money, "discountTotalValue"},
                                          Field{letterOrEmpty, "vat"}};
constexpr std::array payment = {row,
                                Field{whole, "paymentNumber"},
                                Field{money, "total"},
                                Field{money, "payedAmount"},
                                Field{rate, "exchangeRate"},
                                description};
constexpr std::array payment2 = {row,
                                 Field{whole, "paymentNumber"},
                                 Field{money, "total"},
                                 Field{money, "payedAmount"},
                                 Field{rate, "exchangeRate"},
                                 description,
                                 Field{money, "totalPayedAmount"}};
constexpr std::array drawer = {row, description, Field{whole, "operationType"}, Field{money, "amount"},
                               Field{whole, "paymentNumber"}};
constexpr std::array paragonBegin = {row,
                                     Field{whole, "saleType"},
                                     Field{whole, "commType"},
                                     Field{whole, "paragonType"},
                                     Field{whole, "recapitulation"},
                                     Field{whole, "graphicsHeader"}};
constexpr std::array paragonEnd = {row, Field{whole, "graphicsHeader"}};
constexpr std::array sellingDay = {Field{whole, "saleMode"}};
constexpr std::array destroy = {row, description};
constexpr std::array client = {Field{text, "number"}, Field{whole, "type"}};
constexpr std::array issued = {Field{whole, "orderNumber"}, Field{dateOrEmpty, "dateTime"}};
constexpr std::array voucher = {Field{text, "title"}, Field{money, "amount"}, Field{letter, "vat"},
                                Field{money, "price"}, Field{text, "voucherNumber"}};
constexpr std::array downPayment = {Field{text, "title"}, Field{money, "amount"}, Field{letter, "vat"},
                                    Field{money, "price"}};
constexpr std::array lookUp = {Field{letter, "inputType"}, Field{text, "input"}};
constexpr std::array v48 = {password, Field{letter, "v48"}};
constexpr std::array onlyType = {Field{letter, "type"}};
constexpr std::array seller = {Field{text, "number"}, Field{letter, "type"}};
constexpr std::array announcement = {Field{whole, "rowNumber"}, Field{text, "text"}};
constexpr std::array display = {Field{whole, "displayType"}, Field{any, "escSequence"}, Field{text, "text"}};
constexpr std::array displayClearing = {Field{whole, "displayType"}, Field{any, "escSequence"}};
constexpr std::array displayForm = {password, Field{whole, "dispF"}, Field{whole, "dispT"},
                                    Field{text, "parameter"}};
constexpr std::array barCode = {Field{whole, "codeType"}, Field{text, "code"}};
constexpr std::array barCodeForm = {Field{whole, "textPosition"}, Field{whole, "textFont"},
                                    Field{whole, "height"}, Field{whole, "width"}};
constexpr std::array qrForm = {Field{whole, "model"}, Field{whole, "moduleWidth"},
                               Field{whole, "errorCorrectionLevel"}, Field{whole, "leftMargin"},
                               Field{whole, "viewMode"}};
constexpr std::array onlyWidth = {Field{whole, "width"}};
constexpr std::array printerParameter = {password, Field{whole, "paramType"}, Field{whole, "value"}};
constexpr std::array onlySpeed = {Field{whole, "baud"}};
constexpr std::array deltaSi = {servicePassword, Field{whole, "deltaSI"}};
constexpr std::array freeId = {Field{whole, "print"}, Field{text, "freeID"}};
constexpr std::array test = {password, Field{whole, "targetDevice"}};
constexpr std::array transactionCount = {Field{whole, "transactionCount"}};
constexpr std::array oneVat = {password, Field{letter, "vat"}, Field{whole, "vatValue"},
                               Field{numberOrEmpty, "reverseConstant"}};
constexpr Field vatValue = {whole, "vatValue"};
constexpr Field reverseConstant = {whole, "reverseConstant"};
constexpr std::array fiveVats = {password,        vatValue, reverseConstant, vatValue,
                                 reverseConstant, vatValue, reverseConstant, vatValue,
                                 reverseConstant, vatValue, reverseConstant};
constexpr std::array eightVats = {
    password,        vatValue, reverseConstant, vatValue, reverseConstant, vatValue,
    reverseConstant, vatValue, reverseConstant, vatValue, reverseConstant, vatValue,
    reverseConstant, vatValue, reverseConstant, vatValue, reverseConstant, Field{dateOrEmpty, "date"}};
constexpr std::array onlyFilePath = {Field{text, "filePath"}};
constexpr std::array authenticationKey = {password, Field{text, "filePath"}};
constexpr std::array mailServer = {Field{letter, "type"}, Field{text, "ipAddress"}, Field{whole, "port"},
                                   Field{text, "localDir"}};
constexpr std::array position = {Field{whole, "0"}, Field{degrees, "vertX"}, Field{degrees, "vertY"}};
constexpr std::array address = {Field{whole, "1"},     Field{text, "municipality"}, Field{text, "street"},
                                Field{text, "number"}, Field{text, "subNumber"},    Field{text, "zip"}};
constexpr std::array place = {Field{whole, "2"}, description};
constexpr std::array interfaceOf = {Field{letter, "interfaceType"}, Field{text, "interfaceTitle"}};
constexpr std::array fiscalizing = {password, Field{text, "dkp"}};
constexpr std::array onlyExchangeRate = {Field{rate, "exchangeRate"}};
constexpr std::array printerType = {servicePassword, Field{whole, "printerType"},
                                    Field{whole, "printFormat"}};
constexpr std::array passwords = {Field{secret, "oldPassword"}, Field{secret, "newPassword"}};
constexpr std::array namedPaymentType = {Field{text, "paymentTypeName"}, Field{whole, "paymentTypeNumber"},
                                         Field{money, "minCurrency"}, Field{whole, "overPay"}};
constexpr std::array paymentType = {Field{whole, "paymentTypeNumber"}, Field{money, "minCurrency"},
                                    Field{whole, "overPay"}};
constexpr std::array headerRow = {password, Field{whole, "rowNumber"}, Field{text, "text"}};
constexpr std::array parameter = {password, Field{whole, "paramNumber"}, Field{whole, "paramValue"}};
constexpr std::array onlyDate = {Field{date, "date"}};
constexpr std::array onlyEscapes = {Field{any, "sequence"}};
constexpr std::array onlyClosure = {Field{whole, "closureNumber"}};
constexpr std::array reportOf = {Field{letter, "reportType"}, Field{whole, "reportNumber"}};
constexpr std::array journalOf = {Field{letter, "journalType"}, Field{whole, "journalNumber"}};
constexpr std::array byDates = {Field{letter, "journalType"}, Field{dateOrEmpty, "dateFrom"},
                                Field{dateOrEmpty, "dateTo"}};
constexpr std::array byNumbers = {Field{whole, "numberFrom"}, Field{whole, "numberTo"}};
constexpr std::array byTypeAndNumbers = {Field{letter, "docType"}, Field{whole, "numberFrom"},
                                         Field{whole, "numberTo"}};
constexpr std::array byReceipt = {Field{text, "paragonSn"}};
constexpr std::array memoryByDates = {Field{whole, "printType"}, Field{dateOrEmpty, "dateFrom"},
                                      Field{dateOrEmpty, "dateTo"}};
constexpr std::array memoryByNumbers = {Field{whole, "printType"}, Field{whole, "numberFrom"},
                                        Field{whole, "numberTo"}};
constexpr std::array onlyArchive = {Field{text, "archiveDbName"}};
constexpr std::array archivedMemoryByDates = {Field{whole, "printType"}, Field{dateOrEmpty, "dateFrom"},
                                              Field{dateOrEmpty, "dateTo"}, Field{text, "journalType"}};
constexpr std::array archivedReceipt = {Field{text, "paragonSn"}, Field{text, "journalType"}};
constexpr std::array archivedByDates = {Field{letter, "journalType"}, Field{dateOrEmpty, "dateFrom"},
                                        Field{dateOrEmpty, "dateTo"}, Field{text, "archiveDbName"}};
constexpr std::array onlyVariable = {Field{text, "variableCode"}};
constexpr std::array backupPage = {password, Field{whole, "page"}};
constexpr std::array onePicture = {Field{whole, "imageNumber"}, Field{whole, "leftSpacing"}};
constexpr std::array severalPictures = {Field{whole, "imageCount"}, Field{any, "leftSpacings"},
                                        Field{whole, "printLogoAfterPrint"}};
constexpr std::array ramPicture = {Field{any, "empty"}, Field{whole, "9"}, Field{whole, "leftSpacing"},
                                   Field{whole, "printLogoAfterPrint"}};
constexpr std::array graphic = {Field{whole, "printType"}, Field{whole, "graphicIndex"}};

constexpr std::array rules = {
    // receipt
    CommandRule{Command::sellingDayBegin, "sellingDayBegin", sellingDay, betweenDays, beginDay},
    CommandRule{Command::paragonBegin, "paragonBegin", paragonBegin, inTheDay, beginReceipt},
    CommandRule{Command::paragonEnd, "paragonEnd", paragonEnd, inPayment, endReceipt},
    CommandRule{Command::destroyParagon, "destroyParagon", destroy, inPayment, cancelReceipt},
    CommandRule{Command::repeatParagon, "repeatParagon", noFields, forReading, nullptr, Wants::printing},
    CommandRule{Command::printJobCancel, "printJobCancel", noFields, always, nullptr},
    CommandRule{Command::confirmNote, "confirmNote", noFields, always, nullptr},
    CommandRule{Command::itemSale, "itemSale", item, inReceipt, sellItem},
    CommandRule{Command::itemVoid, "itemVoid", itemOfReceipt, inReceipt, voidItem},
    CommandRule{Command::itemReturn, "itemReturn", itemOfReceipt, inReceipt, returnItem},
    CommandRule{Command::itemNegative, "itemNegative", item, inReceipt, sellNegativeItem},
    CommandRule{Command::itemDiscount, "itemDiscount", itemDiscount, inReceipt, discountItem},
    CommandRule{Command::itemDiscount2, "itemDiscount2", itemDiscount2, inReceipt, discountItemWithTotal},
    CommandRule{Command::subTotal, "subTotal", subTotal, inReceipt, printSubtotal},
    CommandRule{Command::subTotalDiscount, "subTotalDiscount", subTotalDiscount, inReceipt, discountSubtotal},
    CommandRule{Command::subTotalDiscount2, "subTotalDiscount2", subTotalDiscount2, inReceipt,
                discountSubtotalWithTotal},
    CommandRule{Command::payment, "payment", payment, inPayment, pay},
    CommandRule{Command::payment2, "payment2", payment2, inPayment, payWithTotal},
    CommandRule{Command::depositeInDrawer, "depositeInDrawer", drawer, inTheDay, moveDrawer},
    CommandRule{Command::setClientID, "setClientID", client, inReceipt, setClient},
    CommandRule{Command::printIssuedParagon, "printIssuedParagon", issued, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::setInvoiceNumber, "setInvoiceNumber", onlyText, inReceipt, setInvoiceNumber},
    CommandRule{Command::redeemVoucher, "redeemVoucher", voucher, inReceipt, redeemVoucher},
    CommandRule{Command::deductDownPayment, "deductDownPayment", downPayment, inReceipt, deductDownPayment},
    CommandRule{Command::getParagonIDs, "getParagonIDs", lookUp, always, nullptr, Wants::reply},
    CommandRule{Command::setTransactionID, "setTransactionID", onlyText, inReceipt, setTransaction},
    CommandRule{Command::setV48, "setV48", v48, betweenDays, setV48},
    CommandRule{Command::popis0DPH, "Popis0DPH", onlyType, inReceipt, setVatExemption},
    CommandRule{Command::setSellerID, "setSellerID", seller, inReceipt, setSeller},
    CommandRule{Command::opravaDokladu, "opravaDokladu", onlyText, inReceipt, correctDocument},
    CommandRule{Command::synchronizationToPPEKK, "synchronizationToPPEKK", noFields, forReading, synchronize},
    // announcements, display and codes
    CommandRule{Command::printAnnouncement, "printAnnouncement", announcement, aroundReceipt, announce},
    CommandRule{Command::printAnnouncementNF, "printAnnouncementNF", announcement, withoutReceipt,
                announceNotFiscal},
    CommandRule{Command::printDisplay, "printDisplay", display, always, showOnDisplay},
    CommandRule{Command::clearDisplay, "clearDisplay", displayClearing, always, clearDisplay},
    CommandRule{Command::setDispF, "setDispF", displayForm, withoutReceipt, setDisplayForm},
    CommandRule{Command::printBC, "printBC", barCode, aroundReceipt, printBarCode},
    CommandRule{Command::setBCparm, "setBCparm", barCodeForm, aroundReceipt, setBarCodeForm},
    CommandRule{Command::setQRparm, "setQRparm", qrForm, aroundReceipt, setQrForm},
    CommandRule{Command::printQRCode, "printQRCode", noFields, aroundReceipt, announceQrCode},
    CommandRule{Command::setPRNcolumns, "setPRNcolumns", onlyWidth, withoutReceipt, setColumns},
    CommandRule{Command::setPParameter, "setPParameter", printerParameter, withoutReceipt,
                setPrinterParameter},
    CommandRule{Command::setPRNBd, "setPRNBd", onlySpeed, withoutReceipt, setSpeed},
    CommandRule{Command::setDeltaSI, "setDeltaSI", deltaSi, withoutReceipt, setDeltaSi},
    CommandRule{Command::freeID, "freeID", freeId, aroundReceipt, setFreeIdentifier},
    // settings
    CommandRule{Command::setVAT, "setVAT", oneVat, betweenDays, setVat},
    CommandRule{Command::setAllVats, "setAllVats", fiveVats, betweenDays, setAllVats},
    CommandRule{Command::setAllVats, "setAllVats2", eightVats, betweenDays, setAllVats},
    CommandRule{Command::setEscapeSequence, "setEscapeSequence", onlyEscapes, withoutReceipt,
                setEscapeSequence},
    CommandRule{Command::setPaymentType, "setPaymentType", paymentType, withoutReceipt, setPaymentType},
    CommandRule{Command::setPaymentType2, "setPaymentType2", namedPaymentType, withoutReceipt,
                setNamedPaymentType},
    CommandRule{Command::setPassword, "setPassword", passwords, withoutReceipt, setPassword},
    CommandRule{Command::setPrinterType, "setPrinterType", printerType, withoutReceipt, setPrinterType},
    CommandRule{Command::setParameter, "setParameter", parameter, withoutReceipt, setParameter},
    CommandRule{Command::setHeader, "setHeader", headerRow, withoutReceipt, setHeader},
    CommandRule{Command::setAdditionalHeader, "setAdditionalHeader", onlyText, withoutReceipt,
                setAdditionalHeader},
    CommandRule{Command::setAdditionalFooter, "setAdditionalFooter", onlyText, aroundReceipt,
                setAdditionalFooter},
    CommandRule{Command::setSuperFooter, "setSuperFooter", onlyText, aroundReceipt, setSuperFooter},
    CommandRule{Command::setPreline, "setPreline", onlyText, withoutReceipt, setPreline},
    CommandRule{Command::setPostline, "setPostline", onlyText, aroundReceipt, setPostline},
    CommandRule{Command::setEuroExchangeRate, "setEuroExchangeRate", onlyExchangeRate, withoutReceipt,
                setEuroExchangeRate},
    // online registration
    CommandRule{Command::setLocation, "setLocationGPS", position, withoutReceipt, setPosition},
    CommandRule{Command::setLocation, "setLocationAddress", address, withoutReceipt, setAddress},
    CommandRule{Command::setLocation, "setLocationOther", place, withoutReceipt, setPlace},
    CommandRule{Command::setEmail, "setEmail", onlyText, withoutReceipt, setEmail},
    CommandRule{Command::setSMTP, "setSMTP", mailServer, withoutReceipt, setMailServer},
    CommandRule{Command::setAutKey, "setAutKey", authenticationKey, withoutReceipt, setAuthenticationKey},
    CommandRule{Command::setPCHDU, "setPCHDU", interfaceOf, withoutReceipt, setInterface},
    CommandRule{Command::setSubjectIDData, "setSubjectIDData", onlyFilePath, withoutReceipt, setSubjectData},
    CommandRule{Command::sendUnsentSFSpacket, "sendUnsentSFSpacket", noFields, withoutReceipt,
                sendUnsentPacket},
    CommandRule{Command::printUnsentSFSpackets, "printUnsentSFSpackets", noFields, withoutReceipt,
                printUnsentPackets},
    CommandRule{Command::getLastTransactionPackets, "getLastTransactionPackets", transactionCount, forReading,
                printLastTransactions},
    // life and service
    CommandRule{Command::initFP, "initFP", onlyServicePassword, betweenDays, initFiscalPrinter},
    CommandRule{Command::initFM, "initFM", onlyServicePassword, {noDay, defiscalized}, initFiscalMemory},
    CommandRule{Command::initELJ, "initELJ", onlyServicePassword, betweenDays, initJournal},
    CommandRule{Command::fiscalization, "fiscalization", fiscalizing, betweenDays, fiscalize},
    CommandRule{Command::defiscalizationFM, "defiscalizationFM", onlyServicePassword, betweenDays,
                defiscalize},
    CommandRule{Command::inspectionEnabled, "inspectionEnabled", onlyServicePassword, withoutReceipt,
                enableInspection},
    CommandRule{Command::inspectionE1, "inspectionE1", deltaSi, withoutReceipt, inspect},
    CommandRule{Command::verifyCRCELJ, "verifyCRCELJ", onlyClosure, forReading, verifyJournal,
                Wants::verdict},
    CommandRule{Command::closeELJcard, "closeELJcard", noFields, betweenDays, closeJournalCard},
    CommandRule{Command::setDateTime, "setDateTime", onlyDate, betweenDays, setDateTime},
    CommandRule{Command::swReset, "swReset", onlyPassword, always, resetSoftware},
    CommandRule{Command::testTelvoFM, "testTelvoFM", test, withoutReceipt, testPrinter},
    CommandRule{Command::clearErrorStates, "clearErrorStates", noFields, always, clearErrorStates},
    CommandRule{Command::restoreBCKP, "restoreBCKP", onlyPassword, betweenDays, restoreBackup},
    CommandRule{Command::getBCKP, "getBCKP", backupPage, always, nullptr, Wants::reply},
    CommandRule{Command::getRAMMP, "getRAMMP", onlyPassword, always, nullptr, Wants::reply},
    // reports and extracts
    CommandRule{Command::printReport, "printReport", reportOf, forClosing, report},
    CommandRule{Command::printYearlyClosureOrIntervalFPD, "printYearlyClosure", onlyPassword, forReading,
                nullptr, Wants::printing},
    CommandRule{Command::printYearlyClosureOrIntervalFPD, "printIntervalFPD", memoryByDates, forReading,
                nullptr, Wants::printing},
    CommandRule{Command::printIntervalFPC, "printIntervalFPC", memoryByNumbers, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::printJournal, "printJournal", journalOf, forReading, nullptr, Wants::printing},
    CommandRule{Command::printJournalStructD, "printJournalStructD", byDates, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::printJournalStructD1, "printJournalStructD1", byDates, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::printJournalStructZ, "printJournalStructZ", byNumbers, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::printJournalStructZ1, "printJournalStructZ1", byTypeAndNumbers, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::printJournalStructU, "printJournalStructU", byReceipt, forReading, nullptr,
                Wants::printing},
    CommandRule{Command::validateArchiveDb, "validateArchiveDb", onlyArchive, always, nullptr,
                Wants::verdict},
    CommandRule{Command::printIntervalFPDArchive, "printIntervalFPDArchive", archivedMemoryByDates,
                forReading, nullptr, Wants::printing},
    CommandRule{Command::printJournalStructUArchive, "printJournalStructUArchive", archivedReceipt,
                forReading, nullptr, Wants::printing},
    CommandRule{Command::printJournalStructDArchive, "printJournalStructDArchive", archivedByDates,
                forReading, nullptr, Wants::printing},
    CommandRule{Command::getVariable, "getVariable", onlyVariable, always, nullptr, Wants::reply},
    CommandRule{Command::getLastParagon, "getLastParagon", noFields, always, nullptr, Wants::reply},
    CommandRule{Command::getIntervalFPD, "getIntervalFPD", memoryByDates, always, nullptr, Wants::reply},
    CommandRule{Command::getIntervalFPC, "getIntervalFPC", memoryByNumbers, always, nullptr, Wants::reply},
    CommandRule{Command::getJournal, "getJournal", noFields, always, nullptr, Wants::reply},
    CommandRule{Command::getJournal, "saveJournalToFile", journalOf, always, nullptr, Wants::reply},
    CommandRule{Command::getJournalStructD, "getJournalStructD", byDates, always, nullptr, Wants::reply},
    CommandRule{Command::getJournalStructD1, "getJournalStructD1", byDates, always, nullptr, Wants::reply},
    CommandRule{Command::getJournalStructZ, "getJournalStructZ", byNumbers, always, nullptr, Wants::reply},
    CommandRule{Command::getJournalStructZ1, "getJournalStructZ1", byTypeAndNumbers, always, nullptr,
                Wants::reply},
    CommandRule{Command::getJournalStructU, "getJournalStructU", byReceipt, always, nullptr, Wants::reply},
    // pictures
    CommandRule{Command::loadGHMMC, "loadGHMMC", onePicture, withoutReceipt, announceRaster},
    CommandRule{Command::loadGHMMC1, "loadGHMMC1", onePicture, withoutReceipt, announceBands},
    CommandRule{Command::loadGHNVOrRAMBitMap, "loadGHNV", severalPictures, withoutReceipt, announceColumns},
    CommandRule{Command::loadGHNVOrRAMBitMap, "loadRAMBitMap", ramPicture, aroundReceipt, announceRamPicture},
    CommandRule{Command::printGraphic, "printGraphic", graphic, aroundReceipt, announceGraphic},
};

} // namespace

std::span<const CommandRule> commandRules()
{
    return rules;
}

const CommandRule* findRule(unsigned char command, std::size_t fieldCount)
{
    const auto found = std::find_if(rules.begin(), rules.end(), [&](const CommandRule& rule) {
        return static_cast<unsigned char>(rule.command) == command && rule.fields.size() == fieldCount;
    });
    return found == rules.end() ? nullptr : &*found;
}

bool isKnown(unsigned char command)
{
    return std::any_of(rules.begin(), rules.end(), [&](const CommandRule& rule) {
        return static_cast<unsigned char>(rule.command) == command;
    });
}

} // namespace virtual_printer
