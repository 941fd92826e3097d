#include "graphics/bitmap_reader.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace telvofm::graphics {

std::optional<PackedBitmap> loadBitmapFile(const std::string& fileName)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(fileName, failure)) {
        return std::nullopt; // a folder, a pipe or an endless device among them
    }
    std::ifstream file(fileName, std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
    return readBitmap(bytes);
}

} // namespace telvofm::graphics
