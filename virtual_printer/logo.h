// Pictures as tills upload them: the layouts of the printer's language taken apart into dots again.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

struct Logo
{
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<bool> dots; // row by row from the top

    [[nodiscard]] bool at(std::size_t x, std::size_t y) const
    {
        return x < width && y < height && dots[y * width + x];
    }
};

enum class LogoLayout
{
    raster,
    bands,
    columns
};

// Nothing when the data does not fit its own header. The header has only the low bytes of the sizes: what it
// leaves open is taken from the length of the data.
std::optional<Logo> decodeLogo(std::string_view data, LogoLayout layout);

// Lines of at most `columns` block characters in UTF-8, two rows of dots a line; larger pictures are made
// smaller.
std::vector<std::string> logoAsText(const Logo& logo, std::size_t columns);

// Returns whether the file could be written.
bool writeLogoAsPng(const Logo& logo, const std::string& fileName);

} // namespace virtual_printer
