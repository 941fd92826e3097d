// Tells whoever has started the printers where they listen: a JSON file that appears when they do.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace virtual_printer {

struct ListeningPrinter
{
    std::string name;
    std::string address; // as a till takes it
};

// Takes away that of an earlier start, so that nobody takes it for ours.
void forgetReadyFile(const std::filesystem::path& file);

// Whole or not at all; with the addresses of the control interface and of the page where they are not empty.
// Throws std::runtime_error with a sentence for the user.
void writeReadyFile(const std::filesystem::path& file, const std::vector<ListeningPrinter>& printers,
                    const std::string& control, const std::string& web);

} // namespace virtual_printer
