// In this family no comma stands before a label, and some lines bear another spelling or another name than
// their export; all of it is meant.
#include "commands/config/registration.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int setLocationGPS(int device, double vertX, double vertY)
{
    const Amount x = number(vertX);
    const Amount y = number(vertY);
    logCall("setLocationGPS", "device ", device, "vertX ", x, "vertY ", y);
    return runCommand([&](Device& printer) { config::setPosition(printer, device, x, y); });
}

int setLocationAddress(int device, const char* municipality, const char* street, const char* number,
                       const char* subNumber, const char* zip)
{
    const config::PostalAddress place{Text(municipality), Text(street), Text(number), Text(subNumber),
                                      Text(zip)};
    logCall("setLocationAddress", "device ", device, "municipality ", place.municipality, "street ",
            place.street, "number ", place.number, "subNumber ", place.subNumber, "zip ", place.zip);
    return runCommand([&](Device& printer) { config::setPostalAddress(printer, device, place); });
}

int setLocationOther(int device, const char* description)
{
    const Text ownDescription(description);
    logCall("setLocationOther", "device ", device, "description ", ownDescription);
    return runCommand([&](Device& printer) { config::setOtherLocation(printer, device, ownDescription); });
}

int setEmail(int device, const char* email)
{
    const Text ownEmail(email);
    logCall("setEmail", "device ", device, "email ", ownEmail);
    return runCommand([&](Device& printer) { config::setEmail(printer, device, ownEmail); });
}

int setSMTP(int device, const char* type, const char* ipAddress, int16_t port, const char* localDir)
{
    const config::MailServer server{firstCharacter(type), Text(ipAddress), port, Text(localDir)};
    logCall("setSMTP", "device ", device, "type ", server.type, "ipAddress ", server.ipAddress, "port ",
            server.port, "localDir ", server.localDirectory);
    return runCommand([&](Device& printer) { config::setMailServer(printer, device, server); });
}

// The password stands in the line in clear, which is meant.
int setAutKey(int device, const char* password, const char* filePath)
{
    const Text ownPassword(password);
    const Text ownFilePath(filePath);
    logCall("setAutKey", "device ", device, "password ", ownPassword, "filePath ", ownFilePath);
    return runCommand(
        [&](Device& printer) { config::setAuthenticationKey(printer, device, ownPassword, ownFilePath); });
}

int setPCHDU(int device, char interfaceType, const char* interfaceTitle)
{
    const Text ownInterfaceTitle(interfaceTitle);
    logCall("setPCHDU", "device ", device, "interfaceType ", interfaceType, "interfaceTitle ",
            ownInterfaceTitle);
    return runCommand(
        [&](Device& printer) { config::setChdu(printer, device, interfaceType, ownInterfaceTitle); });
}

int setPCHDU_str(int device, const char* interfaceType, const char* interfaceTitle)
{
    return setPCHDU(device, firstCharacter(interfaceType), interfaceTitle);
}

int setSubjectIDData(int device, const char* filePath)
{
    const Text ownFilePath(filePath);
    logCall("setSubjectIDData", "device ", device, "filePath ", ownFilePath);
    return runCommand(
        [&](Device& printer) { config::setSubjectIdentification(printer, device, ownFilePath); });
}

// "Unsended" in the lines of these two is meant.
int sendUnsentSFSpacket(int device)
{
    logCall("sendUnsendedSFSpacket", "device ", device);
    return runCommand([&](Device& printer) { config::sendUnsentPacket(printer, device); });
}

int printUnsentSFSpackets(int device)
{
    logCall("printUnsendedSFSpackets", "device ", device);
    return runCommand([&](Device& printer) { config::printUnsentPackets(printer, device); });
}

// The line shows no device, which is meant.
int getLastTransactionPackets(int device, int transactionCount)
{
    logCall("getLastTransactionPackets", "transactionCount ", transactionCount);
    return runCommand(
        [&](Device& printer) { config::requestLastTransactionPackets(printer, device, transactionCount); });
}
