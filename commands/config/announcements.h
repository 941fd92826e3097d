// What appears outside a receipt, on paper or on the customer display, and the settings of the printer
// mechanism: bar codes and QR codes, columns, speed and display.
#pragma once

#include "device/device.h"

namespace telvofm::config {

struct BarCodeSettings
{
    int textPosition;
    int textFont;
    int height;
    int width;
};

struct QrCodeSettings
{
    int model;
    int moduleWidth;
    int errorCorrectionLevel;
    int leftMargin;
    int viewMode;
};

struct DisplaySettings
{
    int dispF;
    int dispT;
    Text parameter;
};

void printAnnouncement(Device& printer, int address, int rowNumber, std::string_view text);
// The printer decides what this variant leaves out.
void printAnnouncementNF(Device& printer, int address, int rowNumber, std::string_view text);
void printDisplay(Device& printer, int address, int displayType, std::string_view escapeSequence,
                  std::string_view text);
void clearDisplay(Device& printer, int address, int displayType, std::string_view escapeSequence);
void setDisplay(Device& printer, int address, std::string_view password, const DisplaySettings& settings);
void printBarCode(Device& printer, int address, int codeType, std::string_view code);
void setBarCode(Device& printer, int address, const BarCodeSettings& settings);
void setQrCode(Device& printer, int address, const QrCodeSettings& settings);
// Announces the code and then uploads its text. After a failed upload the printer has the announcement alone.
void printQrCode(Device& printer, int address, std::string_view text);
void setColumns(Device& printer, int address, int width);
void setPrinterParameter(Device& printer, int address, std::string_view password, int type, int value);
// The speed of the printer's own mechanism; the link keeps its speed.
void setPrinterBaud(Device& printer, int address, int baud);
void setDeltaSI(Device& printer, int address, std::string_view servicePassword, int deltaSI);

} // namespace telvofm::config
