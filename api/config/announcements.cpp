// Some labels are led by a comma and some are not, which is meant.
#include "commands/config/announcements.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

using namespace telvofm;

int printAnnouncement(int device, int rowNumber, const char* text)
{
    const Text ownText(text);
    logCall("printAnnouncement", "device ", device, ", rowNumber ", rowNumber, ", text ", ownText);
    return runCommand(
        [&](Device& printer) { config::printAnnouncement(printer, device, rowNumber, ownText); });
}

int printAnnouncementNF(int device, int rowNumber, const char* text)
{
    const Text ownText(text);
    logCall("printAnnouncementNF", "device ", device, ", rowNumber ", rowNumber, ", text ", ownText);
    return runCommand(
        [&](Device& printer) { config::printAnnouncementNF(printer, device, rowNumber, ownText); });
}

int printDisplay(int device, int displayType, const char* escSequence, const char* text)
{
    const Text ownEscSequence(escSequence);
    const Text ownText(text);
    logCall("printDisplay", "device ", device, ", displayType ", displayType, ", escSequence ",
            ownEscSequence, ", text ", ownText);
    return runCommand([&](Device& printer) {
        config::printDisplay(printer, device, displayType, ownEscSequence, ownText);
    });
}

int clearDisplay(int device, int displayType, const char* escSequence)
{
    const Text ownEscSequence(escSequence);
    logCall("clearDisplay", "device ", device, ", displayType ", displayType, ", escSequence ",
            ownEscSequence);
    return runCommand(
        [&](Device& printer) { config::clearDisplay(printer, device, displayType, ownEscSequence); });
}

// The password is left out of the line, which is meant.
int setDispF(int device, const char* password, int dispF, int dispT, const char* parameter)
{
    const Text ownPassword(password);
    const config::DisplaySettings settings{dispF, dispT, Text(parameter)};
    logCall("setDispF", "device ", device, "dispF ", dispF, "dispT ", dispT, "parameter ",
            settings.parameter);
    return runCommand([&](Device& printer) { config::setDisplay(printer, device, ownPassword, settings); });
}

int printBC(int device, int codeType, const char* code)
{
    const Text ownCode(code);
    logCall("printBC", "device ", device, ", codeType ", codeType, ", code ", ownCode);
    return runCommand([&](Device& printer) { config::printBarCode(printer, device, codeType, ownCode); });
}

int setBCparm(int device, int textPosition, int textFont, int height, int width)
{
    logCall("setBCparm", "device ", device, ", textPosition ", textPosition, ", textFont ", textFont,
            ", height ", height, ", width ", width);
    return runCommand([&](Device& printer) {
        config::setBarCode(printer, device, {textPosition, textFont, height, width});
    });
}

int setQRparm(int device, int model, int moduleWidth, int errorCorrectionLevel, int leftMargin, int viewMode)
{
    logCall("setQRparm", "device ", device, "model ", model, "moduleWidth ", moduleWidth,
            "errorCorrectionLevel ", errorCorrectionLevel, "leftMargin ", leftMargin, "viewMode ", viewMode);
    return runCommand([&](Device& printer) {
        config::setQrCode(printer, device, {model, moduleWidth, errorCorrectionLevel, leftMargin, viewMode});
    });
}

int printQRCode(int device, const char* text)
{
    const Text ownText(text);
    logCall("printQRCode", "device ", device, "text ", ownText);
    return runCommand([&](Device& printer) { config::printQrCode(printer, device, ownText); });
}

int setPRNcolumns(int device, int width)
{
    logCall("setPRNcolumns", "device ", device, ", width ", width);
    return runCommand([&](Device& printer) { config::setColumns(printer, device, width); });
}

int setPParameter(int device, const char* password, int paramType, int value)
{
    const Text ownPassword(password);
    logCall("setPParameter", "device ", device, ", password ", "*****", ", paramType ", paramType, ", value ",
            value);
    return runCommand([&](Device& printer) {
        config::setPrinterParameter(printer, device, ownPassword, paramType, value);
    });
}

int setPRNBd(int device, int baud)
{
    logCall("setPRNBd", "device ", device, "baud ", baud);
    return runCommand([&](Device& printer) { config::setPrinterBaud(printer, device, baud); });
}

// Neither the password nor `deltaSI` is in the line, which is meant.
int setDeltaSI(int device, const char* servicePassword, int deltaSI)
{
    const Text ownServicePassword(servicePassword);
    logCall("setDeltaSI", "device ", device);
    return runCommand(
        [&](Device& printer) { config::setDeltaSI(printer, device, ownServicePassword, deltaSI); });
}
