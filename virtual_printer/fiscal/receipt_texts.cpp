// The texts that receipts carry in front of their lines and behind them.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

namespace virtual_printer {
namespace {

Verdict setText(Draft& draft, std::string Settings::*text, const Fields& fields)
{
    Verdict verdict = checkLength(fields, 0, 0, longestSettingText);
    if (verdict == Refusal::none) {
        draft.settings().*text = fields.text(0);
    }
    return verdict;
}

// Each call adds one; an empty text takes all away.
Verdict addLine(Draft& draft, std::vector<std::string> Settings::*lines, const Fields& fields)
{
    constexpr std::size_t mostLines = 10;
    std::string text = fields.text(0);
    if (text.empty()) {
        (draft.settings().*lines).clear();
        return Refusal::none;
    }
    const bool isFull = (draft.state().settings.get()->*lines).size() >= mostLines;
    Verdict verdict =
        firstOf({checkLength(fields, 0, 1, longestSettingText),
                 isFull ? Verdict(Refusal::valueOutOfRange,
                                  "There are ten lines, the most; an empty text takes them away.")
                        : Verdict()});
    if (verdict == Refusal::none) {
        (draft.settings().*lines).push_back(std::move(text));
    }
    return verdict;
}

} // namespace

Verdict setHeader(Draft& draft, const Fields& fields)
{
    constexpr int mostRows = 10;
    const int row = fields.whole(1);
    const std::string text = fields.text(2);
    Verdict verdict =
        firstOf({checkRange(fields, 1, 1, mostRows), checkLength(fields, 2, 0, longestSettingText)});
    if (verdict != Refusal::none) {
        return verdict;
    }
    if (text.empty()) {
        draft.settings().header.erase(row);
    } else {
        draft.settings().header[row] = text;
    }
    return Refusal::none;
}

Verdict setAdditionalHeader(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::additionalHeader, fields);
}

Verdict setAdditionalFooter(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::additionalFooter, fields);
}

Verdict setSuperFooter(Draft& draft, const Fields& fields)
{
    return setText(draft, &Settings::superFooter, fields);
}

Verdict setPreline(Draft& draft, const Fields& fields)
{
    return addLine(draft, &Settings::prelines, fields);
}

Verdict setPostline(Draft& draft, const Fields& fields)
{
    return addLine(draft, &Settings::postlines, fields);
}

} // namespace virtual_printer
