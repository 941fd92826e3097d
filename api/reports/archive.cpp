#include "commands/reports/archive.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int validateArchiveDb(int device, const char* archiveDbName)
{
    logCall("validateArchiveDb ", "device ", device, ", archiveDbName ", archiveDbName);
    return runCommand(
        [&](Device& printer) { reports::validateArchive(printer, device, Text(archiveDbName)); });
}

int printIntervalFPDArchive(int device, int printType, const char* dateFrom, const char* dateTo,
                            const char* journalType)
{
    logCall("printIntervalFPDArchive ", "device ", device, ", printType ", printType, ", dateFrom ", dateFrom,
            ", dateTo ", dateTo, ", journalType ", journalType);
    return runCommand([&](Device& printer) {
        reports::printArchivedIntervalByDates(printer, device, printType, Text(dateFrom), Text(dateTo),
                                              Text(journalType));
    });
}

int printJournalStructUArchive(int device, const char* paragonSn, const char* journalType)
{
    logCall("printJournalStructUArchive ", "device ", device, ", paragonSn ", paragonSn, ", journalType ",
            journalType);
    return runCommand([&](Device& printer) {
        reports::printArchivedExtractU(printer, device, Text(paragonSn), Text(journalType));
    });
}

int printJournalStructDArchive(int device, char journalType, const char* dateFrom, const char* dateTo,
                               const char* archiveDbName)
{
    const reports::DateRange range{journalType, Text(dateFrom), Text(dateTo)};
    logCall("printJournalStructDArchive ", "device ", device, ", journalType ", journalType, ", dateFrom ",
            dateFrom, ", dateTo ", dateTo, ", archiveDbName ", archiveDbName);
    return runCommand([&](Device& printer) {
        reports::printArchivedExtractD(printer, device, range, Text(archiveDbName));
    });
}
