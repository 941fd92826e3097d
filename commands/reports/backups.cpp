#include "commands/reports/backups.h"

namespace telvofm::reports {

void restoreBackup(Device& printer, int address, std::string_view password)
{
    printer.send(printer.request(address, Command::restoreBCKP).raw(password));
}

Request backupPage(Device& printer, int address, std::string_view password, int page)
{
    return printer.request(address, Command::getBCKP).raw(password).number(page);
}

Request memoryImage(Device& printer, int address, std::string_view password)
{
    return printer.request(address, Command::getRAMMP).raw(password);
}

} // namespace telvofm::reports
