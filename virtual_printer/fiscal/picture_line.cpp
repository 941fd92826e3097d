#include "virtual_printer/fiscal/picture_line.h"

namespace virtual_printer {

Line pictureLine(int number, const Picture& picture)
{
    constexpr int byteDots = 8;
    const int across = (picture.width + byteDots - 1) / byteDots;
    const int down = (picture.height + byteDots - 1) / byteDots;
    std::string upload = {static_cast<char>(across), '\0', static_cast<char>(down), '\0'};
    for (int x = 0; x < across * byteDots; ++x) {
        for (int byte = 0; byte < down; ++byte) {
            unsigned dots = 0;
            for (int dot = 0; dot < byteDots; ++dot) {
                dots = dots << 1U | (picture.at(x, byte * byteDots + dot) ? 1U : 0U);
            }
            upload.push_back(static_cast<char>(dots));
        }
    }
    return {.kind = Line::Kind::picture, .text = std::move(upload), .number = number};
}

} // namespace virtual_printer
