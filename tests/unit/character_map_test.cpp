#include "device/character_map.h"

#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

std::string converted(const CharacterMap& map, std::string text)
{
    map.convertAll(text);
    return text;
}

TEST(CharacterMap, ConvertsByteByByteAndKeepsTheLength)
{
    const std::string library = bytes({0xC8, 0x61, 0x9A});
    const std::string printer = bytes({0xAC, 0x61, 0xE7});
    EXPECT_EQ(converted(CharacterMap::outgoing, library), printer);
    EXPECT_EQ(converted(CharacterMap::incoming, printer), library);
    EXPECT_EQ(converted(CharacterMap::outgoing, ""), "");
}

TEST(CharacterMap, HasThePublishedPairs)
{
    EXPECT_EQ(converted(CharacterMap::outgoing, bytes({0x8A, 0xA0, 0xE1, 0xC8})),
              bytes({0xE6, 0xFF, 0xA0, 0xAC}));
    EXPECT_EQ(converted(CharacterMap::incoming, bytes({0xE6, 0xFF, 0xA0, 0xAC})),
              bytes({0x8A, 0xA0, 0xE1, 0xC8}));
}

TEST(CharacterMap, AsciiPassesUnchanged)
{
    for (int value = 0; value < 0x80; ++value) {
        const char byte = static_cast<char>(value);
        EXPECT_EQ(CharacterMap::outgoing.convert(byte), byte);
        EXPECT_EQ(CharacterMap::incoming.convert(byte), byte);
    }
}

TEST(CharacterMap, BytesWithoutACounterpartPassUnchanged)
{
    const std::string without =
        bytes({0x80, 0x81, 0x82, 0x83, 0x84, 0x85, 0x86, 0x87, 0x88, 0x89, 0x8B, 0x90, 0x91, 0x92, 0x93,
               0x94, 0x95, 0x96, 0x97, 0x98, 0x99, 0x9B, 0xA6, 0xA9, 0xAE, 0xB1, 0xB5, 0xB6, 0xB7});
    EXPECT_EQ(without.size() + 99, 0x80U);
    EXPECT_EQ(converted(CharacterMap::outgoing, without), without);
}

TEST(CharacterMap, AReplyByteThatIsNoOutgoingValuePassesUnchanged)
{
    EXPECT_EQ(CharacterMap::incoming.convert('\xB0'), '\xB0');
}

TEST(CharacterMap, AppendsBehindWhatIsThere)
{
    std::string target = "\x9A|";
    CharacterMap::outgoing.appendConverted(target, "\x9A");
    EXPECT_EQ(target, "\x9A|\xE7");
}

} // namespace
} // namespace telvofm::test
