#include "graphics/logos.h"

#include "graphics/logo_layouts.h"

#include <utility>

namespace telvofm::graphics {
namespace {

using ImageTable = std::map<int, std::string>;

ImageTable tableOf(int imageIndex, std::string image)
{
    ImageTable table;
    table.emplace(imageIndex, std::move(image));
    return table;
}

std::string_view imageOf(const ImageTable& table, int index)
{
    const auto found = table.find(index);
    return found == table.end() ? std::string_view() : std::string_view(found->second);
}

char digit(bool flag)
{
    return flag ? '1' : '0';
}

// The six spacings in one field, each below ten with a "0" in front, negative ones too, which is meant.
std::string spacingsField(const std::array<int, 6>& spacings)
{
    constexpr int twoDigits = 10;
    std::string field;
    for (const int spacing : spacings) {
        field.append(spacing < twoDigits ? "0" : "").append(NumberText::whole(spacing).view());
    }
    return field;
}

void loadImages(Device& printer, int address, const LogoPlacement& placement, const ImageTable& table)
{
    printer.send(printer.request(address, Command::loadGHNVOrRAMBitMap)
                     .number(placement.imageCount)
                     .raw(spacingsField(placement.leftSpacings))
                     .character(digit(placement.printAfter)));
    // An index without a picture is an empty upload, which sends nothing: only the pictures that are there
    // matter.
    for (auto image = table.lower_bound(1); image != table.end() && image->first <= placement.imageCount;
         ++image) {
        printer.upload(image->second, image->first == placement.imageCount);
    }
}

} // namespace

void prepare(Device& printer, int imageIndex, std::string_view fileName, bool inverse)
{
    LogoLayouts layouts = logoLayouts(loadMonochrome(fileName), inverse);
    ImageTable secondColumns = tableOf(imageIndex, layouts.columns);
    ImageTable columns = tableOf(imageIndex, std::move(layouts.columns));
    ImageTable bands = tableOf(imageIndex, std::move(layouts.bands));
    ImageTable raster = tableOf(imageIndex, std::move(layouts.raster));
    // All memory is there by now: merging moves whole entries, cannot fail, and leaves a taken index as it
    // is.
    printer.secondColumnImages.merge(secondColumns);
    printer.columnImages.merge(columns);
    printer.bandImages.merge(bands);
    printer.rasterImages.merge(raster);
}

void loadRaster(Device& printer, int address, int imageNumber, int leftSpacing)
{
    printer.send(printer.request(address, Command::loadGHMMC).number(imageNumber).number(leftSpacing));
    printer.upload(imageOf(printer.rasterImages, imageNumber), true);
}

void loadBands(Device& printer, int address, int imageNumber, int leftSpacing)
{
    printer.send(printer.request(address, Command::loadGHMMC1).number(imageNumber).number(leftSpacing));
    printer.upload(imageOf(printer.bandImages, imageNumber), true);
}

void loadColumns(Device& printer, int address, const LogoPlacement& placement)
{
    constexpr int mostImages = 6;
    if (placement.imageCount <= mostImages) {
        loadImages(printer, address, placement, printer.columnImages);
    }
}

void loadSecondColumns(Device& printer, int address, const LogoPlacement& placement)
{
    loadImages(printer, address, placement, printer.secondColumnImages);
}

void loadMemoryBitmap(Device& printer, int address, int leftSpacing, bool printAfter)
{
    constexpr int memoryBitmapIndex = 9;
    printer.send(printer.request(address, Command::loadGHNVOrRAMBitMap)
                     .empty()
                     .number(memoryBitmapIndex)
                     .number(leftSpacing)
                     .character(digit(printAfter)));
    // Without a picture an empty one is made, and stays: a later one finds the index taken. This is meant.
    printer.upload(printer.secondColumnImages[memoryBitmapIndex], true);
}

void print(Device& printer, int address, int printType, int graphicIndex, std::string_view imageData)
{
    constexpr std::string_view end("\0\0\0\0", 4);
    printer.send(printer.request(address, Command::printGraphic).number(printType).number(graphicIndex));
    printer.upload(imageData, true);
    printer.upload(end, true);
}

} // namespace telvofm::graphics
