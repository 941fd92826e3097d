// The names and labels of the log lines differ among themselves; this is meant, readers of old logs search
// for them.
#include "commands/reports/journals.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/result_objects.h"
#include "api/telvofm.h"

using namespace telvofm;

namespace {

reports::DateRange dates(char journalType, const char* from, const char* to)
{
    return {journalType, Text(from), Text(to)};
}

reports::DateRange dates(const char* journalType, const char* from, const char* to)
{
    return {firstCharacter(journalType), Text(from), Text(to)};
}

void logDates(std::string_view name, int device, const reports::DateRange& range)
{
    logCall(name, "device ", device, ", journalType ", range.journalType, ", dateFrom ", range.from,
            ", dateTo ", range.to);
}

void logDates(std::string_view name, int device, const reports::DateRange& range, const Text& fileName)
{
    logCall(name, "device ", device, ", journalType ", range.journalType, ", dateFrom ", range.from,
            ", dateTo ", range.to, ", fileName ", fileName);
}

} // namespace

int getJournal(int device, char* buffer, int bufferSize)
{
    logCall("getJournal ", "device ", device);
    return runQuery([&](Device& printer) { return printer.query(reports::wholeJournal(printer, device)); },
                    [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int getJournal_str_count(int device, char* buffer, int bufferSize, unsigned int* count)
{
    logCall("getJournal_str_count ", "device ", device);
    return runQuery([&](Device& printer) { return printer.query(reports::wholeJournal(printer, device)); },
                    [&](const std::string& reply) {
                        copyExactly(reply, buffer, bufferSize);
                        if (count != nullptr) {
                            *count = static_cast<unsigned int>(reply.size());
                        }
                    });
}

int getJournal_ResultObject(int device, ResultObject* result)
{
    // It logs after the call, under the name of getJournal, and with the whole journal: this is meant.
    return fillResult(
        result, [&](Device& printer) { return printer.query(reports::wholeJournal(printer, device)); },
        [&](const std::string& reply) { logOutcome("getJournal ", "device ", device, ", result ", reply); });
}

int getJournal_str_tofile(int device, const char* fileName)
{
    const Text ownFileName(fileName);
    logCall("getJournal_str_tofile ", "device ", device, ", fileName ", ownFileName);
    return runCommand([&](Device& printer) {
        printer.queryThenWriteFile(reports::wholeJournal(printer, device), ownFileName);
    });
}

int getJournalStructD(int device, char journalType, const char* dateFrom, const char* dateTo, char* buffer,
                      int bufferSize)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD ", device, range);
    return runQuery([&](Device& printer) { return printer.query(reports::extractD(printer, device, range)); },
                    [&](const std::string& reply) { copyBlanked(reply, buffer, bufferSize); });
}

int getJournalStructD_str(int device, const char* journalType, const char* dateFrom, const char* dateTo,
                          char* buffer, int bufferSize)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD_str ", device, range);
    return runQuery([&](Device& printer) { return printer.query(reports::extractD(printer, device, range)); },
                    [&](const std::string& reply) { copyBlanked(reply, buffer, bufferSize); });
}

int getJournalStructD_ResultObject(int device, char journalType, const char* dateFrom, const char* dateTo,
                                   ResultObject* result)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD_ResultObject ", device, range);
    return fillResult(
        result, [&](Device& printer) { return printer.query(reports::extractD(printer, device, range)); });
}

int getJournalStructD_Str_ResultObject(int device, const char* journalType, const char* dateFrom,
                                       const char* dateTo, ResultObject* result)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    // With a small "s", unlike the export: this is meant.
    logDates("getJournalStructD_str_ResultObject ", device, range);
    return fillResult(
        result, [&](Device& printer) { return printer.query(reports::extractD(printer, device, range)); });
}

int getJournalStructD_str_tofile(int device, const char* journalType, const char* dateFrom,
                                 const char* dateTo, const char* fileName)
{
    const Text ownFileName(fileName);
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD_str_tofile ", device, range, ownFileName);
    return runCommand([&](Device& printer) {
        printer.queryThenWriteFile(reports::extractD(printer, device, range), ownFileName);
    });
}

