#include "commands/reports/archive.h"

namespace telvofm::reports {

void validateArchive(Device& printer, int address, std::string_view archiveName)
{
    printer.send(printer.request(address, Command::validateArchiveDb).raw(archiveName));
}

void printArchivedIntervalByDates(Device& printer, int address, int printType, std::string_view dateFrom,
                                  std::string_view dateTo, std::string_view journalType)
{
    printer.send(printer.request(address, Command::printIntervalFPDArchive)
                     .number(printType)
                     .raw(dateFrom)
                     .raw(dateTo)
                     .raw(journalType));
}

void printArchivedExtractU(Device& printer, int address, std::string_view paragonSn,
                           std::string_view journalType)
{
    printer.send(
        printer.request(address, Command::printJournalStructUArchive).raw(paragonSn).raw(journalType));
}

void printArchivedExtractD(Device& printer, int address, const DateRange& range, std::string_view archiveName)
{
    printer.send(printer.request(address, Command::printJournalStructDArchive)
                     .character(range.journalType)
                     .raw(range.from)
                     .raw(range.to)
                     .raw(archiveName));
}

} // namespace telvofm::reports
