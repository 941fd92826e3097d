#include "commands/config/service.h"

namespace telvofm::config {

void initFiscalMemory(Device& printer, int address, std::string_view servicePassword)
{
    printer.send(printer.request(address, Command::initFP).text(servicePassword));
}

void initFiscalModule(Device& printer, int address, std::string_view servicePassword)
{
    printer.send(printer.request(address, Command::initFM).text(servicePassword));
}

void initJournal(Device& printer, int address, std::string_view servicePassword)
{
    printer.send(printer.request(address, Command::initELJ).text(servicePassword));
}

void enableInspection(Device& printer, int address, std::string_view servicePassword)
{
    printer.send(printer.request(address, Command::inspectionEnabled).text(servicePassword));
}

void inspectE1(Device& printer, int address, std::string_view servicePassword, int deltaSI)
{
    printer.send(printer.request(address, Command::inspectionE1).text(servicePassword).number(deltaSI));
}

void verifyJournalChecksum(Device& printer, int address, int closureNumber)
{
    printer.send(printer.request(address, Command::verifyCRCELJ).number(closureNumber));
}

void closeJournalCard(Device& printer, int address)
{
    printer.send(printer.request(address, Command::closeELJcard));
}

void fiscalize(Device& printer, int address, std::string_view password, std::string_view dkp)
{
    printer.send(printer.request(address, Command::fiscalization).text(password).text(dkp));
}

void defiscalize(Device& printer, int address, std::string_view servicePassword)
{
    printer.send(printer.request(address, Command::defiscalizationFM).text(servicePassword));
}

void setDateTime(Device& printer, int address, std::string_view date)
{
    printer.send(printer.request(address, Command::setDateTime).text(date));
}

// The identifier, and the passwords of the reset and of the test, go out byte for byte, unlike the other
// texts here; this is meant.
void setFreeId(Device& printer, int address, bool print, std::string_view id)
{
    printer.send(printer.request(address, Command::freeID).character(print ? '1' : '0').raw(id));
}

void resetSoftware(Device& printer, int address, std::string_view password)
{
    printer.send(printer.request(address, Command::swReset).raw(password));
}

void testDevice(Device& printer, int address, std::string_view password, int targetDevice)
{
    printer.send(printer.request(address, Command::testTelvoFM).raw(password).number(targetDevice));
}

void clearErrorStates(Device& printer, int address)
{
    printer.send(printer.request(address, Command::clearErrorStates));
}

} // namespace telvofm::config
