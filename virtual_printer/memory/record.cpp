#include "virtual_printer/memory/record.h"

namespace virtual_printer {
namespace {

constexpr unsigned bitsOfByte = 7;
constexpr std::uint64_t maskOfByte = (1U << bitsOfByte) - 1;
constexpr unsigned char moreFollows = 1U << bitsOfByte;
constexpr std::size_t dotsOfByte = 8;

} // namespace

std::string wholeToBytes(std::int64_t value)
{
    const bool isNegative = value < 0;
    const auto magnitude = static_cast<std::uint64_t>(isNegative ? ~value : value);
    std::uint64_t rest = magnitude << 1U | static_cast<std::uint64_t>(isNegative);
    std::string bytes;
    while (rest > maskOfByte) {
        bytes.push_back(static_cast<char>(moreFollows | (rest & maskOfByte)));
        rest >>= bitsOfByte;
    }
    bytes.push_back(static_cast<char>(rest));
    return bytes;
}

void RecordWriter::put(const std::vector<bool>& dots)
{
    put(dots.size());
    const std::size_t start = written.size();
    written.resize(start + (dots.size() + dotsOfByte - 1) / dotsOfByte);
    for (std::size_t i = 0; i < dots.size(); ++i) {
        char& byte = written[start + i / dotsOfByte];
        byte = static_cast<char>(static_cast<unsigned char>(byte) | (dots[i] ? 1U : 0U) << i % dotsOfByte);
    }
}

std::int64_t RecordReader::takeWhole()
{
    constexpr unsigned bitsOfWhole = 64;
    std::uint64_t bits = 0;
    for (unsigned shift = 0; shift < bitsOfWhole; shift += bitsOfByte) {
        const auto byte = static_cast<unsigned char>(takeBytes(1).front());
        bits |= (byte & maskOfByte) << shift;
        if ((byte & moreFollows) == 0) {
            const auto magnitude = static_cast<std::int64_t>(bits >> 1U);
            return (bits & 1U) != 0 ? ~magnitude : magnitude;
        }
    }
    throw DamagedRecord();
}

std::size_t RecordReader::takeCount()
{
    const auto count = static_cast<std::uint64_t>(takeWhole());
    if (count > left.size()) {
        throw DamagedRecord();
    }
    return static_cast<std::size_t>(count);
}

std::string_view RecordReader::takeBytes(std::size_t count)
{
    if (count > left.size()) {
        throw DamagedRecord();
    }
    const std::string_view taken = left.substr(0, count);
    left.remove_prefix(count);
    return taken;
}

void RecordReader::take(std::vector<bool>& dots)
{
    const auto count = static_cast<std::uint64_t>(takeWhole());
    if (count > left.size() * dotsOfByte) {
        throw DamagedRecord();
    }
    const std::string_view bytes = takeBytes(static_cast<std::size_t>((count + dotsOfByte - 1) / dotsOfByte));
    dots.assign(static_cast<std::size_t>(count), false);
    for (std::size_t i = 0; i < dots.size(); ++i) {
        const unsigned int byte = static_cast<unsigned char>(bytes[i / dotsOfByte]);
        dots[i] = (byte >> i % dotsOfByte & 1U) != 0;
    }
}

} // namespace virtual_printer
