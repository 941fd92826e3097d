// Reports and extracts that the printer prints itself: reports and journals by type, extracts of the journal
// and of the fiscal memory, and the yearly closure. Nothing comes back but the printer's acceptance. The
// journal's extracts are chosen as those that are read back (journals.h).
#pragma once

#include "commands/reports/journals.h"

namespace telvofm::reports {

void printReport(Device& printer, int address, char reportType, int reportNumber);
void printJournal(Device& printer, int address, char journalType, int journalNumber);
void printExtractD(Device& printer, int address, const DateRange& range);
void printExtractD1(Device& printer, int address, const DateRange& range);
void printExtractZ(Device& printer, int address, const NumberRange& range);
void printExtractZ1(Device& printer, int address, char documentType, const NumberRange& range);
void printExtractU(Device& printer, int address, std::string_view paragonSn);
void printYearlyClosure(Device& printer, int address, std::string_view password);
void printIntervalByDates(Device& printer, int address, int printType, std::string_view dateFrom,
                          std::string_view dateTo);
void printIntervalByNumbers(Device& printer, int address, int printType, const NumberRange& range);

} // namespace telvofm::reports
