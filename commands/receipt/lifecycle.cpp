#include "commands/receipt/lifecycle.h"

namespace telvofm::receipt {

void begin(Device& printer, int address, int row, int saleType, int commType, int paragonType,
           int recapitulation, int graphicsHeader)
{
    printer.send(printer.request(address, Command::paragonBegin)
                     .number(row)
                     .number(saleType)
                     .number(commType)
                     .number(paragonType)
                     .number(recapitulation)
                     .number(graphicsHeader));
}

void end(Device& printer, int address, int row, int graphicsHeader)
{
    printer.send(printer.request(address, Command::paragonEnd).number(row).number(graphicsHeader));
}

void beginSellingDay(Device& printer, int address, int saleMode)
{
    printer.send(printer.request(address, Command::sellingDayBegin).number(saleMode));
}

void destroy(Device& printer, int address, int row, std::string_view description)
{
    printer.send(printer.request(address, Command::destroyParagon).number(row).text(description));
}

void repeat(Device& printer, int address)
{
    printer.send(printer.request(address, Command::repeatParagon));
}

void cancelPrintJob(Device& printer, int address)
{
    printer.send(printer.request(address, Command::printJobCancel));
}

void confirmNote(Device& printer, int address)
{
    printer.send(printer.request(address, Command::confirmNote));
}

} // namespace telvofm::receipt
