// The requests that announce pictures and codes, whose data comes in blocks behind them; upload_blocks.cpp
// takes these.
#include "virtual_printer/fiscal/uploads.h"

#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <utility>

namespace virtual_printer {
namespace {

using telvofm::Command;

constexpr int mostPictures = 9;
constexpr int ramPicture = 9;

void expect(Draft& draft, Command command, std::vector<std::int64_t> numbers)
{
    draft.upload() = Upload{.command = static_cast<unsigned char>(command), .numbers = std::move(numbers)};
}

Verdict announceOne(Draft& draft, const Fields& fields, Command command)
{
    const int number = fields.whole(0);
    Verdict verdict =
        firstOf({checkRange(fields, 0, 1, mostPictures), checkRange(fields, 1, 0, widestPicture)});
    if (verdict == Refusal::none) {
        expect(draft, command, {number, 1, 1});
    }
    return verdict;
}

// Six numbers of two digits or more, without anything between them: which digit belongs to which, nothing
// tells.
Verdict checkSpacings(const Fields& fields, std::size_t index)
{
    const std::string& spacings = fields.raw(index);
    constexpr std::size_t fewestDigits = 12;
    const bool areDigits = spacings.find_first_not_of("0123456789") == std::string::npos;
    return areDigits && spacings.size() >= fewestDigits
               ? Verdict()
               : fields.refused(Refusal::valueOutOfRange, index, "at least twelve digits");
}

} // namespace

Verdict announceRaster(Draft& draft, const Fields& fields)
{
    return announceOne(draft, fields, Command::loadGHMMC);
}

Verdict announceBands(Draft& draft, const Fields& fields)
{
    return announceOne(draft, fields, Command::loadGHMMC1);
}

Verdict announceColumns(Draft& draft, const Fields& fields)
{
    constexpr int mostAtOnce = 6;
    Verdict verdict = firstOf(
        {checkRange(fields, 0, 1, mostAtOnce), checkSpacings(fields, 1), checkRange(fields, 2, 0, 1)});
    if (verdict == Refusal::none) {
        draft.settings().printsLogo = fields.whole(2) == 1;
        expect(draft, Command::loadGHNVOrRAMBitMap, {1, fields.whole(0), 1});
    }
    return verdict;
}

Verdict announceRamPicture(Draft& draft, const Fields& fields)
{
    Verdict verdict =
        firstOf({fields.raw(0).empty() ? Verdict() : Verdict(Refusal::badText, "The first field is empty."),
                 checkRange(fields, 1, ramPicture, ramPicture), checkRange(fields, 2, 0, widestPicture),
                 checkRange(fields, 3, 0, 1)});
    if (verdict == Refusal::none) {
        expect(draft, Command::loadGHNVOrRAMBitMap, {ramPicture, 1, fields.whole(3)});
    }
    return verdict;
}

Verdict announceGraphic(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    Verdict verdict =
        firstOf({checkRange(fields, 0, 0, largestType), checkRange(fields, 1, 0, mostPictures)});
    if (verdict == Refusal::none) {
        expect(draft, Command::printGraphic, {fields.whole(1)});
    }
    return verdict;
}

Verdict announceQrCode(Draft& draft, const Fields& /*fields*/)
{
    expect(draft, Command::printQRCode, {});
    return Refusal::none;
}

} // namespace virtual_printer
