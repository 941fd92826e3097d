// Pictures that tills upload to the virtual printer, as its paper shows them.
#include "tests/system/virtual_printer_fixture.h"

namespace virtual_printer {
namespace {

using namespace std::string_literals;

using VirtualPrinterPictures = VirtualPrinter;

// A corner of 12 x 10 dots, blank at the top and the left, in the three layouts.
TEST_F(VirtualPrinterPictures, PrintsUploadedPicturesInEveryLayout)
{
    const auto repeated = [](const std::string& bytes, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) {
            all += bytes;
        }
        return all;
    };
    const std::string raster = "\x02\0\x11\0"s + "\0\0"s + repeated("\x7F\xF0", 9) + repeated("\0\0"s, 6);
    const std::string bands = "\x0C\0\x02\0"s + "\0"s + repeated("\x7F", 11) + "\0"s + repeated("\xC0", 11);
    const std::string columns = "\x02\0\x02\0"s + "\0\0"s + repeated("\x7F\xC0", 11) + repeated("\0\0"s, 4);
    const auto upload = [&](const std::string& announcement, const std::string& data) {
        paper.clear();
        EXPECT_EQ(answerTo(announcement + blockOf(data, '\x03')), accepted + accepted);
    };
    const std::string inColumns = request(0xD1, {"1", "000000000000", "0"});
    // Two rows of dots a line: the first row is blank, ten are left.
    const std::vector<std::string> corner = {" " + repeated("\u2584", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             " " + repeated("\u2588", 11),
                                             "",
                                             "",
                                             ""};
    upload(request(0xD0, {"1", "0"}), raster);
    EXPECT_EQ(paper, corner);
    upload(request(0xD2, {"1", "0"}), bands);
    EXPECT_EQ(paper, corner);
    upload(inColumns, columns);
    EXPECT_EQ(paper, corner);
    EXPECT_EQ(answerTo(inColumns + blockOf(columns.substr(1), '\x03')),
              accepted + refused(Refusal::badPicture));
}

// Eight columns of eight dots: the upper or the lower half is black.
const std::string upperHalf = "\x01\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s;
const std::string lowerHalf = "\x01\0\x01\0\x0F\x0F\x0F\x0F\x0F\x0F\x0F\x0F"s;
const std::string blackLine = "\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588";

TEST_F(VirtualPrinterPictures, TakesSeveralLogosInOneUpload)
{
    EXPECT_EQ(answerTo(request(0xD1, {"2", "000000000000", "0"}) + blockOf(upperHalf, '\x17') +
                       blockOf(lowerHalf, '\x03')),
              accepted + accepted + accepted);
    EXPECT_EQ(paper, (std::vector<std::string>{blackLine, blackLine, "", "", "", "", blackLine, blackLine}));
}

TEST_F(VirtualPrinterPictures, PrintsAKeptLogoByItsNumberWhenNoPictureComesWithTheCommand)
{
    const std::string end = blockOf("\0\0\0\0"s, '\x03');
    answerTo(request(0xD1, {"2", "000000000000", "0"}) + blockOf(upperHalf, '\x17') +
             blockOf(lowerHalf, '\x03'));
    answerTo(request(0xD1, {"", "9", "0", "0"}) + blockOf(upperHalf, '\x03'));
    const auto printed = [&](const std::string& number) {
        paper.clear();
        EXPECT_EQ(answerTo(request(0xDE, {"0", number}) + end), accepted + accepted);
        return paper;
    };
    const std::vector<std::string> upper = {blackLine, blackLine, "", ""};
    EXPECT_EQ(printed("1"), upper);
    EXPECT_EQ(printed("2"), (std::vector<std::string>{"", "", blackLine, blackLine}));
    EXPECT_EQ(printed("9"), upper);
    EXPECT_EQ(answerTo(request(0xDE, {"0", "3"}) + end), accepted + refused(Refusal::noSuchPicture));
    EXPECT_EQ(answerTo(request(0xDE, {"0", "1"}) + blockOf("own picture", '\x03')),
              accepted + refused(Refusal::badPicture));
}

TEST_F(VirtualPrinterPictures, TakesNoPictureWhoseHeaderTellsAnotherHeight)
{
    // 16 rows of one byte: heights of 9 to 16 fit, which the header tells as 16 to 23.
    const auto answerFor = [&](char height) {
        return answerTo(request(0xD0, {"1", "0"}) +
                        blockOf("\x01\0"s + height + "\0"s + std::string(16, '\0'), '\x03'));
    };
    EXPECT_EQ(answerFor(15), accepted + refused(Refusal::badPicture));
    EXPECT_EQ(answerFor(16), accepted + accepted);
    EXPECT_EQ(answerFor(23), accepted + accepted);
    EXPECT_EQ(answerFor(24), accepted + refused(Refusal::badPicture));
}

// The library sends a block that was refused three times in all.
TEST_F(VirtualPrinterPictures, RefusesARepeatedBlockAsItRefusedTheFirst)
{
    const std::string announcement = request(0xD2, {"1", "0"});
    const std::string noPicture = blockOf("own picture", '\x03');
    const std::string why = refused(Refusal::badPicture);
    EXPECT_EQ(answerTo(announcement + noPicture + noPicture + noPicture), accepted + why + why + why);
    // A refused block leaves what came before it: the right one fits behind.
    const std::string bands = "\x08\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s;
    EXPECT_EQ(answerTo(announcement + blockOf(bands.substr(0, 5), '\x17') + noPicture + noPicture +
                       blockOf(bands.substr(5), '\x03')),
              accepted + accepted + why + why + accepted);
}

TEST_F(VirtualPrinterPictures, ExpectsNoBlocksBehindARefusedRequest)
{
    EXPECT_EQ(answerTo(request(0xD2, {"1", "0"}) + request(0xFF) + blockOf("own picture", '\x03')),
              accepted + refused(Refusal::unknownCommand));
}

TEST_F(VirtualPrinterPictures, PrintsThePictureThatComesWithTheCommandInWhicheverLayoutItFits)
{
    const std::string end = blockOf("\0\0\0\0"s, '\x03');
    const auto printed = [&](const std::string& data) {
        paper.clear();
        EXPECT_EQ(answerTo(request(0xDE, {"0", "1"}) + blockOf(data, '\x03') + end),
                  accepted + accepted + accepted);
        return paper;
    };
    const std::vector<std::string> upper = {blackLine, blackLine, "", ""};
    EXPECT_EQ(printed(upperHalf), upper);
    // As bands: eight columns of one byte.
    EXPECT_EQ(printed("\x08\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s), upper);
    // Eight rows of a byte: a height of 8 is told as 15.
    EXPECT_EQ(printed("\x01\0\x0F\0\xFF\xFF\xFF\xFF\0\0\0\0"s), upper);
    EXPECT_EQ(answerTo(request(0xDE, {"0", "1"}) + blockOf("own picture", '\x03')),
              accepted + refused(Refusal::badPicture));
}

// Eight bands of eight columns; the same bytes would be a raster picture of 64 x 8 dots too.
TEST_F(VirtualPrinterPictures, TakesBandsForBandsWhenRowsWouldFitToo)
{
    const std::string data = "\x08\0\x08\0"s + std::string(64, '\xFF');
    answerTo(request(0xDE, {"0", "1"}) + blockOf(data, '\x03'));
    EXPECT_EQ(paper, std::vector<std::string>(32, blackLine));
}

TEST_F(VirtualPrinterPictures, PrintsAPictureOfManyBlocksSmallerToFitThePaper)
{
    // 80 x 32 dots in columns of four bytes, all black: 40 columns of half-size dots, eight lines.
    const std::string data = "\x0A\0\x04\0"s + std::string(320, '\xFF');
    EXPECT_EQ(answerTo(request(0xDE, {"0", "1"}) + blockOf(data.substr(0, 256), '\x17') +
                       blockOf(data.substr(256), '\x03') + blockOf("\0\0\0\0"s, '\x03')),
              accepted + accepted + accepted + accepted);
    std::string black;
    for (std::size_t i = 0; i < columnsOfPaper; ++i) {
        black += "\u2588";
    }
    EXPECT_EQ(paper, std::vector<std::string>(8, black));
}

} // namespace
} // namespace virtual_printer
