// The texts that receipts carry in front of their lines and behind them.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

namespace virtual_printer {
namespace {

Refusal setText(Draft& draft, std::string Settings::*text, const Fields& fields)
{
    const Refusal refusal = checkLength(fields.text(0), 0, longestSettingText);
    if (refusal == Refusal::none) {
        draft.settings().*text = fields.text(0);
    }
    return refusal;
}

// Each call adds one; an empty text takes all away.
Refusal addLine(Draft& draft, std::vector<std::string> Settings::*lines, const Fields& fields)
{
    constexpr std::size_t mostLines = 10;
    std::string text = fields.text(0);
    if (text.empty()) {
        (draft.settings().*lines).clear();
        return Refusal::none;
    }
    const bool isFull = (draft.state().settings.get()->*lines).size() >= mostLines;
    const Refusal refusal = firstOf(
        {checkLength(text, 1, longestSettingText), isFull ? Refusal::valueOutOfRange : Refusal::none});
    if (refusal == Refusal::none) {
        (draft.settings().*lines).push_back(std::move(text));
    }
    return refusal;
}

} // namespace

Refusal setHeader(Draft& draft, const Fields& fields)
{
    constexpr int mostRows = 10;
    const int row = fields.whole(1);
    const std::string text = fields.text(2);
    const Refusal refusal = firstOf({checkRange(row, 1, mostRows), checkLength(text, 0, longestSettingText)});
    if (refusal != Refusal::none) {
        return refusal;
    }
    if (text.empty()) {
        draft.settings().header.erase(row);
    } else {
        draft.settings().header[row] = text;
    }
    return Refusal::none;
}

Refusal setAdditionalHeader(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::additionalHeader, fields);
}

Refusal setAdditionalFooter(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::additionalFooter, fields);
}

Refusal setSuperFooter(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::superFooter, fields);
}

Refusal setPreline(Draft& draft, const Fields& fields)
{
    return addLine(draft, &Settings::prelines, fields);
}

Refusal setPostline(Draft& draft, const Fields& fields)
{
    return addLine(draft, &Settings::postlines, fields);
}

} // namespace virtual_printer
