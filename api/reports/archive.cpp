#include "commands/reports/archive.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int validateArchiveDb(int device, const char* archiveDbName)
{
    const Text ownArchiveDbName(archiveDbName);
    logCall("validateArchiveDb ", "device ", device, ", archiveDbName ", ownArchiveDbName);
    return runCommand([&](Device& printer) { reports::validateArchive(printer, device, ownArchiveDbName); });
}

int printIntervalFPDArchive(int device, int printType, const char* dateFrom, const char* dateTo,
                            const char* journalType)
{
    const Text ownDateFrom(dateFrom);
    const Text ownDateTo(dateTo);
    const Text ownJournalType(journalType);
    logCall("printIntervalFPDArchive ", "device ", device, ", printType ", printType, ", dateFrom ",
            ownDateFrom, ", dateTo ", ownDateTo, ", journalType ", ownJournalType);
    return runCommand([&](Device& printer) {
        reports::printArchivedIntervalByDates(printer, device, printType, ownDateFrom, ownDateTo,
                                              ownJournalType);
    });
}

int printJournalStructUArchive(int device, const char* paragonSn, const char* journalType)
{
    const Text ownParagonSn(paragonSn);
    const Text ownJournalType(journalType);
    logCall("printJournalStructUArchive ", "device ", device, ", paragonSn ", ownParagonSn, ", journalType ",
            ownJournalType);
    return runCommand([&](Device& printer) {
        reports::printArchivedExtractU(printer, device, ownParagonSn, ownJournalType);
    });
}

int printJournalStructDArchive(int device, char journalType, const char* dateFrom, const char* dateTo,
                               const char* archiveDbName)
{
    const Text ownArchiveDbName(archiveDbName);
    const reports::DateRange range{journalType, Text(dateFrom), Text(dateTo)};
    logCall("printJournalStructDArchive ", "device ", device, ", journalType ", journalType, ", dateFrom ",
            range.from, ", dateTo ", range.to, ", archiveDbName ", ownArchiveDbName);
    return runCommand(
        [&](Device& printer) { reports::printArchivedExtractD(printer, device, range, ownArchiveDbName); });
}
