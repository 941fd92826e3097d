// "Device " beside "device ", the missing commas and what each line shows of a password differ from export to
// export; all of it is meant.
#include "commands/config/service.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int initFP(int device, const char* servicePassword)
{
    const Text ownServicePassword(servicePassword);
    logCall("initFP", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::initFiscalMemory(printer, device, ownServicePassword); });
}

int initFM(int device, const char* servicePassword)
{
    const Text ownServicePassword(servicePassword);
    logCall("initFM", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::initFiscalModule(printer, device, ownServicePassword); });
}

int initELJ(int device, const char* servicePassword)
{
    const Text ownServicePassword(servicePassword);
    logCall("initELJ", "Device ", device, ", servicePassword ", "*****");
    return runCommand([&](Device& printer) { config::initJournal(printer, device, ownServicePassword); });
}

int inspectionEnabled(int device, const char* servicePassword)
{
    const Text ownServicePassword(servicePassword);
    logCall("inspectionEnabled", "Device ", device, ", servicePassword ", "*****");
    return runCommand(
        [&](Device& printer) { config::enableInspection(printer, device, ownServicePassword); });
}

// Its password is left out of the line altogether, which is meant.
int inspectionE1(int device, const char* servicePassword, int deltaSI)
{
    const Text ownServicePassword(servicePassword);
    logCall("inspectionE1", "device ", device, "deltaSI ", deltaSI);
    return runCommand(
        [&](Device& printer) { config::inspectE1(printer, device, ownServicePassword, deltaSI); });
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
    const Text ownPassword(password);
    const Text ownDkp(dkp);
    logCall("fiscalization", "device ", device, ", password ", "*****", ", dkp ", ownDkp);
    return runCommand([&](Device& printer) { config::fiscalize(printer, device, ownPassword, ownDkp); });
}

int defiscalizationFM(int device, const char* servicePassword)
{
    const Text ownServicePassword(servicePassword);
    logCall("defiscalizationFM", "Device ", device, ", servicePassword ", "*****");
    return runCommand([&](Device& printer) { config::defiscalize(printer, device, ownServicePassword); });
}

int setDateTime(int device, const char* date)
{
    const Text ownDate(date);
    logCall("setDateTime", "device ", device, ", date ", ownDate);
    return runCommand([&](Device& printer) { config::setDateTime(printer, device, ownDate); });
}

int freeID(int device, TelvofmBool print, const char* id)
{
    const bool isPrinted = print != 0;
    const Text ownId(id);
    logCall("freeID", "device ", device, "print ", isPrinted, "freeID ", ownId);
    return runCommand([&](Device& printer) { config::setFreeId(printer, device, isPrinted, ownId); });
}

// These two alone in this family write their password in clear, which is meant.
int swReset(int device, const char* password)
{
    const Text ownPassword(password);
    logCall("swReset", "device ", device, "password ", ownPassword);
    return runCommand([&](Device& printer) { config::resetSoftware(printer, device, ownPassword); });
}

int testTelvoFM(int device, const char* password, int targetDevice)
{
    const Text ownPassword(password);
    logCall("testTelvoFM", "device ", device, "password ", ownPassword, "device ", targetDevice);
    return runCommand(
        [&](Device& printer) { config::testDevice(printer, device, ownPassword, targetDevice); });
}

// The line is another word and shows no device, which is meant.
int clearErrorStates(int device)
{
    logCall("resetStates");
    return runCommand([&](Device& printer) { config::clearErrorStates(printer, device); });
}
