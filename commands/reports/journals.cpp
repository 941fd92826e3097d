#include "commands/reports/journals.h"

namespace telvofm::reports {

Request wholeJournal(Device& printer, int address)
{
    return printer.request(address, Command::getJournal);
}

// The same command as the whole journal: the printer tells them apart by their fields.
Request savedJournal(Device& printer, int address, char journalType, int journalNumber)
{
    return printer.request(address, Command::getJournal).character(journalType).number(journalNumber);
}

Request extractD(Device& printer, int address, const DateRange& range)
{
    return printer.request(address, Command::getJournalStructD)
        .character(range.journalType)
        .text(range.from)
        .text(range.to);
}

Request extractD1(Device& printer, int address, const DateRange& range)
{
    return printer.request(address, Command::getJournalStructD1)
        .character(range.journalType)
        .text(range.from)
        .text(range.to);
}

Request extractZ(Device& printer, int address, const NumberRange& range)
{
    return printer.request(address, Command::getJournalStructZ).number(range.from).number(range.to);
}

Request extractZ1(Device& printer, int address, char documentType, const NumberRange& range)
{
    return printer.request(address, Command::getJournalStructZ1)
        .character(documentType)
        .number(range.from)
        .number(range.to);
}

Request extractU(Device& printer, int address, std::string_view paragonSn)
{
    return printer.request(address, Command::getJournalStructU).text(paragonSn);
}

} // namespace telvofm::reports
