// Pictures and codes whose data comes in blocks behind the request that announces them.
#include "virtual_printer/fiscal/decide.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/picture_line.h"
#include "virtual_printer/fiscal/printing.h"
#include "virtual_printer/fiscal/ranges.h"
#include "virtual_printer/paper/codes.h"
#include "virtual_printer/paper/picture.h"

#include <utility>

namespace virtual_printer {
namespace {

using telvofm::Command;

constexpr int mostPictures = 9;
constexpr int ramPicture = 9;
constexpr int widestPicture = 576;
constexpr int highestPicture = 2040; // the headers of columns and bands say no more
constexpr std::size_t largestUpload = 1'048'576;

// What the request has said, as `Upload::numbers` keeps it.
enum Said : std::size_t
{
    firstPicture, // the number of the first one
    pictures,     // how many come
    isPrinted     // whether they are also put on the paper
};

void expect(Draft& draft, Command command, std::vector<std::int64_t> numbers)
{
    draft.upload() = Upload{static_cast<unsigned char>(command), std::move(numbers), {}, 0};
}

Refusal announceOne(Draft& draft, const Fields& fields, Command command)
{
    const int number = fields.whole(0);
    const Refusal refusal =
        firstOf({checkRange(number, 1, mostPictures), checkRange(fields.whole(1), 0, widestPicture)});
    if (refusal == Refusal::none) {
        expect(draft, command, {number, 1, 1});
    }
    return refusal;
}

Refusal checkFlag(int flag)
{
    return checkRange(flag, 0, 1);
}

// Six numbers of two digits or more, without anything between them: which digit belongs to which, nothing
// tells.
Refusal checkSpacings(const std::string& spacings)
{
    constexpr std::size_t fewestDigits = 12;
    const bool areDigits = spacings.find_first_not_of("0123456789") == std::string::npos;
    return areDigits && spacings.size() >= fewestDigits ? Refusal::none : Refusal::valueOutOfRange;
}

PictureLayout layoutOf(Command command)
{
    switch (command) {
    case Command::loadGHMMC:
        return PictureLayout::raster;
    case Command::loadGHMMC1:
        return PictureLayout::bands;
    default:
        return PictureLayout::columns;
    }
}

bool fits(const std::optional<Picture>& picture)
{
    return picture && picture->width > 0 && picture->height > 0 && picture->width <= widestPicture &&
           picture->height <= highestPicture;
}

Refusal keepPicture(Draft& draft, const std::string& data)
{
    const Upload& upload = *draft.state().upload;
    auto picture = decodePicture(data, layoutOf(Command{upload.command}));
    if (!fits(picture)) {
        return Refusal::badPicture;
    }
    const int number = static_cast<int>(upload.numbers[firstPicture]) + upload.pictures;
    const bool isShown = upload.numbers[isPrinted] != 0;
    draft.pictures()[number] = *picture;
    if (++draft.upload().pictures == draft.upload().numbers[pictures]) {
        draft.upload() = Upload();
    }
    return isShown ? printHere(draft, pictureLine(number, *picture)) : Refusal::none;
}

// A picture of its own, which four zeros follow in an upload by themselves; or these alone, which ask for the
// picture that is kept.
Refusal printGraphic(Draft& draft, const std::string& data)
{
    constexpr std::size_t endSize = 4;
    const Upload& upload = *draft.state().upload;
    if (data != std::string(endSize, '\0')) {
        const auto picture = decodePictureOfAnyLayout(data);
        if (!fits(picture)) {
            return Refusal::badPicture;
        }
        ++draft.upload().pictures;
        return printHere(draft, pictureLine(0, *picture));
    }
    const int number = static_cast<int>(upload.numbers[firstPicture]);
    const bool hasOwn = upload.pictures > 0;
    draft.upload() = Upload();
    if (hasOwn) {
        return Refusal::none;
    }
    const auto kept = draft.state().pictures->find(number);
    return kept == draft.state().pictures->end() ? Refusal::noSuchPicture
                                                 : printHere(draft, pictureLine(number, kept->second));
}

Refusal printQrCode(Draft& draft, const std::string& text)
{
    draft.upload() = Upload();
    return drawQrCode(text, draft.state().settings->qrCode)
               ? printHere(draft, Line{.kind = Line::Kind::qrCode, .text = text})
               : Refusal::badCode;
}

} // namespace

Refusal announceRaster(Draft& draft, const Fields& fields)
{
    return announceOne(draft, fields, Command::loadGHMMC);
}

Refusal announceBands(Draft& draft, const Fields& fields)
{
    return announceOne(draft, fields, Command::loadGHMMC1);
}

Refusal announceColumns(Draft& draft, const Fields& fields)
{
    constexpr int mostAtOnce = 6;
    const Refusal refusal = firstOf({checkRange(fields.whole(0), 1, mostAtOnce), checkSpacings(fields.raw(1)),
                                     checkFlag(fields.whole(2))});
    if (refusal == Refusal::none) {
        draft.settings().printsLogo = fields.whole(2) == 1;
        expect(draft, Command::loadGHNVOrRAMBitMap, {1, fields.whole(0), 1});
    }
    return refusal;
}

Refusal announceRamPicture(Draft& draft, const Fields& fields)
{
    const Refusal refusal =
        firstOf({fields.raw(0).empty() ? Refusal::none : Refusal::badText,
                 checkRange(fields.whole(1), ramPicture, ramPicture),
                 checkRange(fields.whole(2), 0, widestPicture), checkFlag(fields.whole(3))});
    if (refusal == Refusal::none) {
        expect(draft, Command::loadGHNVOrRAMBitMap, {ramPicture, 1, fields.whole(3)});
    }
    return refusal;
}

Refusal announceGraphic(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    const Refusal refusal =
        firstOf({checkRange(fields.whole(0), 0, largestType), checkRange(fields.whole(1), 0, mostPictures)});
    if (refusal == Refusal::none) {
        expect(draft, Command::printGraphic, {fields.whole(1)});
    }
    return refusal;
}

Refusal announceQrCode(Draft& draft, const Fields& /*fields*/)
{
    expect(draft, Command::printQRCode, {});
    return Refusal::none;
}

Refusal takeBlock(Draft& draft, std::string_view data, bool isLast, CodePage codePage)
{
    constexpr std::size_t largestPiece = 256;
    Upload& upload = draft.upload();
    if (upload.command == 0) {
        return Refusal::unknownCommand;
    }
    const Command command{upload.command};
    if (upload.received.size() + data.size() > largestUpload) {
        return Refusal::uploadTooLarge;
    }
    upload.received += data;
    // The pictures of this command follow each other without an end between them. Their dots are a multiple
    // of eight bytes and their header is four, so none fills its last block: the block that is not full ends
    // it.
    const bool endsPicture = command == Command::loadGHNVOrRAMBitMap && data.size() < largestPiece;
    if (!isLast && !endsPicture) {
        return Refusal::none;
    }
    const std::string whole = std::exchange(upload.received, {});
    switch (command) {
    case Command::printQRCode:
        return printQrCode(draft, toUtf8(whole, codePage));
    case Command::printGraphic:
        return printGraphic(draft, whole);
    default:
        return keepPicture(draft, whole);
    }
}

} // namespace virtual_printer
