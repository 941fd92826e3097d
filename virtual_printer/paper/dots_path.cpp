#include "virtual_printer/paper/dots_path.h"

namespace virtual_printer {
namespace {

bool areSame(const Picture& picture, int row, int other)
{
    for (int x = 0; x < picture.width; ++x) {
        if (picture.at(x, row) != picture.at(x, other)) {
            return false;
        }
    }
    return true;
}

void addRow(std::string& path, const Picture& picture, int y, int height)
{
    for (int x = 0; x < picture.width; ++x) {
        const int start = x;
        while (picture.at(x, y)) {
            ++x;
        }
        if (const std::string width = std::to_string(x - start); x > start) {
            path.append("M").append(std::to_string(start)).append(" ").append(std::to_string(y));
            path.append("h").append(width).append("v").append(std::to_string(height));
            path.append("h-").append(width).append("z");
        }
    }
}

} // namespace

std::string dotsPath(const Picture& picture)
{
    std::string path;
    for (int y = 0; y < picture.height;) {
        int height = 1;
        while (y + height < picture.height && areSame(picture, y, y + height)) {
            ++height;
        }
        addRow(path, picture, y, height);
        y += height;
    }
    return path;
}

} // namespace virtual_printer
