// These exports write the password into the call log in clear, and the file name not at all; both are meant.
#include "commands/reports/backups.h"

#include "api/call_log.h"
#include "api/delivery.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int restoreBCKP(int device, const char* password)
{
    logCall("restoreBCKP", "device ", device, "password ", password);
    return runCommand([&](Device& printer) { reports::restoreBackup(printer, device, Text(password)); });
}

int getBCKP(int device, const char* password, int page, char* buffer, int bufferSize)
{
    logCall("getBCKP ", "device ", device, "password ", password, "page ", page);
    return runQuery(
        [&](Device& printer) {
            return printer.query(reports::backupPage(printer, device, Text(password), page));
        },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int saveBCKP(int device, const char* password, int page, const char* fileName)
{
    logCall("saveBCKP", "device ", device, "password ", password, "page ", page);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::backupPage(printer, device, Text(password), page), Text(fileName));
    });
}

int getRAMMP(int device, const char* password, char* buffer, int bufferSize)
{
    logCall("getRAMMP ", "device ", device, "password ", password);
    return runQuery(
        [&](Device& printer) { return printer.query(reports::memoryImage(printer, device, Text(password))); },
        [&](const std::string& reply) { copyExactly(reply, buffer, bufferSize); });
}

int saveRAMMP(int device, const char* password, const char* fileName)
{
    logCall("saveRAMMP", "device ", device, "password ", password);
    return runCommand([&](Device& printer) {
        printer.queryToFile(reports::memoryImage(printer, device, Text(password)), Text(fileName));
    });
}
