// Passwords, parameters, and the forms of display and paper.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr int largestParameter = 99;
constexpr int largestValue = 9999;

Verdict setNumbered(Draft& draft, std::map<int, int> Settings::*numbered, const Fields& fields)
{
    Verdict verdict = firstOf({checkRange(fields, 1, 0, largestParameter, Refusal::unknownSetting),
                               checkRange(fields, 2, 0, largestValue)});
    if (verdict == Refusal::none) {
        (draft.settings().*numbered)[fields.whole(1)] = fields.whole(2);
    }
    return verdict;
}

} // namespace

// Which of the two passwords it sets is told by the old one.
Verdict setPassword(Draft& draft, const Fields& fields)
{
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longest = 16;
    const Settings& settings = *draft.state().settings;
    const bool isUsers = fields.raw(0) == settings.password;
    const bool isService = fields.raw(0) == settings.servicePassword;
    // Blanks at its end are a part of it.
    const bool isLongEnough = checkLength(fields.raw(1), shortest, longest) == Refusal::none;
    Verdict verdict =
        firstOf({isUsers || isService ? Refusal::none : Refusal::wrongPassword,
                 isLongEnough ? Verdict() : fields.refused(Refusal::badText, 1, "4 to 16 characters")});
    if (verdict == Refusal::none) {
        Settings& changed = draft.settings();
        (isUsers ? changed.password : changed.servicePassword) = fields.raw(1);
    }
    return verdict;
}

Verdict setPrinterType(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    Verdict verdict = firstOf({checkRange(fields, 1, 0, largestType), checkRange(fields, 2, 0, largestType)});
    if (verdict == Refusal::none) {
        draft.settings().others["Printer type"] = fields.raw(1);
        draft.settings().others["Print format"] = fields.raw(2);
    }
    return verdict;
}

Verdict setParameter(Draft& draft, const Fields& fields)
{
    return setNumbered(draft, &Settings::parameters, fields);
}

Verdict setPrinterParameter(Draft& draft, const Fields& fields)
{
    return setNumbered(draft, &Settings::printerParameters, fields);
}

Verdict setEscapeSequence(Draft& draft, const Fields& fields)
{
    if (checkLength(fields.raw(0), 0, longestSettingText) != Refusal::none) {
        return fields.refused(Refusal::badText, 0, "at most 80 bytes");
    }
    draft.settings().others["Escape sequence"] = fields.raw(0);
    return {};
}

Verdict setDisplayForm(Draft& draft, const Fields& fields)
{
    constexpr int largestForm = 9;
    Verdict verdict = firstOf({checkRange(fields, 1, 0, largestForm), checkRange(fields, 2, 0, largestForm),
                               checkLength(fields, 3, 0, longestSettingText)});
    if (verdict == Refusal::none) {
        draft.settings().others["Display format"] =
            fields.raw(1) + " " + fields.raw(2) + " " + fields.text(3);
    }
    return verdict;
}

Verdict setBarCodeForm(Draft& draft, const Fields& fields)
{
    constexpr int largestPosition = 3; // none, above, below, both
    constexpr int largestFont = 1;
    constexpr int largestHeight = 255;
    constexpr int largestWidth = 6;
    const CodeForm form = {fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3)};
    Verdict verdict =
        firstOf({checkRange(fields, 0, 0, largestPosition), checkRange(fields, 1, 0, largestFont),
                 checkRange(fields, 2, 1, largestHeight), checkRange(fields, 3, 1, largestWidth)});
    if (verdict == Refusal::none) {
        draft.settings().barCode = form;
    }
    return verdict;
}

Verdict setQrForm(Draft& draft, const Fields& fields)
{
    constexpr int largestModel = 2;
    constexpr int largestModuleWidth = 16;
    constexpr int largestLevel = 3; // L, M, Q, H
    constexpr int largestMargin = 255;
    constexpr int largestViewMode = 1;
    const QrForm form = {fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3), fields.whole(4)};
    Verdict verdict =
        firstOf({checkRange(fields, 0, 1, largestModel), checkRange(fields, 1, 1, largestModuleWidth),
                 checkRange(fields, 2, 0, largestLevel), checkRange(fields, 3, 0, largestMargin),
                 checkRange(fields, 4, 0, largestViewMode)});
    if (verdict == Refusal::none) {
        draft.settings().qrCode = form;
    }
    return verdict;
}

Verdict setColumns(Draft& draft, const Fields& fields)
{
    constexpr int fewest = 32;
    constexpr int most = 48;
    Verdict verdict = checkRange(fields, 0, fewest, most);
    if (verdict == Refusal::none) {
        draft.settings().columns = fields.whole(0);
    }
    return verdict;
}

Verdict setSpeed(Draft& draft, const Fields& fields)
{
    constexpr std::array speeds = {9600, 19200, 38400, 57600, 115200};
    if (std::find(speeds.begin(), speeds.end(), fields.whole(0)) == speeds.end()) {
        return fields.refused(Refusal::valueOutOfRange, 0, "9600, 19200, 38400, 57600 or 115200");
    }
    draft.settings().others["Printer's speed"] = fields.raw(0);
    return Refusal::none;
}

Verdict setDeltaSi(Draft& draft, const Fields& fields)
{
    Verdict verdict = checkRange(fields, 1, -largestValue, largestValue);
    if (verdict == Refusal::none) {
        draft.settings().others["Delta"] = fields.raw(1);
    }
    return verdict;
}

} // namespace virtual_printer
