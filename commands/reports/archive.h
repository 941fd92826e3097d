// The journal archives that the printer keeps under a name: validating one, and printing from one what the
// printed reports print from the current journal. Unlike there no text is converted between code pages, which
// is meant.
#pragma once

#include "commands/reports/journals.h"

namespace telvofm::reports {

void validateArchive(Device& printer, int address, std::string_view archiveName);
// The journal type of these two is a text of any length, and stands where the third one names the archive;
// this is meant.
void printArchivedIntervalByDates(Device& printer, int address, int printType, std::string_view dateFrom,
                                  std::string_view dateTo, std::string_view journalType);
void printArchivedExtractU(Device& printer, int address, std::string_view paragonSn,
                           std::string_view journalType);
void printArchivedExtractD(Device& printer, int address, const DateRange& range,
                           std::string_view archiveName);

} // namespace telvofm::reports
