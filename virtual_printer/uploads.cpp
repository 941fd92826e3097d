#include "virtual_printer/uploads.h"

#include "device/command.h"
#include "virtual_printer/money.h"

namespace virtual_printer {
namespace {

using telvofm::Command;

int numberIn(const Request& request, std::size_t field)
{
    constexpr std::int64_t largest = 1'000'000;
    const auto value = field < request.fields.size() ? parseDecimal(request.fields[field], 0) : std::nullopt;
    return value && *value >= 0 && *value <= largest ? static_cast<int>(*value) : 0;
}

LogoLayout layoutOf(Command command)
{
    switch (command) {
    case Command::loadGHMMC:
        return LogoLayout::raster;
    case Command::loadGHMMC1:
        return LogoLayout::bands;
    default:
        return LogoLayout::columns;
    }
}

} // namespace

void Uploads::begin(const Request& request)
{
    announced = request;
    received.clear();
    picturesReceived = 0;
}

bool Uploads::areExpected() const
{
    switch (static_cast<Command>(announced.command)) {
    case Command::loadGHMMC:
    case Command::loadGHMMC1:
    case Command::loadGHNVOrRAMBitMap:
    case Command::printGraphic:
    case Command::printQRCode:
        return true;
    default:
        return false;
    }
}

void Uploads::take(const std::string& data, bool isLast)
{
    constexpr std::size_t largestPiece = 256;
    const auto command = static_cast<Command>(announced.command);
    received += data;
    // The logos of this command follow each other without an end between them. Their dots are a multiple of
    // eight bytes and their header is four, so none fills its last block: the block that is not full ends it.
    const bool endsLogo = command == Command::loadGHNVOrRAMBitMap && data.size() < largestPiece;
    if (!isLast && !endsLogo) {
        return;
    }
    const std::string whole = std::exchange(received, {});
    if (command == Command::printQRCode) {
        paper.print("[QR] " + whole);
    } else if (command == Command::printGraphic) {
        printGraphic(whole);
    } else {
        keepLogo(whole);
    }
    ++picturesReceived;
}

int Uploads::numberOfNextLogo() const
{
    const bool isOneOfMany = static_cast<Command>(announced.command) == Command::loadGHNVOrRAMBitMap;
    if (!isOneOfMany) {
        return numberIn(announced, 0);
    }
    const bool isForMemory =
        announced.fields.size() > 1 && announced.fields[0].empty(); // its number comes second
    return isForMemory ? numberIn(announced, 1) : picturesReceived + 1;
}

void Uploads::keepLogo(const std::string& data)
{
    const auto logo = decodeLogo(data, layoutOf(static_cast<Command>(announced.command)));
    if (!logo) {
        paper.print("[a picture that does not fit its header]");
        return;
    }
    logos[numberOfNextLogo()] = *logo;
    print(*logo);
    if (logoFolder.empty()) {
        return;
    }
    ++filesWritten;
    if (!writeLogoAsPng(*logo, logoFolder + "/logo-" + std::to_string(filesWritten) + ".png")) {
        paper.print("[the picture could not be written to its folder]");
    }
}

void Uploads::printGraphic(const std::string& data)
{
    constexpr std::size_t endSize = 4; // four zeros end the picture, in an upload of their own
    if (data != std::string(endSize, '\0')) {
        // Nothing tells the layout: the first one that the size of the data fits. Raster comes last because
        // every band picture of 64, 128 ... rows would fit it too.
        for (const LogoLayout layout : {LogoLayout::columns, LogoLayout::bands, LogoLayout::raster}) {
            if (const auto picture = decodeLogo(data, layout)) {
                print(*picture);
                return;
            }
        }
        paper.print("[picture data of " + std::to_string(data.size()) + " bytes]");
        return;
    }
    constexpr std::size_t graphicIndex = 1;
    const auto logo = logos.find(numberIn(announced, graphicIndex));
    if (picturesReceived == 0 && logo != logos.end()) {
        print(logo->second); // without data of its own it prints a logo that is kept
    }
}

void Uploads::print(const Logo& logo)
{
    for (const std::string& line : logoAsText(logo, Paper::columns)) {
        paper.printPicture(line);
    }
}

} // namespace virtual_printer
