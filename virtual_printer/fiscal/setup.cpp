// Passwords, parameters, and the forms of display and paper.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr int largestParameter = 99;
constexpr int largestValue = 9999;

Refusal setNumbered(Draft& draft, std::map<int, int> Settings::*numbered, const Fields& fields)
{
    const int number = fields.whole(1);
    const int value = fields.whole(2);
    const Refusal refusal =
        firstOf({number < 0 || number > largestParameter ? Refusal::unknownSetting : Refusal::none,
                 checkRange(value, 0, largestValue)});
    if (refusal == Refusal::none) {
        (draft.settings().*numbered)[number] = value;
    }
    return refusal;
}

} // namespace

// Which of the two passwords it sets is told by the old one.
Refusal setPassword(Draft& draft, const Fields& fields)
{
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longest = 16;
    const Settings& settings = *draft.state().settings;
    const bool isUsers = fields.raw(0) == settings.password;
    const bool isService = fields.raw(0) == settings.servicePassword;
    const Refusal refusal = firstOf({isUsers || isService ? Refusal::none : Refusal::wrongPassword,
                                     checkLength(fields.raw(1), shortest, longest)});
    if (refusal == Refusal::none) {
        Settings& changed = draft.settings();
        (isUsers ? changed.password : changed.servicePassword) = fields.raw(1);
    }
    return refusal;
}

Refusal setPrinterType(Draft& draft, const Fields& fields)
{
    constexpr int largestType = 9;
    const Refusal refusal =
        firstOf({checkRange(fields.whole(1), 0, largestType), checkRange(fields.whole(2), 0, largestType)});
    if (refusal == Refusal::none) {
        draft.settings().others["Printer type"] = fields.raw(1);
        draft.settings().others["Print format"] = fields.raw(2);
    }
    return refusal;
}

Refusal setParameter(Draft& draft, const Fields& fields)
{
    return setNumbered(draft, &Settings::parameters, fields);
}

Refusal setPrinterParameter(Draft& draft, const Fields& fields)
{
    return setNumbered(draft, &Settings::printerParameters, fields);
}

Refusal setEscapeSequence(Draft& draft, const Fields& fields)
{
    const Refusal refusal = checkLength(fields.raw(0), 0, longestSettingText);
    if (refusal == Refusal::none) {
        draft.settings().others["Escape sequence"] = fields.raw(0);
    }
    return refusal;
}

Refusal setDisplayForm(Draft& draft, const Fields& fields)
{
    constexpr int largestForm = 9;
    const Refusal refusal =
        firstOf({checkRange(fields.whole(1), 0, largestForm), checkRange(fields.whole(2), 0, largestForm),
                 checkLength(fields.text(3), 0, longestSettingText)});
    if (refusal == Refusal::none) {
        draft.settings().others["Display format"] =
            fields.raw(1) + " " + fields.raw(2) + " " + fields.text(3);
    }
    return refusal;
}

Refusal setBarCodeForm(Draft& draft, const Fields& fields)
{
    constexpr int largestPosition = 3; // none, above, below, both
    constexpr int largestFont = 1;
    constexpr int largestHeight = 255;
    constexpr int largestWidth = 6;
    const CodeForm form = {fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3)};
    const Refusal refusal =
        firstOf({checkRange(form.textPosition, 0, largestPosition), checkRange(form.textFont, 0, largestFont),
                 checkRange(form.height, 1, largestHeight), checkRange(form.width, 1, largestWidth)});
    if (refusal == Refusal::none) {
        draft.settings().barCode = form;
    }
    return refusal;
}

Refusal setQrForm(Draft& draft, const Fields& fields)
{
    constexpr int largestModel = 2;
    constexpr int largestModuleWidth = 16;
    constexpr int largestLevel = 3; // L, M, Q, H
    constexpr int largestMargin = 255;
    constexpr int largestViewMode = 1;
    const QrForm form = {fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3), fields.whole(4)};
    const Refusal refusal = firstOf(
        {checkRange(form.model, 1, largestModel), checkRange(form.moduleWidth, 1, largestModuleWidth),
         checkRange(form.errorCorrectionLevel, 0, largestLevel),
         checkRange(form.leftMargin, 0, largestMargin), checkRange(form.viewMode, 0, largestViewMode)});
    if (refusal == Refusal::none) {
        draft.settings().qrCode = form;
    }
    return refusal;
}

Refusal setColumns(Draft& draft, const Fields& fields)
{
    constexpr int fewest = 32;
    constexpr int most = 48;
    const Refusal refusal = checkRange(fields.whole(0), fewest, most);
    if (refusal == Refusal::none) {
        draft.settings().columns = fields.whole(0);
    }
    return refusal;
}

Refusal setSpeed(Draft& draft, const Fields& fields)
{
    constexpr std::array speeds = {9600, 19200, 38400, 57600, 115200};
    if (std::find(speeds.begin(), speeds.end(), fields.whole(0)) == speeds.end()) {
        return Refusal::valueOutOfRange;
    }
    draft.settings().others["Printer's speed"] = fields.raw(0);
    return Refusal::none;
}

Refusal setDeltaSi(Draft& draft, const Fields& fields)
{
    const Refusal refusal = checkRange(fields.whole(1), -largestValue, largestValue);
    if (refusal == Refusal::none) {
        draft.settings().others["Delta"] = fields.raw(1);
    }
    return refusal;
}

} // namespace virtual_printer
