// The numbers that refusals have on the wire: the printer's own, or those of a team's real device.
#pragma once

#include "virtual_printer/fiscal/refusal.h"

#include <array>
#include <filesystem>

namespace virtual_printer {

class Codes
{
public:
    // Every refusal has its own number.
    Codes();
    // From a JSON object of names and numbers, as {"noSellingDay": 31}; what it does not name keeps its own.
    // Throws std::runtime_error with a sentence for the user.
    explicit Codes(const std::filesystem::path& file);

    [[nodiscard]] unsigned char of(Refusal refusal) const
    {
        return numbers[static_cast<unsigned char>(refusal)];
    }

private:
    std::array<unsigned char, 256> numbers{};
};

} // namespace virtual_printer
