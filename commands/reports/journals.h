// Reading the electronic journal, whole or in extracts: D and D1 by journal type and dates, Z by numbers, Z1
// by document type and numbers, U by receipt number. An extract is chosen by its request; what becomes of the
// reply (returned, or put into a file after or while it is read) is chosen by the function.
#pragma once

#include "device/device.h"

namespace telvofm::reports {

struct DateRange
{
    char journalType;
    Text from;
    Text to;
};

struct NumberRange
{
    int from;
    int to;
};

Request wholeJournal(Device& printer, int address);
Request savedJournal(Device& printer, int address, char journalType, int journalNumber);
Request extractD(Device& printer, int address, const DateRange& range);
Request extractD1(Device& printer, int address, const DateRange& range);
Request extractZ(Device& printer, int address, const NumberRange& range);
Request extractZ1(Device& printer, int address, char documentType, const NumberRange& range);
Request extractU(Device& printer, int address, std::string_view paragonSn);

} // namespace telvofm::reports
