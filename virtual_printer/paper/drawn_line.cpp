#include "virtual_printer/paper/drawn_line.h"

#include "virtual_printer/paper/codes.h"
#include "virtual_printer/paper/layout.h"
#include "virtual_printer/paper/picture.h"
#include "virtual_printer/paper/text_lines.h"

#include <array>

namespace virtual_printer {
namespace {

// In the order of the kinds.
constexpr std::array<std::string_view, 23> lineKinds = {
    "heading",  "text",    "pair",        "rule",     "item",      "itemVoid",  "itemReturn", "itemNegative",
    "discount", "voucher", "downPayment", "subtotal", "total",     "payment",   "change",     "vatSum",
    "note",     "barCode", "qrCode",      "picture",  "notFiscal", "powerLost", "cut"};
static_assert(lineKinds.size() == static_cast<std::size_t>(Line::Kind::cut) + 1);

bool fits(const std::optional<Picture>& dots, const Settings& settings)
{
    return dots && dots->width <= settings.columns * dotsAcross;
}

// The first of the two that the paper has room for.
DrawnLine drawnCode(std::optional<Picture> dots, std::optional<Picture> smaller, const Line& line,
                    const Settings& settings)
{
    if (!fits(dots, settings)) {
        dots = std::move(smaller);
    }
    const auto columns = static_cast<std::size_t>(settings.columns);
    const std::string content = withoutControls(line.text);
    if (!fits(dots, settings)) {
        return {.text = broken("[" + content + "]", columns), .content = content};
    }
    DrawnLine drawn{.dots = std::move(dots), .content = content};
    if (line.kind == Line::Kind::barCode) {
        drawn.text = centred(content, columns);
    }
    return drawn;
}

} // namespace

std::string_view nameOf(Line::Kind kind)
{
    return lineKinds.at(static_cast<std::size_t>(kind));
}

DrawnLine draw(const Line& line, const Settings& settings)
{
    if (line.kind == Line::Kind::qrCode) {
        QrForm smallest = settings.qrCode;
        smallest.moduleWidth = 2;
        return drawnCode(drawQrCode(line.text, settings.qrCode), drawQrCode(line.text, smallest), line,
                         settings);
    }
    if (line.kind == Line::Kind::barCode) {
        CodeForm narrowest = settings.barCode;
        narrowest.width = 1;
        return drawnCode(drawBarCode(line.number, line.text, settings.barCode),
                         drawBarCode(line.number, line.text, narrowest), line, settings);
    }
    if (line.kind == Line::Kind::picture) {
        if (auto picture = decodePictureOfAnyLayout(line.text)) {
            return {.dots = std::move(picture)};
        }
    }
    return {.text = layout(line, static_cast<std::size_t>(settings.columns))};
}

} // namespace virtual_printer
