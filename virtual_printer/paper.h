// The paper: lines of 40 columns, printed as UTF-8. The printer keeps its texts in the code page of its link.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace virtual_printer {

enum class CodePage
{
    windows1250,
    cp852
};

// Characters that the code page does not have become U+FFFD.
std::string toUtf8(std::string_view text, CodePage codePage);

class Paper
{
public:
    static constexpr std::size_t columns = 40;
    using Output = std::function<void(std::string_view line)>;

    // `output` gets each line in UTF-8, without a line end.
    Paper(CodePage texts, Output printed) : codePage(texts), output(std::move(printed)) {}

    // Breaks what is longer than a line.
    void print(std::string_view text);
    // `left` and `right` at the two edges; a left part that is too long gets lines of its own.
    void print(std::string_view left, std::string_view right);
    void center(std::string_view text);
    void rule(char character);
    // A line that is UTF-8 already; it is no text of the receipt and not copied.
    void printPicture(std::string_view line) { output(line); }

    // What has been printed since the last call, in the code page of the link, lines ended by 0D 0A.
    std::string takeCopy();

private:
    void printLine(std::string_view line);

    CodePage codePage;
    Output output;
    std::string copy;
};

} // namespace virtual_printer
