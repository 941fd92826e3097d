// These exports write the password into the call log in clear, and the file name not at all; both are meant.
#include "commands/reports/backups.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int restoreBCKP(int device, const char* password)
{
    const Text ownPassword(password);
    logCall("restoreBCKP", "device ", device, "password ", ownPassword);
    return runCommand([&](Device& printer) { reports::restoreBackup(printer, device, ownPassword); });
}

int getBCKP(int device, const char* password, int page, char* buffer, int bufferSize)
{
    const Text ownPassword(password);
    logCall("getBCKP ", "device ", device, "password ", ownPassword, "page ", page);
    return runQuery(
        [&](Device& printer) {
            return printer.query(reports::backupPage(printer, device, ownPassword, page));
        },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int saveBCKP(int device, const char* password, int page, const char* fileName)
{
    const Text ownPassword(password);
    const Text ownFileName(fileName);
    logCall("saveBCKP", "device ", device, "password ", ownPassword, "page ", page);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::backupPage(printer, device, ownPassword, page), ownFileName);
    });
}

int getRAMMP(int device, const char* password, char* buffer, int bufferSize)
{
    const Text ownPassword(password);
    logCall("getRAMMP ", "device ", device, "password ", ownPassword);
    return runQuery(
        [&](Device& printer) { return printer.query(reports::memoryImage(printer, device, ownPassword)); },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int saveRAMMP(int device, const char* password, const char* fileName)
{
    const Text ownPassword(password);
    const Text ownFileName(fileName);
    logCall("saveRAMMP", "device ", device, "password ", ownPassword);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::memoryImage(printer, device, ownPassword), ownFileName);
    });
}
