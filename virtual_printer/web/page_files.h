// The files of the page, as they are part of the program.
#pragma once

#include <span>
#include <string_view>

namespace virtual_printer {

struct PageFile
{
    std::string_view name; // "index.html"
    std::string_view content;
};

std::span<const PageFile> pageFiles();
// Another one whenever a file is another.
std::string_view sumOfPage();

} // namespace virtual_printer
