// Why the printer refuses: the error codes of its negative replies with their names and sentences, in one
// table. Each sentence says what was not legal and what would be; a verdict (verdict.h) adds which field. The
// documentation is checked against it.
#pragma once

#include <array>
#include <string_view>

namespace virtual_printer {

// 0 would read as success, 17, 19 and 64 have a meaning on the link: they are never used.
enum class Refusal : unsigned char
{
    none = 0,
    wrongChecksum = 1,
    unknownCommand = 2,
    wrongFields = 3,
    badNumber = 4,
    badDate = 5,
    dayIsOpen = 6,
    badText = 7,
    wrongPassword = 8,
    valueOutOfRange = 9,
    noSellingDay = 10,
    receiptIsOpen = 11,
    noReceipt = 12,
    receiptIsBeingPaid = 13,
    nothingToVoid = 14,
    paidTooLittle = 15,
    nothingSold = 16,
    nothingToDiscount = 18,
    unknownVariable = 20,
    unknownIdentifier = 21,
    wrongTotal = 22,
    tooManyDecimals = 23,
    wrongSign = 24,
    unknownVat = 25,
    vatNotSet = 26,
    vatBelowZero = 27,
    discountTooLarge = 28,
    unknownPayment = 29,
    paymentTooSmall = 30,
    overPayment = 31,
    alreadyPaid = 32,
    paymentWrongTotal = 33,
    drawerTooEmpty = 34,
    nothingToClose = 35,
    dayTooLong = 36,
    clockWouldGoBack = 37,
    onlyBetweenDays = 38,
    notFiscalized = 39,
    alreadyFiscalized = 40,
    defiscalized = 41,
    memoryFull = 42,
    receiptTooLong = 43,
    uploadTooLarge = 44,
    badPicture = 45,
    badCode = 46,
    noSuchReceipt = 47,
    nothingToRestore = 48,
    outOfPaper = 49,
    coverIsOpen = 50,
    diskFull = 51,
    unknownOperation = 52,
    unknownSetting = 53,
    noSuchArchive = 54,
    noSuchPicture = 55,
    totalWouldBeNegative = 56,
    journalDamaged = 57,
    journalFull = 58,
};

struct RefusalText
{
    Refusal refusal;
    std::string_view name;
    std::string_view sentence;
};

inline constexpr std::array refusalTexts = {
    RefusalText{Refusal::wrongChecksum, "wrongChecksum",
                "The checksum byte does not fit the request; send the request again."},
    RefusalText{Refusal::unknownCommand, "unknownCommand",
                "The printer has no command with this code; use one of the command table."},
    RefusalText{Refusal::wrongFields, "wrongFields",
                "The command has another number of fields; send exactly those of the command table."},
    RefusalText{
        Refusal::badNumber, "badNumber",
        "A field that has to be a decimal number is none; write digits, a point and a minus sign only."},
    RefusalText{
        Refusal::badDate, "badDate",
        "A field that has to be a date is none; write 2026-01-31 or 31.01.2026, with or without 12:00."},
    RefusalText{Refusal::dayIsOpen, "dayIsOpen",
                "The selling day is open already; sell, or close it with the daily closure (printReport Z)."},
    RefusalText{
        Refusal::badText, "badText",
        "A text is empty, too long or not of the form that its field wants; send one that the field takes."},
    RefusalText{Refusal::wrongPassword, "wrongPassword",
                "The password is wrong; the first ones are in the documentation, setPassword changes them."},
    RefusalText{Refusal::valueOutOfRange, "valueOutOfRange",
                "A number is outside its range; send one that is within it."},
    RefusalText{Refusal::noSellingDay, "noSellingDay",
                "No selling day is open; begin one with sellingDayBegin first."},
    RefusalText{Refusal::receiptIsOpen, "receiptIsOpen",
                "A receipt is open; end it with paragonEnd or cancel it with destroyParagon first."},
    RefusalText{Refusal::noReceipt, "noReceipt", "No receipt is open; begin one with paragonBegin first."},
    RefusalText{Refusal::receiptIsBeingPaid, "receiptIsBeingPaid",
                "The receipt is being paid and takes no more lines of a sale; pay the rest and end it, or "
                "cancel it."},
    RefusalText{
        Refusal::nothingToVoid, "nothingToVoid",
        "No line that is not voided yet has this name, total, VAT letter, quantity and price; void a line "
        "exactly as it was sold."},
    RefusalText{Refusal::paidTooLittle, "paidTooLittle",
                "Less is paid than was sold; pay the rest before paragonEnd."},
    RefusalText{Refusal::nothingSold, "nothingSold",
                "There is no document or line for this yet; sell something first."},
    RefusalText{
        Refusal::nothingToDiscount, "nothingToDiscount",
        "There is nothing that the discount could be on; sell the item first, and discount it before the "
        "next line."},
    RefusalText{Refusal::unknownVariable, "unknownVariable",
                "The printer has no variable of this name; the documentation lists them."},
    RefusalText{Refusal::unknownIdentifier, "unknownIdentifier",
                "Receipts are not looked up by this type; it is N, D, Z, I or T."},
    RefusalText{Refusal::wrongTotal, "wrongTotal",
                "A total is not, within one cent, what the printer works out; send the one that it gives."},
    RefusalText{Refusal::tooManyDecimals, "tooManyDecimals",
                "A number has more decimals than its field has room for; round it before it is sent."},
    RefusalText{
        Refusal::wrongSign, "wrongSign",
        "A number has a sign that its field does not take; negative lines have commands of their own."},
    RefusalText{Refusal::unknownVat, "unknownVat", "There is no such VAT letter; it is A to H."},
    RefusalText{Refusal::vatNotSet, "vatNotSet",
                "The VAT letter has no rate; set it with setVAT between closure and selling day."},
    RefusalText{Refusal::vatBelowZero, "vatBelowZero",
                "The sum of a VAT letter would fall below zero; take back no more than was sold under it."},
    RefusalText{Refusal::discountTooLarge, "discountTooLarge",
                "The discount is larger than what it is on; give at most that."},
    RefusalText{Refusal::unknownPayment, "unknownPayment",
                "There is no payment type of this number; set one with setPaymentType2."},
    RefusalText{Refusal::paymentTooSmall, "paymentTooSmall",
                "The payment is smaller than the smallest one of its type; pay more, or with another type."},
    RefusalText{Refusal::overPayment, "overPayment",
                "More is paid than is due, and the payment type gives no change; pay what is due."},
    RefusalText{Refusal::alreadyPaid, "alreadyPaid", "The receipt is paid in full; end it with paragonEnd."},
    RefusalText{
        Refusal::paymentWrongTotal, "paymentWrongTotal",
        "The total of the payment is neither that of the receipt nor what is still due; till and printer "
        "disagree, compare them."},
    RefusalText{Refusal::drawerTooEmpty, "drawerTooEmpty",
                "There is not so much in the drawer; take out, pay out or give back less."},
    RefusalText{Refusal::nothingToClose, "nothingToClose",
                "The day has neither a document nor a drawer movement; there is nothing to close yet."},
    RefusalText{
        Refusal::dayTooLong, "dayTooLong",
        "The selling day is longer than 24 hours; pay and end the open receipt or cancel it, and close the "
        "day (printReport Z)."},
    RefusalText{Refusal::clockWouldGoBack, "clockWouldGoBack",
                "The clock would go back before the last document; set a later time."},
    RefusalText{Refusal::onlyBetweenDays, "onlyBetweenDays",
                "This is set only between the daily closure and the next selling day; close the day first."},
    RefusalText{Refusal::notFiscalized, "notFiscalized",
                "The printer is not fiscalized; fiscalize it with fiscalization first."},
    RefusalText{Refusal::alreadyFiscalized, "alreadyFiscalized",
                "The printer is fiscalized; this is done before that, or after defiscalizationFM."},
    RefusalText{Refusal::defiscalized, "defiscalized",
                "The printer is defiscalized and can only be read; initFM makes it factory new again."},
    RefusalText{Refusal::memoryFull, "memoryFull",
                "The fiscal memory has no room for another closure; the printer can only be read."},
    RefusalText{Refusal::receiptTooLong, "receiptTooLong",
                "The receipt has as many lines as it can hold; end it and begin another."},
    RefusalText{Refusal::uploadTooLarge, "uploadTooLarge",
                "The upload is larger than one megabyte; send a smaller one."},
    RefusalText{Refusal::badPicture, "badPicture",
                "The upload is no picture of the layout that the command announced; prepare it again."},
    RefusalText{
        Refusal::badCode, "badCode",
        "The text cannot be printed as this kind of code; check its length, characters and check digit."},
    RefusalText{Refusal::noSuchReceipt, "noSuchReceipt",
                "There is no receipt or closure of this number; check it."},
    RefusalText{Refusal::nothingToRestore, "nothingToRestore",
                "There is no backup to restore from; a daily closure makes one."},
    RefusalText{Refusal::outOfPaper, "outOfPaper",
                "The printer has run out of paper and begins no document; put in a new roll."},
    RefusalText{Refusal::coverIsOpen, "coverIsOpen", "The cover is open and no document is begun; close it."},
    RefusalText{
        Refusal::diskFull, "diskFull",
        "The printer's memory could not be written and nothing was carried out; make room on its disk."},
    RefusalText{Refusal::unknownOperation, "unknownOperation",
                "There is no such type of operation; send one that the field takes."},
    RefusalText{Refusal::unknownSetting, "unknownSetting",
                "There is no setting of this number; send one that the field takes."},
    RefusalText{Refusal::noSuchArchive, "noSuchArchive",
                "There is no archive of this name; see the variables."},
    RefusalText{Refusal::noSuchPicture, "noSuchPicture",
                "No picture is kept under this number; upload it first."},
    RefusalText{Refusal::totalWouldBeNegative, "totalWouldBeNegative",
                "The total of the receipt would fall below zero; take off no more than it comes to."},
    RefusalText{
        Refusal::journalDamaged, "journalDamaged",
        "The journal does not fit the checksum of its closure or cannot be read; the printer needs service."},
    RefusalText{Refusal::journalFull, "journalFull",
                "The journal has no room for another document; close the day and initialize the journal."},
};

constexpr const RefusalText& textOf(Refusal refusal)
{
    for (const RefusalText& text : refusalTexts) {
        if (text.refusal == refusal) {
            return text;
        }
    }
    return refusalTexts.front();
}

} // namespace virtual_printer
