#include "tools/library_file.h"

#include "tools/shared_library.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace telvofm::tools {
namespace {

constexpr std::size_t headSize = 4096;

// A number of so many bytes, the least one first; 0 beyond the end.
std::uint64_t numberAt(std::string_view head, std::size_t place, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;) {
        const std::uint64_t byte = place + i < head.size() ? static_cast<unsigned char>(head[place + i]) : 0;
        number = number * 256 + byte;
    }
    return number;
}

// Of Linux: its fifth byte says how large addresses are.
bool isElf(std::string_view head)
{
    return head.starts_with("\x7F"
                            "ELF") &&
           head.size() > 4;
}

// Whether each segment of a library for Linux ends within the file.
bool isWholeElf(std::string_view head, std::uint64_t fileSize)
{
    const std::uint64_t table = numberAt(head, 0x20, 8);
    const std::uint64_t entrySize = numberAt(head, 0x36, 2);
    const std::uint64_t count = numberAt(head, 0x38, 2);
    bool isWhole = fileSize >= headSize;
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint64_t entry = table + i * entrySize;
        const std::uint64_t end = numberAt(head, entry + 0x08, 8) + numberAt(head, entry + 0x20, 8);
        isWhole = isWhole && end <= fileSize;
    }
    return isWhole;
}

// Of Windows: behind the offset at 3C stand a mark and the kind of processor.
std::string_view processorOfDll(std::string_view head)
{
    constexpr std::size_t offsetPlace = 0x3C;
    if (!head.starts_with("MZ") || head.size() < offsetPlace + 2) {
        return {};
    }
    const std::size_t mark = numberAt(head, offsetPlace, 2);
    const bool isDll = mark < head.size() && head.substr(mark).starts_with(std::string_view("PE\0\0", 4));
    return isDll ? head.substr(mark).substr(4, 2) : std::string_view{};
}

} // namespace

LibraryFile kindOfLibrary(const std::filesystem::path& file)
{
    std::array<char, headSize> bytes{};
    std::ifstream stream(file, std::ios::binary);
    stream.read(bytes.data(), bytes.size());
    const std::string_view head(bytes.data(), static_cast<std::size_t>(stream.gcount()));
    const bool isLinux = std::string_view(libraryNames().back()).ends_with(".so");
    if (isElf(head)) {
        const bool isLarge = head[4] == 2;
        std::error_code ignored;
        if (isLarge && isLinux && !isWholeElf(head, std::filesystem::file_size(file, ignored))) {
            return LibraryFile::cutOff;
        }
        return isLarge ? (isLinux ? LibraryFile::own64 : LibraryFile::other64)
                       : (isLinux ? LibraryFile::own32 : LibraryFile::other32);
    }
    const std::string_view processor = processorOfDll(head);
    if (processor.empty()) {
        return LibraryFile::none;
    }
    const bool isLarge = processor == "\x64\x86";
    return isLarge ? (isLinux ? LibraryFile::other64 : LibraryFile::own64)
                   : (isLinux ? LibraryFile::other32 : LibraryFile::own32);
}

} // namespace telvofm::tools