int getJournalStructD1(int device, const char* journalType, const char* dateFrom, const char* dateTo,
                       char* buffer, int bufferSize)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD1 ", device, range);
    return runQuery(
        [&](Device& printer) { return printer.query(reports::extractD1(printer, device, range)); },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int getJournalStructD1_ResultObject(int device, const char* journalType, const char* dateFrom,
                                    const char* dateTo, ResultObject* result)
{
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD1_ResultObject ", device, range);
    return fillResult(
        result, [&](Device& printer) { return printer.query(reports::extractD1(printer, device, range)); });
}

int getJournalStructD1_tofile(int device, const char* journalType, const char* dateFrom, const char* dateTo,
                              const char* fileName)
{
    const Text ownFileName(fileName);
    const auto range = dates(journalType, dateFrom, dateTo);
    logDates("getJournalStructD1_tofile ", device, range, ownFileName);
    // The D extract, not D1 as its siblings: this is meant.
    return runCommand([&](Device& printer) {
        printer.queryThenWriteFile(reports::extractD(printer, device, range), ownFileName);
    });
}

int getJournalStructZ(int device, int numberFrom, int numberTo, char* buffer, int bufferSize)
{
    logCall("getJournalStructZ ", "device ", device, ", numberFrom ", numberFrom, ", numberTo ", numberTo);
    return runQuery(
        [&](Device& printer) {
            return printer.query(reports::extractZ(printer, device, {numberFrom, numberTo}));
        },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int getJournalStructZ_ResultObject(int device, int numberFrom, int numberTo, ResultObject* result)
{
    logCall("getJournalStructZ_ResultObject ", "device ", device, ", numberFrom ", numberFrom, ", numberTo ",
            numberTo);
    return fillResult(result, [&](Device& printer) {
        return printer.query(reports::extractZ(printer, device, {numberFrom, numberTo}));
    });
}

int getJournalStructZ_tofile(int device, int numberFrom, int numberTo, const char* fileName)
{
    const Text ownFileName(fileName);
    logCall("getJournalStructZ_tofile ", "device ", device, ", numberFrom ", numberFrom, ", numberTo ",
            numberTo, ", fileName ", ownFileName);
    return runCommand([&](Device& printer) {
        printer.queryThenWriteFile(reports::extractZ(printer, device, {numberFrom, numberTo}), ownFileName);
    });
}

// The label "docType " stands without a comma in these three: this is meant.
int getJournalStructZ1(int device, const char* docType, int numberFrom, int numberTo, char* buffer,
                       int bufferSize)
{
    const char letter = firstCharacter(docType);
    logCall("getJournalStructZ1 ", "device ", device, "docType ", letter, ", numberFrom ", numberFrom,
            ", numberTo ", numberTo);
    return runQuery(
        [&](Device& printer) {
            return printer.query(reports::extractZ1(printer, device, letter, {numberFrom, numberTo}));
        },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int getJournalStructZ1_ResultObject(int device, const char* docType, int numberFrom, int numberTo,
                                    ResultObject* result)
{
    const char letter = firstCharacter(docType);
    logCall("getJournalStructZ1_ResultObject ", "device ", device, "docType ", letter, ", numberFrom ",
            numberFrom, ", numberTo ", numberTo);
    return fillResult(result, [&](Device& printer) {
        return printer.query(reports::extractZ1(printer, device, letter, {numberFrom, numberTo}));
    });
}

int getJournalStructZ1_tofile(int device, const char* docType, int numberFrom, int numberTo,
                              const char* fileName)
{
    const char letter = firstCharacter(docType);
    const Text ownFileName(fileName);
    logCall("getJournalStructZ1_tofile ", "device ", device, "docType ", letter, ", numberFrom ", numberFrom,
            ", numberTo ", numberTo, ", fileName ", ownFileName);
    return runCommand([&](Device& printer) {
        try {
            printer.queryToFile(reports::extractZ1(printer, device, letter, {numberFrom, numberTo}),
                                ownFileName);
        } catch (const Telvo06FMException& failure) {
            // This export alone logs its failure, also while the log is off: this is meant.
            const std::string_view message = failure.what();
            appendOutcome("getJournalStructZ1_tofile exception ", failure.code,
                          message.empty() ? "Unknown exception" : message);
            throw;
        }
    });
}

int getJournalStructU(int device, const char* paragonSn, char* buffer, int bufferSize)
{
    const Text ownParagonSn(paragonSn);
    logCall("getJournalStructU ", "device ", device, ", paragonSn ", ownParagonSn);
    return runQuery(
        [&](Device& printer) { return printer.query(reports::extractU(printer, device, ownParagonSn)); },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int getJournalStructU_ResultObject(int device, const char* paragonSn, ResultObject* result)
{
    const Text ownParagonSn(paragonSn);
    logCall("getJournalStructU_ResultObject ", "device ", device, ", paragonSn ", ownParagonSn);
    return fillResult(result, [&](Device& printer) {
        return printer.query(reports::extractU(printer, device, ownParagonSn));
    });
}

int getJournalStructU_tofile(int device, const char* paragonSn, const char* fileName)
{
    const Text ownParagonSn(paragonSn);
    const Text ownFileName(fileName);
    logCall("getJournalStructU_tofile ", "device ", device, ", paragonSn ", ownParagonSn, ", fileName ",
            ownFileName);
    return runCommand([&](Device& printer) {
        printer.queryThenWriteFile(reports::extractU(printer, device, ownParagonSn), ownFileName);
    });
}

int saveJournalToFile(int device, char journalType, int journalNumber, const char* journalFile)
{
    const Text ownJournalFile(journalFile);
    logCall("saveJournalToFile", "device ", device, ", journalType ", journalType, ", journalNumber ",
            journalNumber, ", journalFile ", ownJournalFile);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::savedJournal(printer, device, journalType, journalNumber),
                            ownJournalFile);
    });
}

int saveJournalToFile_str(int device, const char* journalType, int journalNumber, const char* journalFile)
{
    const Text ownJournalFile(journalFile);
    const char type = firstCharacter(journalType);
    logCall("saveJournalToFile_str", "device ", device, ", journalType ", type, ", journalNumber ",
            journalNumber, ", journalFile ", ownJournalFile);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::savedJournal(printer, device, type, journalNumber), ownJournalFile);
    });
}
