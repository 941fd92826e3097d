#include "virtual_printer/storage.h"

namespace virtual_printer {

std::string Storage::settingsText() const
{
    std::string text;
    for (const auto& [name, value] : settings) {
        text.append(name).append("=").append(value).append("\r\n");
    }
    return text;
}

} // namespace virtual_printer
