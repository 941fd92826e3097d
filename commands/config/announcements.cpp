#include "commands/config/announcements.h"

namespace telvofm::config {

void printAnnouncement(Device& printer, int address, int rowNumber, std::string_view text)
{
    printer.send(printer.request(address, Command::printAnnouncement).number(rowNumber).text(text));
}

void printAnnouncementNF(Device& printer, int address, int rowNumber, std::string_view text)
{
    printer.send(printer.request(address, Command::printAnnouncementNF).number(rowNumber).text(text));
}

void printDisplay(Device& printer, int address, int displayType, std::string_view escapeSequence,
                  std::string_view text)
{
    printer.send(
        printer.request(address, Command::printDisplay).number(displayType).text(escapeSequence).text(text));
}

void clearDisplay(Device& printer, int address, int displayType, std::string_view escapeSequence)
{
    printer.send(printer.request(address, Command::clearDisplay).number(displayType).text(escapeSequence));
}

void setDisplay(Device& printer, int address, std::string_view password, const DisplaySettings& settings)
{
    printer.send(printer.request(address, Command::setDispF)
                     .text(password)
                     .number(settings.dispF)
                     .number(settings.dispT)
                     .text(settings.parameter));
}

void printBarCode(Device& printer, int address, int codeType, std::string_view code)
{
    printer.send(printer.request(address, Command::printBC).number(codeType).text(code));
}

void setBarCode(Device& printer, int address, const BarCodeSettings& settings)
{
    printer.send(printer.request(address, Command::setBCparm)
                     .number(settings.textPosition)
                     .number(settings.textFont)
                     .number(settings.height)
                     .number(settings.width));
}

void setQrCode(Device& printer, int address, const QrCodeSettings& settings)
{
    printer.send(printer.request(address, Command::setQRparm)
                     .number(settings.model)
                     .number(settings.moduleWidth)
                     .number(settings.errorCorrectionLevel)
                     .number(settings.leftMargin)
                     .number(settings.viewMode));
}

void printQrCode(Device& printer, int address, std::string_view text)
{
    printer.send(printer.request(address, Command::printQRCode));
    printer.upload(printer.converted(text), true);
}

void setColumns(Device& printer, int address, int width)
{
    printer.send(printer.request(address, Command::setPRNcolumns).number(width));
}

void setPrinterParameter(Device& printer, int address, std::string_view password, int type, int value)
{
    printer.send(printer.request(address, Command::setPParameter).text(password).number(type).number(value));
}

void setPrinterBaud(Device& printer, int address, int baud)
{
    printer.send(printer.request(address, Command::setPRNBd).number(baud));
}

void setDeltaSI(Device& printer, int address, std::string_view servicePassword, int deltaSI)
{
    printer.send(printer.request(address, Command::setDeltaSI).text(servicePassword).number(deltaSI));
}

} // namespace telvofm::config
