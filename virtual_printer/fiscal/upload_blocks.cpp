// The blocks of an upload that was announced, and what becomes of them when they are whole.
#include "virtual_printer/fiscal/decide.h"
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/picture_line.h"
#include "virtual_printer/fiscal/printing.h"
#include "virtual_printer/fiscal/uploads.h"
#include "virtual_printer/paper/codes.h"
#include "virtual_printer/paper/picture.h"

#include <utility>

namespace virtual_printer {
namespace {

using telvofm::Command;

constexpr int highestPicture = 2040; // the headers of columns and bands say no more
constexpr std::size_t largestUpload = 1'048'576;

int numberSaid(const Upload& upload, Said what)
{
    return static_cast<int>(upload.numbers[static_cast<std::size_t>(what)]);
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

Verdict keepPicture(Draft& draft, const std::string& data)
{
    const Upload& upload = *draft.state().upload;
    auto picture = decodePicture(data, layoutOf(Command{upload.command}));
    if (!fits(picture)) {
        return Refusal::badPicture;
    }
    const int number = numberSaid(upload, Said::firstPicture) + upload.pictures;
    const bool isShown = numberSaid(upload, Said::isPrinted) != 0;
    draft.pictures()[number] = *picture;
    if (++draft.upload().pictures == numberSaid(upload, Said::pictures)) {
        draft.upload() = Upload();
    }
    return isShown ? printHere(draft, pictureLine(number, *picture)) : Refusal::none;
}

// A picture of its own, which four zeros follow in an upload by themselves; or these alone, which ask for the
// picture that is kept.
Verdict printGraphic(Draft& draft, const std::string& data)
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
    const int number = numberSaid(upload, Said::firstPicture);
    const bool hasOwn = upload.pictures > 0;
    draft.upload() = Upload();
    if (hasOwn) {
        return Refusal::none;
    }
    const auto kept = draft.state().pictures->find(number);
    return kept == draft.state().pictures->end() ? Refusal::noSuchPicture
                                                 : printHere(draft, pictureLine(number, kept->second));
}

Verdict printQrCode(Draft& draft, const std::string& text)
{
    draft.upload() = Upload();
    return drawQrCode(text, draft.state().settings->qrCode)
               ? printHere(draft, Line{.kind = Line::Kind::qrCode, .text = text})
               : Refusal::badCode;
}

} // namespace

Verdict takeBlock(Draft& draft, std::string_view data, bool isLast, CodePage codePage)
{
    constexpr std::size_t largestPiece = 256;
    Upload& upload = draft.upload();
    if (upload.command == 0) {
        return Refusal::unknownCommand;
    }
    const Command command{upload.command};
    upload.bytes += data.size(); // over all pictures of the upload
    if (upload.bytes > largestUpload) {
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
