// Whole exchanges over a real terminal line: every character both ways, long replies, uploads, raw bytes.
#include "tests/system/serial_link_fixture.h"
#include "tests/unit/bytes.h"

#include <array>
#include <iconv.h>
#include <optional>

namespace telvofm::test {
namespace {

// What the system's own conversion makes of a Windows-1250 byte in code page 852.
std::optional<char> counterpart(char character)
{
    const iconv_t converter = iconv_open("CP852", "CP1250");
    char converted = 0;
    char* source = &character;
    char* target = &converted;
    std::size_t sourceLeft = 1;
    std::size_t targetLeft = 1;
    const bool exists = iconv(converter, &source, &sourceLeft, &target, &targetLeft) == 0;
    iconv_close(converter);
    return exists ? std::optional(converted) : std::nullopt;
}

struct BothPages
{
    std::string windows;
    std::string printer;
};

// All characters above ASCII that both code pages have.
BothPages sharedCharacters()
{
    BothPages pages;
    for (int value = 0x80; value <= 0xFF; ++value) {
        if (const auto other = counterpart(static_cast<char>(value))) {
            pages.windows.push_back(static_cast<char>(value));
            pages.printer.push_back(*other);
        }
    }
    return pages;
}

TEST_F(SerialLinkTest, EveryCharacterOfBothCodePagesReachesThePrinter)
{
    const BothPages pages = sharedCharacters();
    ASSERT_EQ(pages.windows.size(), 99U);
    auto request = printer.play([](wire::Connection& line) {
        auto received = receiveRequest(line);
        line.send("\x06");
        return received;
    });
    EXPECT_EQ(destroyParagon(1, 0, pages.windows.c_str()), 0);
    EXPECT_EQ(request.get(), bytes({0x1C, 0x01, 0x2B, '0', 0x00}) + pages.printer + bytes({0x00, 0x04}));
}

TEST_F(SerialLinkTest, EveryCharacterOfBothCodePagesComesBackFromThePrinter)
{
    const BothPages pages = sharedCharacters();
    const auto playing = printer.play([&](wire::Connection& line) {
        receiveRequest(line);
        line.send(block(pages.printer, etx));
        receiveBytes(line, 1);
    });
    ResultObject* const journal = createResultObject();
    EXPECT_EQ(getJournal_ResultObject(1, journal), 0);
    EXPECT_EQ(getResultObjectString(journal), pages.windows);
    destroyResultObject(journal);
}

// Control characters are data on this line: nothing is taken for an end of line or for flow control.
TEST_F(SerialLinkTest, EveryByteBelow80PassesUnchanged)
{
    std::string ascii;
    for (char value = 1; value < 0x7F; ++value) {
        ascii.push_back(value);
    }
    ascii.push_back(0x7F);
    auto answer = printer.play([&](wire::Connection& line) {
        receiveRequest(line);
        line.send(block(ascii, etx));
        return receiveBytes(line, 1);
    });
    ResultObject* const journal = createResultObject();
    EXPECT_EQ(getJournal_ResultObject(1, journal), 0);
    EXPECT_EQ(getResultObjectString(journal), ascii);
    EXPECT_EQ(answer.get(), "\x03");

    auto written = printer.play([&](wire::Connection& line) { return receiveBytes(line, ascii.size()); });
    EXPECT_EQ(
        rawWrite(reinterpret_cast<const unsigned char*>(ascii.data()), static_cast<int64_t>(ascii.size())),
        static_cast<int64_t>(ascii.size()));
    EXPECT_EQ(written.get(), ascii);
    destroyResultObject(journal);
}

TEST_F(SerialLinkTest, AReplyOf64KilobytesComesWhole)
{
    constexpr std::size_t blocks = 256;
    std::string whole;
    for (std::size_t i = 0; i < blocks; ++i) {
        whole += std::string(256, static_cast<char>('!' + i % 90));
    }
    const auto playing = printer.play([&](wire::Connection& line) {
        receiveRequest(line);
        for (std::size_t i = 0; i < blocks; ++i) {
            line.send(block(std::string_view(whole).substr(i * 256, 256), i + 1 == blocks ? etx : etb));
            if (receiveBytes(line, 1) != (i + 1 == blocks ? "\x03" : "\x06")) {
                return;
            }
        }
    });
    ResultObject* const journal = createResultObject();
    EXPECT_EQ(getJournal_ResultObject(1, journal), 0);
    EXPECT_EQ(getResultObjectString(journal), whole);
    destroyResultObject(journal);
}

TEST_F(SerialLinkTest, RawReadReturnsOnlyWhatIsThereAlready)
{
    std::array<unsigned char, 8> buffer{};
    EXPECT_EQ(rawRead(buffer.data(), 8, &buffer), 0);
    printer.line().send("abc");
    int64_t count = 0;
    while (count < 3) { // the line may deliver late
        const int64_t more = rawRead(buffer.data() + count, 8 - count, &buffer);
        ASSERT_GE(more, 0);
        count += more;
    }
    EXPECT_EQ(buffer, (std::array<unsigned char, 8>{'a', 'b', 'c'}));
    EXPECT_EQ(rawRead(buffer.data(), 8, nullptr), 0);
}

TEST_F(SerialLinkTest, TheRawLogShowsEachByteInItsDirection)
{
    setRawLogginOn(folder.file("raw.txt").c_str());
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send(bytes({nak, 0x07}));
        receiveRequest(line);
        line.send("\x06");
    });
    EXPECT_EQ(printJobCancel(1), 0);
    seRawLogginOff();
    EXPECT_EQ(contentOf(folder.file("raw.txt")), "C: 1c 01 e0 04 f9 \nS: 15 07 \nC: 1c 01 e0 04 f9 \nS: 06 ");
}

// A reply to an earlier request that nobody waits for any more must not answer this one.
TEST_F(SerialLinkTest, StaleBytesAreDiscardedBeforeARequest)
{
    printer.line().send("\x06\x15\x63");
    printer.waitUntilDelivered(3);
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send(block("new", etx));
        receiveBytes(line, 1);
    });
    ResultObject* const journal = createResultObject();
    EXPECT_EQ(getJournal_ResultObject(1, journal), 0);
    EXPECT_STREQ(getResultObjectString(journal), "new");
    destroyResultObject(journal);
}

// The answer to a reply's last block may still be on its way when the next call discards what is left of
// earlier ones. Whether it is depends on the machine, so there are many attempts.
TEST_F(SerialLinkTest, TheLastByteOfAnExchangeIsNeverLostToTheNextCall)
{
    constexpr int attempts = 1000;
    auto lost = printer.play([](wire::Connection& line) {
        int missing = 0;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            receiveRequest(line);
            line.send(block("reply", etx));
            std::string received = receiveBytes(line, 1);
            if (received == "\x03") {
                received = receiveBytes(line, 1);
            } else {
                ++missing;
            }
            received += receiveBytes(line, 4);
            EXPECT_EQ(received, "\x1C\x01\xE0\x04\xF9");
            line.send("\x06");
        }
        return missing;
    });
    for (int attempt = 0; attempt < attempts; ++attempt) {
        ASSERT_EQ(saveRAMMP(1, "password", folder.file("memory").c_str()), 0);
        ASSERT_EQ(printJobCancel(1), 0);
    }
    EXPECT_EQ(lost.get(), 0);
}

} // namespace
} // namespace telvofm::test
