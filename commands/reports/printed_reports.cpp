#include "commands/reports/printed_reports.h"

namespace telvofm::reports {

void printReport(Device& printer, int address, char reportType, int reportNumber)
{
    printer.send(printer.request(address, Command::printReport).character(reportType).number(reportNumber));
}

void printJournal(Device& printer, int address, char journalType, int journalNumber)
{
    printer.send(
        printer.request(address, Command::printJournal).character(journalType).number(journalNumber));
}

void printExtractD(Device& printer, int address, const DateRange& range)
{
    printer.send(printer.request(address, Command::printJournalStructD)
                     .character(range.journalType)
                     .text(range.from)
                     .text(range.to));
}

void printExtractD1(Device& printer, int address, const DateRange& range)
{
    printer.send(printer.request(address, Command::printJournalStructD1)
                     .character(range.journalType)
                     .text(range.from)
                     .text(range.to));
}

void printExtractZ(Device& printer, int address, const NumberRange& range)
{
    printer.send(printer.request(address, Command::printJournalStructZ).number(range.from).number(range.to));
}

void printExtractZ1(Device& printer, int address, char documentType, const NumberRange& range)
{
    printer.send(printer.request(address, Command::printJournalStructZ1)
                     .character(documentType)
                     .number(range.from)
                     .number(range.to));
}

void printExtractU(Device& printer, int address, std::string_view paragonSn)
{
    printer.send(printer.request(address, Command::printJournalStructU).text(paragonSn));
}

// The yearly closure and the interval by dates share a command code, which is meant: the printer tells them
// apart by the number of their fields.
void printYearlyClosure(Device& printer, int address, std::string_view password)
{
    printer.send(printer.request(address, Command::printYearlyClosureOrIntervalFPD).text(password));
}

void printIntervalByDates(Device& printer, int address, int printType, std::string_view dateFrom,
                          std::string_view dateTo)
{
    printer.send(printer.request(address, Command::printYearlyClosureOrIntervalFPD)
                     .number(printType)
                     .text(dateFrom)
                     .text(dateTo));
}

void printIntervalByNumbers(Device& printer, int address, int printType, const NumberRange& range)
{
    printer.send(printer.request(address, Command::printIntervalFPC)
                     .number(printType)
                     .number(range.from)
                     .number(range.to));
}

} // namespace telvofm::reports
