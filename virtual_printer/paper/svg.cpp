#include "virtual_printer/paper/svg.h"

#include "virtual_printer/paper/dots_path.h"
#include "virtual_printer/paper/drawn_line.h"
#include "virtual_printer/paper/text_lines.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr int edge = 30; // of white paper, in dots
constexpr int baseline = 19;

std::string escaped(std::string_view text)
{
    std::string safe;
    for (const char character : text) {
        switch (character) {
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '&':
            safe += "&amp;";
            break;
        case '"':
            safe += "&quot;";
            break;
        default:
            safe += character;
        }
    }
    return safe;
}

class Drawing
{
public:
    explicit Drawing(const Settings& printerSettings)
        : settings(printerSettings), width(settings.columns * dotsAcross)
    {
    }

    void add(const Line& line)
    {
        if (line.kind == Line::Kind::cut) {
            cut();
            return;
        }
        const DrawnLine drawn = draw(line, settings);
        if (drawn.dots) {
            add(*drawn.dots);
        }
        const bool isBold = line.kind == Line::Kind::total || line.kind == Line::Kind::heading ||
                            line.kind == Line::Kind::notFiscal;
        for (const std::string& text : drawn.text) {
            add(text, isBold ? " font-weight=\"bold\"" : "");
        }
    }

    [[nodiscard]] std::string finished(std::string_view title)
    {
        for (const std::string& text :
             centred(noFiscalDocument, static_cast<std::size_t>(settings.columns))) {
            add(text, " fill=\"#666\"");
        }
        const std::string across = std::to_string(width + 2 * edge);
        const std::string down = std::to_string(y + edge);
        return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + across + R"(" height=")" + down +
               R"(" viewBox="0 0 )" + across + " " + down +
               R"(" font-family="'DejaVu Sans Mono', Consolas, Menlo, monospace" font-size="20" fill="#111">)" +
               "\n<title>" + escaped(title) +
               "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n" + content + "</svg>\n";
    }

private:
    // Each run between wider blanks stands at its own place: the grid does not depend on the font.
    void add(std::string_view text, std::string_view style)
    {
        std::size_t column = 0;
        while (!text.empty()) {
            const std::size_t blanks = std::min(text.find_first_not_of(' '), text.size());
            column += blanks;
            text.remove_prefix(blanks);
            const std::string_view run = text.substr(0, std::min(text.find("  "), text.size()));
            if (!run.empty()) {
                add(run, column, style);
            }
            column += widthOf(run);
            text.remove_prefix(run.size());
        }
        y += dotsDown;
    }

    void add(std::string_view run, std::size_t column, std::string_view style)
    {
        constexpr auto across = static_cast<std::size_t>(dotsAcross);
        content += "<text x=\"" + std::to_string(edge + column * across) + "\" y=\"" +
                   std::to_string(y + baseline) + "\" textLength=\"" + std::to_string(widthOf(run) * across) +
                   R"(" lengthAdjust="spacingAndGlyphs")" + std::string(style) + ">" + escaped(run) +
                   "</text>\n";
    }

    // In the middle; what is wider than the paper is made smaller.
    void add(const Picture& dots)
    {
        if (dots.width == 0) {
            return;
        }
        constexpr int gap = 8;
        const int shownWidth = std::min(dots.width, width);
        const int shownHeight = dots.height * shownWidth / dots.width;
        content += "<svg x=\"" + std::to_string(edge + (width - shownWidth) / 2) + "\" y=\"" +
                   std::to_string(y) + "\" width=\"" + std::to_string(shownWidth) + "\" height=\"" +
                   std::to_string(shownHeight) + "\" viewBox=\"0 0 " + std::to_string(dots.width) + " " +
                   std::to_string(dots.height) + R"(" shape-rendering="crispEdges"><path d=")" +
                   dotsPath(dots) + "\"/></svg>\n";
        y += shownHeight + gap;
    }

    void cut()
    {
        constexpr int above = 14;
        y += above;
        content += "<path d=\"M0 " + std::to_string(y) + "h" + std::to_string(width + 2 * edge) +
                   R"(" stroke="#999" stroke-width="2" stroke-dasharray="10 8"/>)" + "\n";
        y += above;
    }

    const Settings& settings;
    int width;
    int y = edge;
    std::string content;
};

} // namespace

std::string svgOf(const Document& document, const Settings& settings, std::string_view title)
{
    Drawing drawing(settings);
    for (const Line& line : document.lines) {
        drawing.add(line);
    }
    return drawing.finished(title);
}

} // namespace virtual_printer
