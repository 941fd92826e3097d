#include "graphics/bitmap_reader.h"
#include "link/open_file.h"

#include <algorithm>
#include <filesystem>

namespace telvofm::graphics {
namespace {

// Reads on until `bytes` is `size` long, or the file ends.
void extend(std::vector<std::uint8_t>& bytes, std::uint64_t size, std::FILE* file)
{
    const std::size_t begin = bytes.size();
    bytes.resize(std::max<std::uint64_t>(begin, size));
    bytes.resize(begin + std::fread(bytes.data() + begin, 1, bytes.size() - begin, file));
}

} // namespace

std::optional<PackedBitmap> loadBitmapFile(const std::string& fileName)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(fileName, failure)) {
        return std::nullopt; // a folder, a pipe or an endless device among them
    }
    const OpenFile file(std::fopen(fileName.c_str(), "rb"));
    if (!file) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    extend(bytes, bitmapHeadSize, file.get());
    const auto end = endOfBitmap(bytes);
    const std::uintmax_t fileSize = std::filesystem::file_size(fileName, failure);
    if (!end || failure || *end > fileSize) {
        return std::nullopt;
    }
    extend(bytes, *end, file.get());
    return readBitmap(bytes);
}

} // namespace telvofm::graphics
