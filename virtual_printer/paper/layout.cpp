#include "virtual_printer/paper/layout.h"

#include "virtual_printer/paper/codes.h"
#include "virtual_printer/paper/picture.h"
#include "virtual_printer/paper/text_lines.h"

#include <utility>

namespace virtual_printer {
namespace {

using Lines = std::vector<std::string>;

std::string sumUnder(const Line& line)
{
    return formatCents(line.sum) + (line.vat == 0 ? "" : std::string(" ") + line.vat);
}

Lines itemLines(const Line& line, std::string_view mark, std::size_t columns)
{
    Lines lines = broken(std::string(mark) + withoutControls(line.text), columns);
    const std::string calculation = "  " + formatThousandths(line.quantity) + " " +
                                    withoutControls(line.unit) + " x " + formatCents(line.unitPrice);
    for (std::string& part : spread(calculation, sumUnder(line), columns)) {
        lines.push_back(std::move(part));
    }
    return lines;
}

Lines vatLines(const Line& line, std::size_t columns)
{
    const std::string rate = std::string("VAT ") + line.vat + " " + std::to_string(line.number) + " %  " +
                             formatCents(line.base) + " + " + formatCents(line.sum - line.base);
    return spread(rate, formatCents(line.sum), columns);
}

Lines paymentLines(const Line& line, std::size_t columns)
{
    const std::string name = withoutControls(line.text);
    if (line.foreign == 0 || line.foreign == line.sum) {
        return spread(name, formatCents(line.sum), columns);
    }
    return spread(name + " " + formatCents(line.foreign), formatCents(line.sum), columns);
}

// A code that the columns cannot show, or a scanner could not read, is named instead.
Lines codeLines(const std::optional<Picture>& code, const Line& line, std::size_t columns)
{
    if (code && code->width <= static_cast<int>(columns)) {
        return pictureAsText(*code, columns);
    }
    return broken("[" + withoutControls(line.text) + "]", columns);
}

Lines barCodeLines(const Line& line, std::size_t columns)
{
    constexpr CodeForm oneDotAModule = {.textPosition = 0, .textFont = 0, .height = 8, .width = 1};
    Lines lines = codeLines(drawBarCode(line.number, line.text, oneDotAModule), line, columns);
    if (lines.size() > 1) {
        for (std::string& text : centred(withoutControls(line.text), columns)) {
            lines.push_back(std::move(text));
        }
    }
    return lines;
}

Lines qrCodeLines(const Line& line, std::size_t columns)
{
    QrForm oneDotAModule;
    oneDotAModule.moduleWidth = 1;
    return codeLines(drawQrCode(line.text, oneDotAModule), line, columns);
}

std::string joined(const std::vector<Line>& lines, std::size_t columns)
{
    std::string text;
    for (const Line& line : lines) {
        for (const std::string& printed : layout(line, columns)) {
            text.append(printed).append("\r\n");
        }
    }
    return text;
}

Line pair(std::string left, std::string right)
{
    return {.kind = Line::Kind::pair, .text = std::move(left), .right = std::move(right)};
}

} // namespace

std::vector<std::string> layout(const Line& line, std::size_t columns)
{
    const std::string text = withoutControls(line.text);
    switch (line.kind) {
    case Line::Kind::heading:
        return centred(text, columns);
    case Line::Kind::text:
        return broken(text, columns);
    case Line::Kind::pair:
    case Line::Kind::note:
        return spread(text, withoutControls(line.right), columns);
    case Line::Kind::rule:
        return {std::string(columns, text.empty() ? '-' : text.front())};
    case Line::Kind::item:
        return itemLines(line, "", columns);
    case Line::Kind::itemVoid:
        return itemLines(line, "VOID ", columns);
    case Line::Kind::itemReturn:
        return itemLines(line, "RETURN " + withoutControls(line.right) + " ", columns);
    case Line::Kind::itemNegative:
        return itemLines(line, "NEGATIVE ", columns);
    case Line::Kind::discount:
    case Line::Kind::downPayment:
    case Line::Kind::subtotal:
    case Line::Kind::total:
    case Line::Kind::change:
        return spread(text, sumUnder(line), columns);
    case Line::Kind::voucher:
        return spread(text + (line.right.empty() ? "" : " " + withoutControls(line.right)), sumUnder(line),
                      columns);
    case Line::Kind::payment:
        return paymentLines(line, columns);
    case Line::Kind::vatSum:
        return vatLines(line, columns);
    case Line::Kind::barCode:
        return barCodeLines(line, columns);
    case Line::Kind::qrCode:
        return qrCodeLines(line, columns);
    case Line::Kind::picture:
        if (const auto picture = decodePictureOfAnyLayout(line.text)) {
            return pictureAsText(*picture, columns);
        }
        return broken("[picture of " + std::to_string(line.text.size()) + " bytes]", columns);
    case Line::Kind::notFiscal:
        return centred(text.empty() ? "NOT A FISCAL DOCUMENT" : text, columns);
    case Line::Kind::powerLost:
        return centred("POWER LOST", columns);
    case Line::Kind::cut:
        break; // nothing that could be read: the rule in front of it ends the text
    }
    return {};
}

std::string textOf(const Document& document, std::size_t columns)
{
    return joined(document.lines, columns);
}

std::vector<Line> linesOf(const Sums& sums, const ByPayment& drawer, const PaymentNames& names)
{
    std::vector<Line> lines;
    for (const auto& [vat, sum] : sums.byVat) {
        lines.push_back(pair(std::string("VAT ") + vat, formatCents(sum)));
    }
    for (const auto& [payment, sum] : sums.byPayment) {
        const auto name = names.find(payment);
        lines.push_back(pair("Payment " + (name == names.end() ? std::to_string(payment) : name->second),
                             formatCents(sum)));
    }
    lines.push_back(pair("Receipts", std::to_string(sums.receipts)));
    lines.push_back(pair("Cancelled receipts", std::to_string(sums.cancelled)));
    lines.push_back(pair("Discounts EUR", formatCents(sums.discounts)));
    lines.push_back(pair("Returns EUR", formatCents(sums.returns)));
    Cents inDrawer = 0;
    for (const auto& [payment, sum] : drawer) {
        inDrawer += sum;
    }
    lines.push_back(pair("Drawer EUR", formatCents(inDrawer)));
    lines.push_back(pair("Turnover EUR", formatCents(sums.turnover())));
    return lines;
}

std::vector<Line> linesOf(const Closure& closure)
{
    std::vector<Line> lines = {pair("Closure " + std::to_string(closure.number), onPaper(closure.moment))};
    for (Line& line : linesOf(closure.sums, closure.drawer, closure.paymentNames)) {
        lines.push_back(std::move(line));
    }
    return lines;
}

std::string textOf(const Closure& closure, std::size_t columns)
{
    return joined(linesOf(closure), columns);
}

} // namespace virtual_printer
