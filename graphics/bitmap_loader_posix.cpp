#include "graphics/bitmap_reader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace telvofm::graphics {
namespace {

// Reads on until `bytes` is `size` long, or the file ends.
void extend(std::vector<std::uint8_t>& bytes, std::uint64_t size, std::ifstream& file)
{
    const std::size_t begin = bytes.size();
    bytes.resize(std::max<std::uint64_t>(begin, size));
    file.read(reinterpret_cast<char*>(bytes.data() + begin),
              static_cast<std::streamsize>(bytes.size() - begin));
    bytes.resize(begin + static_cast<std::size_t>(file.gcount()));
}

} // namespace

std::optional<PackedBitmap> loadBitmapFile(const std::string& fileName)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(fileName, failure)) {
        return std::nullopt; // a folder, a pipe or an endless device among them
    }
    std::ifstream file(fileName, std::ios::binary);
    std::vector<std::uint8_t> bytes;
    extend(bytes, bitmapHeadSize, file);
    const auto end = endOfBitmap(bytes);
    const std::uintmax_t fileSize = std::filesystem::file_size(fileName, failure);
    if (!end || failure || *end > fileSize) {
        return std::nullopt;
    }
    extend(bytes, *end, file);
    return readBitmap(bytes);
}

} // namespace telvofm::graphics
