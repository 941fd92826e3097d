// "Device " beside "device ", the missing commas and what each line shows of a password differ from export to
// export; all of it is meant.
#include "commands/config/service.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int initFP(int device, const char* servicePassword)
{
    logCall("initFP", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::initFiscalMemory(printer, device, Text(servicePassword)); });
}

int initFM(int device, const char* servicePassword)
{
    logCall("initFM", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::initFiscalModule(printer, device, Text(servicePassword)); });
}

int initELJ(int device, const char* servicePassword)
{
    logCall("initELJ", "Device ", device, ", servicePassword ", "*****");
    return runCommand([&](Device& printer) { config::initJournal(printer, device, Text(servicePassword)); });
}

int inspectionEnabled(int device, const char* servicePassword)
{
    logCall("inspectionEnabled", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::enableInspection(printer, device, Text(servicePassword)); });
}

// Its password is left out of the line altogether, which is meant.
int inspectionE1(int device, const char* servicePassword, int deltaSI)
{
    logCall("inspectionE1", "device ", device, "deltaSI ", deltaSI);
    return runCommand(
        [&](Device& printer) { config::inspectE1(printer, device, Text(servicePassword), deltaSI); });
}

int verifyCRCELJ(int device, int closureNumber)
{
    logCall("verifyCRCELJ", "device ", device, "closureNumber ", closureNumber);
    return runCommand(
        [&](Device& printer) { config::verifyJournalChecksum(printer, device, closureNumber); });
}

int closeELJcard(int device)
{
    logCall("closeELJcard", "device ", device);
    return runCommand([&](Device& printer) { config::closeJournalCard(printer, device); });
}

int fiscalization(int device, const char* password, const char* dkp)
{
    logCall("fiscalization", "device ", device, ", password ", "*****", ", dkp ", dkp);
    return runCommand(
        [&](Device& printer) { config::fiscalize(printer, device, Text(password), Text(dkp)); });
}

int defiscalizationFM(int device, const char* servicePassword)
{
    logCall("defiscalizationFM", "Device ", device, ", servicePassword ", "*****");
    return runCommand([&](Device& printer) { config::defiscalize(printer, device, Text(servicePassword)); });
}

int setDateTime(int device, const char* date)
{
    logCall("setDateTime", "device ", device, ", date ", date);
    return runCommand([&](Device& printer) { config::setDateTime(printer, device, Text(date)); });
}

int freeID(int device, TelvofmBool print, const char* id)
{
    const bool isPrinted = print != 0;
    logCall("freeID", "device ", device, "print ", isPrinted, "freeID ", id);
    return runCommand([&](Device& printer) { config::setFreeId(printer, device, isPrinted, Text(id)); });
}

// These two alone in this family write their password in clear, which is meant.
int swReset(int device, const char* password)
{
    logCall("swReset", "device ", device, "password ", password);
    return runCommand([&](Device& printer) { config::resetSoftware(printer, device, Text(password)); });
}

int testTelvoFM(int device, const char* password, int targetDevice)
{
    logCall("testTelvoFM", "device ", device, "password ", password, "device ", targetDevice);
    return runCommand(
        [&](Device& printer) { config::testDevice(printer, device, Text(password), targetDevice); });
}

// The line is another word and shows no device, which is meant.
int clearErrorStates(int device)
{
    logCall("resetStates");
    return runCommand([&](Device& printer) { config::clearErrorStates(printer, device); });
}
