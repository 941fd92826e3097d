// A fuzzer's input as values, one after the other. What goes beyond its end is zero or empty. For all fuzzers
// that turn bytes into calls.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace telvofm::fuzz {

inline void require(bool isSound)
{
    if (!isSound) {
        std::abort();
    }
}

class FuzzedBytes
{
public:
    FuzzedBytes(const std::uint8_t* data, std::size_t size) : left(reinterpret_cast<const char*>(data), size)
    {
    }

    [[nodiscard]] bool isAtEnd() const { return left.empty(); }

    std::string_view bytes(std::size_t most)
    {
        const std::string_view taken = left.substr(0, most);
        left.remove_prefix(taken.size());
        return taken;
    }
    std::string_view rest() { return bytes(left.size()); }

    // As it stands in memory.
    template <typename Number>
    Number number()
    {
        Number value{};
        const std::string_view taken = bytes(sizeof value);
        std::memcpy(&value, taken.data(), taken.size());
        return value;
    }
    std::uint8_t byte() { return number<std::uint8_t>(); }
    // Below `end`.
    std::size_t choice(std::size_t end) { return byte() % end; }
    // Behind its length.
    std::string_view text() { return bytes(byte()); }

private:
    std::string_view left;
};

} // namespace telvofm::fuzz
