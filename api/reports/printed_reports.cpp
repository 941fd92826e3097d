// The trailing blank behind some names and not others, and "deviceNumber " beside "device ", are meant.
#include "commands/reports/printed_reports.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int printReport(int device, char reportType, int reportNumber)
{
    logCall("printReport", "device ", device, ", reportType ", reportType, ", reportNumber ", reportNumber);
    return runCommand(
        [&](Device& printer) { reports::printReport(printer, device, reportType, reportNumber); });
}

int printReport_str(int device, const char* reportType, int reportNumber)
{
    const char letter = firstCharacter(reportType);
    logCall("printReport_str", "device ", device, ", reportType ", letter, ", reportNumber ", reportNumber);
    return runCommand([&](Device& printer) { reports::printReport(printer, device, letter, reportNumber); });
}

int printJournal(int device, char journalType, int journalNumber)
{
    logCall("printJournal", "device ", device, ", journalType ", journalType, ", journalNumber ",
            journalNumber);
    return runCommand(
        [&](Device& printer) { reports::printJournal(printer, device, journalType, journalNumber); });
}

int printJournal_str(int device, const char* journalType, int journalNumber)
{
    const char letter = firstCharacter(journalType);
    logCall("printJournal_str", "device ", device, ", journalType ", letter, ", journalNumber ",
            journalNumber);
    return runCommand(
        [&](Device& printer) { reports::printJournal(printer, device, letter, journalNumber); });
}

int printJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo)
{
    const reports::DateRange range{journalType, Text(dateFrom), Text(dateTo)};
    logCall("printJournalStructD", "device ", device, ", journalType ", journalType, ", dateFrom ",
            range.from, ", dateTo ", range.to);
    return runCommand([&](Device& printer) { reports::printExtractD(printer, device, range); });
}

int printJournalStructD_str(int device, const char* journalType, const char* dateFrom, const char* dateTo)
{
    const reports::DateRange range{firstCharacter(journalType), Text(dateFrom), Text(dateTo)};
    logCall("printJournalStructD_str", "device ", device, ", journalType ", range.journalType, ", dateFrom ",
            range.from, ", dateTo ", range.to);
    return runCommand([&](Device& printer) { reports::printExtractD(printer, device, range); });
}

// The line bears the name of printJournalStructD_str, which is meant.
int printJournalStructD1(int device, const char* journalType, const char* dateFrom, const char* dateTo)
{
    const reports::DateRange range{firstCharacter(journalType), Text(dateFrom), Text(dateTo)};
    logCall("printJournalStructD_str", "device ", device, ", journalType ", range.journalType, ", dateFrom ",
            range.from, ", dateTo ", range.to);
    return runCommand([&](Device& printer) { reports::printExtractD1(printer, device, range); });
}

int printJournalStructZ(int device, int numberFrom, int numberTo)
{
    logCall("printJournalStructZ ", "deviceNumber ", device, ", numberFrom ", numberFrom, ", numberTo ",
            numberTo);
    return runCommand([&](Device& printer) {
        reports::printExtractZ(printer, device, {numberFrom, numberTo});
    });
}

int printJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo)
{
    const char letter = firstCharacter(docType);
    logCall("printJournalStructZ1 ", "deviceNumber ", device, ", docType ", letter, ", numberFrom ",
            numberFrom, ", numberTo ", numberTo);
    return runCommand([&](Device& printer) {
        reports::printExtractZ1(printer, device, letter, {numberFrom, numberTo});
    });
}

int printJournalStructU(int device, const char* paragonSn)
{
    const Text ownParagonSn(paragonSn);
    logCall("printJournalStructU ", "deviceNumber ", device, ", paragonSn ", ownParagonSn);
    return runCommand([&](Device& printer) { reports::printExtractU(printer, device, ownParagonSn); });
}

int printYearlyClosure(int device, const char* password)
{
    const Text ownPassword(password);
    logCall("printYearlyClosure ", "deviceNumber ", device, ", password ", "*****");
    return runCommand([&](Device& printer) { reports::printYearlyClosure(printer, device, ownPassword); });
}

int printIntervalFPD(int device, int printType, const char* dateFrom, const char* dateTo)
{
    const Text ownDateFrom(dateFrom);
    const Text ownDateTo(dateTo);
    logCall("printIntervalFPD ", "device ", device, ", printType ", printType, ", dateFrom ", ownDateFrom,
            ", dateTo ", ownDateTo);
    return runCommand([&](Device& printer) {
        reports::printIntervalByDates(printer, device, printType, ownDateFrom, ownDateTo);
    });
}

int printIntervalFPC(int device, int printType, int numberFrom, int numberTo)
{
    logCall("printIntervalFPC ", "device ", device, ", printType ", printType, ", numberFrom ", numberFrom,
            ", numberTo ", numberTo);
    return runCommand([&](Device& printer) {
        reports::printIntervalByNumbers(printer, device, printType, {numberFrom, numberTo});
    });
}
