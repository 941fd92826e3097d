#include "tools/nearest_name.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace telvofm::tools {
namespace {

char small(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// How many letters have to be put in, taken out or exchanged to make one of the other, whatever their case.
std::size_t distance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t exchanged = diagonal + (small(from[i - 1]) == small(to[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, exchanged});
        }
    }
    return row.back();
}

} // namespace

std::string_view nearestName(std::string_view wrong, std::span<const std::string_view> names)
{
    const auto nearest = std::min_element(
        names.begin(), names.end(), [&](auto a, auto b) { return distance(wrong, a) < distance(wrong, b); });
    const std::size_t limit = wrong.size() / 3 + 1;
    return nearest == names.end() || distance(wrong, *nearest) > limit ? std::string_view{} : *nearest;
}

} // namespace telvofm::tools
