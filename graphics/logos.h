// Logos in two stages: preparing converts a bitmap file into the printer's layouts and keeps them in the
// device object under an image index; loading sends a command and uploads the layout that it wants.
#pragma once

#include "device/device.h"

#include <array>

namespace telvofm::graphics {

// An index that is prepared already keeps its first picture. What fails leaves every table as it was.
void prepare(Device& printer, int imageIndex, std::string_view fileName, bool inverse);

struct LogoPlacement
{
    int imageCount;
    std::array<int, 6> leftSpacings;
    bool printAfter;
};

void loadRaster(Device& printer, int address, int imageNumber, int leftSpacing);
void loadBands(Device& printer, int address, int imageNumber, int leftSpacing);
// More than six images do nothing at all.
void loadColumns(Device& printer, int address, const LogoPlacement& placement);
// From the second table of columns, for any number of images.
void loadSecondColumns(Device& printer, int address, const LogoPlacement& placement);
// The picture that was prepared under index 9.
void loadMemoryBitmap(Device& printer, int address, int leftSpacing, bool printAfter);
void print(Device& printer, int address, int printType, int graphicIndex, std::string_view imageData);

} // namespace telvofm::graphics
