// The life of the printer as a fiscal device: initialising its memories, fiscalizing and defiscalizing it,
// inspections, its clock, resets and tests. The printer guards most of it with a password that it judges
// itself.
#pragma once

#include "device/device.h"

namespace telvofm::config {

void initFiscalMemory(Device& printer, int address, std::string_view servicePassword);
void initFiscalModule(Device& printer, int address, std::string_view servicePassword);
void initJournal(Device& printer, int address, std::string_view servicePassword);
void enableInspection(Device& printer, int address, std::string_view servicePassword);
void inspectE1(Device& printer, int address, std::string_view servicePassword, int deltaSI);
void verifyJournalChecksum(Device& printer, int address, int closureNumber);
void closeJournalCard(Device& printer, int address);
// `dkp` is the registration code of the cash register.
void fiscalize(Device& printer, int address, std::string_view password, std::string_view dkp);
void defiscalize(Device& printer, int address, std::string_view servicePassword);
void setDateTime(Device& printer, int address, std::string_view date);
void setFreeId(Device& printer, int address, bool print, std::string_view id);
void resetSoftware(Device& printer, int address, std::string_view password);
void testDevice(Device& printer, int address, std::string_view password, int targetDevice);
void clearErrorStates(Device& printer, int address);

} // namespace telvofm::config
