// All bytes of both code pages against the system's own conversion, which knows nothing of our table.
#include "device/character_map.h"

#include <gtest/gtest.h>

#include <iconv.h>
#include <optional>

namespace telvofm {
namespace {

class Converter
{
public:
    Converter(const char* from, const char* to) : handle(iconv_open(to, from)) {}
    ~Converter() { iconv_close(handle); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    // Nothing when the other code page has no such character.
    std::optional<std::string> convert(std::string text)
    {
        std::string result(8, '\0');
        char* source = text.data();
        char* target = result.data();
        std::size_t sourceLeft = text.size();
        std::size_t targetLeft = result.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle, &source, &sourceLeft, &target, &targetLeft) != 0) {
            return std::nullopt;
        }
        result.resize(result.size() - targetLeft);
        return result;
    }

private:
    iconv_t handle;
};

// Compares every byte above ASCII and returns how many have a counterpart.
int compareWithSystem(const CharacterMap& map, const char* from, const char* to)
{
    Converter toUnicode(from, "UTF-8");
    Converter fromUnicode("UTF-8", to);
    int counterparts = 0;
    for (int value = 0x80; value <= 0xFF; ++value) {
        const char byte = static_cast<char>(value);
        const auto character = toUnicode.convert(std::string(1, byte));
        const auto expected = character ? fromUnicode.convert(*character) : std::nullopt;
        EXPECT_EQ(std::string(1, map.convert(byte)), expected.value_or(std::string(1, byte)))
            << "byte " << value;
        counterparts += expected ? 1 : 0;
    }
    return counterparts;
}

TEST(CharacterMapIconv, OutgoingIsTheWholeCorrespondence)
{
    EXPECT_EQ(compareWithSystem(CharacterMap::outgoing, "CP1250", "CP852"), 99);
}

TEST(CharacterMapIconv, IncomingIsTheWholeCorrespondence)
{
    EXPECT_EQ(compareWithSystem(CharacterMap::incoming, "CP852", "CP1250"), 99);
}

} // namespace
} // namespace telvofm
