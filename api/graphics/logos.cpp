// The name labels stand without a blank, which is meant.
#include "graphics/logos.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"

#include <string>

using namespace telvofm;

namespace {

void logPlacement(std::string_view name, int device, const graphics::LogoPlacement& placement,
                  int printLogoAfterPrint)
{
    const auto& spacing = placement.leftSpacings;
    logCall(name, "device ", device, ", imageCount ", placement.imageCount, ", leftSpacing1 ", spacing[0],
            ", leftSpacing2 ", spacing[1], ", leftSpacing3 ", spacing[2], ", leftSpacing4 ", spacing[3],
            ", leftSpacing5 ", spacing[4], ", leftSpacing6 ", spacing[5], ", printLogoAfterPrint ",
            printLogoAfterPrint);
}

} // namespace

int prepareGraphicHeader(int imageIndex, const char* fileName)
{
    const Text ownFileName(fileName);
    logCall("prepareGraphicHeader", "imageIndex ", imageIndex, ", fileName ", ownFileName);
    return runCommand([&](Device& printer) { graphics::prepare(printer, imageIndex, ownFileName, false); });
}

int prepareGraphicHeader_inverse(int imageIndex, const char* fileName, int inverse)
{
    const Text ownFileName(fileName);
    logCall("prepareGraphicHeader_inverse", "imageIndex ", imageIndex, ", fileName ", ownFileName,
            ", inverse ", inverse);
    return runCommand(
        [&](Device& printer) { graphics::prepare(printer, imageIndex, ownFileName, inverse != 0); });
}

int loadGHMMC(int device, int imageNumber, int leftSpacing)
{
    logCall("loadGHMMC", "device ", device, ", imageNumber ", imageNumber, ", leftSpacing ", leftSpacing);
    return runCommand(
        [&](Device& printer) { graphics::loadRaster(printer, device, imageNumber, leftSpacing); });
}

int loadGHMMC1(int device, int imageNumber, int leftSpacing)
{
    logCall("loadGHMMC1", "device ", device, ", imageNumber ", imageNumber, ", leftSpacing ", leftSpacing);
    return runCommand(
        [&](Device& printer) { graphics::loadBands(printer, device, imageNumber, leftSpacing); });
}

int loadGHNV(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
             int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint)
{
    const graphics::LogoPlacement placement = {
        imageCount,
        {leftSpacing1, leftSpacing2, leftSpacing3, leftSpacing4, leftSpacing5, leftSpacing6},
        printLogoAfterPrint != 0};
    logPlacement("loadGHNV", device, placement, printLogoAfterPrint);
    return runCommand([&](Device& printer) { graphics::loadColumns(printer, device, placement); });
}

int loadGHNV2(int device, int imageCount, int leftSpacing1, int leftSpacing2, int leftSpacing3,
              int leftSpacing4, int leftSpacing5, int leftSpacing6, int printLogoAfterPrint)
{
    const graphics::LogoPlacement placement = {
        imageCount,
        {leftSpacing1, leftSpacing2, leftSpacing3, leftSpacing4, leftSpacing5, leftSpacing6},
        printLogoAfterPrint != 0};
    logPlacement("loadGHNV2", device, placement, printLogoAfterPrint);
    return runCommand([&](Device& printer) { graphics::loadSecondColumns(printer, device, placement); });
}

int loadRAMBitMap(int device, int leftSpacing, int printLogoAfterPrint)
{
    logCall("loadRAMBitMap", "device ", device, ", leftSpacing ", leftSpacing, ", printLogoAfterPrint ",
            printLogoAfterPrint);
    return runCommand([&](Device& printer) {
        graphics::loadMemoryBitmap(printer, device, leftSpacing, printLogoAfterPrint != 0);
    });
}

int printGraphic(int device, int printType, int graphicIndex, const void* imageData, int imageDataByteSize)
{
    const bool hasData = imageData != nullptr && imageDataByteSize > 0;
    // A copy, as of texts: the caller may change its own while the call waits.
    const std::string ownData(hasData ? static_cast<const char*>(imageData) : "",
                              hasData ? static_cast<std::size_t>(imageDataByteSize) : 0);
    logCall("printGraphic", "device ", device, ", printType ", printType, ", graphicIndex ", graphicIndex,
            ", imageDataByteSize ", imageDataByteSize);
    return runCommand(
        [&](Device& printer) { graphics::print(printer, device, printType, graphicIndex, ownData); });
}
