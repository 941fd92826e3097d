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

// Whole or not at all. Throws std::runtime_error with a sentence for the user.
void writeReadyFile(const std::filesystem::path& file, const std::vector<ListeningPrinter>& printers);

} // namespace virtual_printer
