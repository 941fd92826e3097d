// Pictures and QR codes whose data comes in blocks.
#include "tests/unit/printer/situations.h"

#include "virtual_printer/paper/picture.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using namespace std::string_literals;

// Eight columns of eight dots: the upper or the lower half is black.
const std::string upperHalf = "\x01\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s;
const std::string lowerHalf = "\x01\0\x01\0\x0F\x0F\x0F\x0F\x0F\x0F\x0F\x0F"s;
const std::string noPicture = "\0\0\0\0"s; // what follows a picture of printGraphic, or stands for one

class PrinterUploads : public testing::Test, protected DecidingPrinter
{
protected:
    Refusal block(std::string_view data, bool isLast = true, CodePage codePage = CodePage::windows1250)
    {
        Decision decision = decideBlock(state, data, isLast, codePage, now);
        if (decision.refusal == Refusal::none) {
            state = decision.draft.next;
            shown = std::move(decision.draft.shown);
        }
        return decision.refusal;
    }
    Refusal loadOne(Command command, const std::string& number, const std::string& data)
    {
        const Refusal refusal = send(command, {number, "0"});
        return refusal == Refusal::none ? block(data) : refusal;
    }
    [[nodiscard]] bool isExpecting() const { return state.upload->command != 0; }
    [[nodiscard]] const Line& printed() const { return std::get<Printed>(shown.at(0)).line; }
};

TEST_F(PrinterUploads, KeepPicturesByNumberInEveryLayout)
{
    const std::string bands = "\x08\0\x01\0\xF0\xF0\xF0\xF0\xF0\xF0\xF0\xF0"s;
    const std::string raster = "\x01\0\x0F\0\xFF\xFF\xFF\xFF\0\0\0\0"s;
    EXPECT_EQ(loadOne(Command::loadGHMMC, "1", raster), Refusal::none);
    EXPECT_FALSE(isExpecting());
    EXPECT_EQ(loadOne(Command::loadGHMMC1, "9", bands), Refusal::none);
    const auto upper = decodePicture(upperHalf, PictureLayout::columns);
    ASSERT_TRUE(upper.has_value());
    EXPECT_EQ(*state.pictures, (Pictures{{1, *upper}, {9, *upper}}));
    EXPECT_EQ(printed().kind, Line::Kind::picture) << "it is shown on the paper";
    EXPECT_EQ(printed().number, 9);
    EXPECT_EQ(decodePictureOfAnyLayout(printed().text), upper);
}

TEST_F(PrinterUploads, TakeNumbersFromOneToNine)
{
    for (const Command command : {Command::loadGHMMC, Command::loadGHMMC1}) {
        EXPECT_EQ(send(command, {"0", "0"}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"10", "0"}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"1", "-1"}), Refusal::valueOutOfRange);
        EXPECT_EQ(send(command, {"1", "577"}), Refusal::valueOutOfRange);
        EXPECT_FALSE(isExpecting());
        EXPECT_EQ(send(command, {"9", "576"}), Refusal::none);
        EXPECT_TRUE(isExpecting());
        ASSERT_EQ(send(Command::printJobCancel, {}), Refusal::none);
        EXPECT_FALSE(isExpecting()) << "another request ends it";
    }
}

TEST_F(PrinterUploads, ArriveInSeveralBlocks)
{
    // 80 x 32 dots in columns of four bytes, all black.
    const std::string data = "\x0A\0\x04\0"s + std::string(320, '\xFF');
    ASSERT_EQ(send(Command::loadGHNVOrRAMBitMap, {"1", "000000000000", "0"}), Refusal::none);
    ASSERT_EQ(block(data.substr(0, 256), false), Refusal::none);
    EXPECT_TRUE(state.pictures->empty());
    ASSERT_EQ(block(data.substr(256)), Refusal::none);
    EXPECT_EQ(state.pictures->at(1).width, 80);
    EXPECT_EQ(state.pictures->at(1).height, 32);
    EXPECT_FALSE(isExpecting());
}

TEST_F(PrinterUploads, TakeSeveralPicturesThatFollowEachOther)
{
    ASSERT_EQ(send(Command::loadGHNVOrRAMBitMap, {"2", "050012000000", "1"}), Refusal::none);
    EXPECT_TRUE(state.settings->printsLogo);
    ASSERT_EQ(block(upperHalf, false), Refusal::none);
    EXPECT_TRUE(isExpecting());
    ASSERT_EQ(block(lowerHalf), Refusal::none);
    EXPECT_EQ(state.pictures->at(1), *decodePicture(upperHalf, PictureLayout::columns));
    EXPECT_EQ(state.pictures->at(2), *decodePicture(lowerHalf, PictureLayout::columns));
    EXPECT_FALSE(isExpecting());
    EXPECT_EQ(send(Command::loadGHNVOrRAMBitMap, {"1", "000000000000", "0"}), Refusal::none);
    EXPECT_FALSE(state.settings->printsLogo);
}

TEST_F(PrinterUploads, OfSeveralPicturesHaveFieldsOfTheirOwn)
{
    const auto announce = [&](const std::string& count, const std::string& spacings,
                              const std::string& flag) {
        return send(Command::loadGHNVOrRAMBitMap, {count, spacings, flag});
    };
    EXPECT_EQ(announce("0", "000000000000", "0"), Refusal::valueOutOfRange);
    EXPECT_EQ(announce("7", "000000000000", "0"), Refusal::valueOutOfRange);
    EXPECT_EQ(announce("1", "00000000000", "0"), Refusal::valueOutOfRange);
    EXPECT_EQ(announce("1", "0-10000000000", "0"), Refusal::valueOutOfRange);
    EXPECT_EQ(announce("1", "100000000000000", "0"), Refusal::none) << "a spacing of three digits";
    EXPECT_EQ(announce("1", "000000000000", "2"), Refusal::valueOutOfRange);
    EXPECT_EQ(announce("6", "000000000000", "1"), Refusal::none);
}

TEST_F(PrinterUploads, KeepTheRamPictureUnderNineAndPrintItWhenTold)
{
    const auto announce = [&](std::vector<std::string> fields) {
        return send(Command::loadGHNVOrRAMBitMap, std::move(fields));
    };
    EXPECT_EQ(announce({"x", "9", "0", "0"}), Refusal::badText);
    EXPECT_EQ(announce({"", "8", "0", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(announce({"", "9", "-4", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(announce({"", "9", "577", "0"}), Refusal::valueOutOfRange);
    EXPECT_EQ(announce({"", "9", "576", "0"}), Refusal::none);
    EXPECT_EQ(announce({"", "9", "0", "2"}), Refusal::valueOutOfRange);
    ASSERT_EQ(begin(), Refusal::none);
    const std::size_t lines = receipt().lines.size();
    ASSERT_EQ(announce({"", "9", "0", "0"}), Refusal::none);
    ASSERT_EQ(block(upperHalf), Refusal::none);
    EXPECT_EQ(receipt().lines.size(), lines);
    EXPECT_TRUE(state.pictures->contains(9));
    ASSERT_EQ(announce({"", "9", "0", "1"}), Refusal::none);
    ASSERT_EQ(block(upperHalf), Refusal::none);
    EXPECT_EQ(lastLine().kind, Line::Kind::picture) << "part of the receipt";
}

TEST_F(PrinterUploads, AreRefusedWhenTheyAreNoPictureOfTheirLayout)
{
    EXPECT_EQ(loadOne(Command::loadGHMMC, "1", "own picture"), Refusal::badPicture);
    EXPECT_EQ(loadOne(Command::loadGHMMC1, "1", upperHalf + "x"), Refusal::badPicture);
    EXPECT_EQ(loadOne(Command::loadGHMMC1, "1", noPicture), Refusal::badPicture) << "it has no dot";
    EXPECT_TRUE(state.pictures->empty());
    // 73 bytes of dots across and one row: 584 dots, where 576 are the most.
    EXPECT_EQ(loadOne(Command::loadGHMMC, "1", "\x49\0\x08\0"s + std::string(std::size_t{73} * 8, '\0')),
              Refusal::badPicture);
    EXPECT_EQ(loadOne(Command::loadGHMMC, "1", "\x48\0\x0F\0"s + std::string(std::size_t{72} * 8, '\0')),
              Refusal::none);
}

// The header says the number of rows and seven, of which it has the lowest eight bits.
TEST_F(PrinterUploads, HaveNoMoreThan2040Rows)
{
    const auto ofRows = [](std::size_t rows) {
        return std::string("\x01\0", 2) + static_cast<char>(rows + 7) + '\0' + std::string(rows, '\xFF');
    };
    EXPECT_EQ(loadOne(Command::loadGHMMC, "1", ofRows(2040)), Refusal::none);
    EXPECT_EQ(state.pictures->at(1).height, 2040);
    EXPECT_EQ(loadOne(Command::loadGHMMC, "2", ofRows(2048)), Refusal::badPicture);
}

// All pictures of an upload count together.
TEST_F(PrinterUploads, AreNotLargerThanAMegabyteInAll)
{
    ASSERT_EQ(send(Command::printGraphic, {"0", "1"}), Refusal::none);
    ASSERT_EQ(block(upperHalf), Refusal::none);
    const std::size_t rest = 1'048'576 - upperHalf.size();
    EXPECT_EQ(block(std::string(rest + 1, 'x'), false), Refusal::uploadTooLarge);
    EXPECT_EQ(block(std::string(rest, 'x'), false), Refusal::none);
}

TEST_F(PrinterUploads, AreNotLargerThanAMegabyte)
{
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    const std::string piece(256, 'x');
    for (int i = 0; i < 4096; ++i) {
        ASSERT_EQ(block(piece, false), Refusal::none);
    }
    EXPECT_EQ(block("x", false), Refusal::uploadTooLarge);
}

TEST_F(PrinterUploads, PrintAPictureThatComesWithTheCommand)
{
    ASSERT_EQ(send(Command::printGraphic, {"0", "1"}), Refusal::none);
    ASSERT_EQ(block(upperHalf), Refusal::none);
    EXPECT_EQ(decodePictureOfAnyLayout(printed().text), decodePicture(upperHalf, PictureLayout::columns));
    EXPECT_TRUE(isExpecting());
    ASSERT_EQ(block(noPicture), Refusal::none);
    EXPECT_TRUE(shown.empty());
    EXPECT_FALSE(isExpecting());
    EXPECT_TRUE(state.pictures->empty()) << "it is not kept";
    ASSERT_EQ(send(Command::printGraphic, {"0", "1"}), Refusal::none);
    EXPECT_EQ(block("own picture"), Refusal::badPicture);
}

TEST_F(PrinterUploads, PrintAKeptPictureWhenNoneComesWithTheCommand)
{
    ASSERT_EQ(loadOne(Command::loadGHMMC1, "3", "\x08\0\x01\0\x0F\x0F\x0F\x0F\x0F\x0F\x0F\x0F"s),
              Refusal::none);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::printGraphic, {"0", "3"}), Refusal::none);
    ASSERT_EQ(block(noPicture), Refusal::none);
    EXPECT_EQ(lastLine().kind, Line::Kind::picture);
    EXPECT_EQ(lastLine().number, 3);
    EXPECT_EQ(decodePictureOfAnyLayout(lastLine().text), decodePicture(lowerHalf, PictureLayout::columns));
    ASSERT_EQ(send(Command::printGraphic, {"0", "4"}), Refusal::none);
    EXPECT_EQ(block(noPicture), Refusal::noSuchPicture);
    EXPECT_EQ(send(Command::printGraphic, {"10", "1"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::printGraphic, {"0", "10"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::printGraphic, {"0", "-1"}), Refusal::valueOutOfRange);
}

TEST_F(PrinterUploads, PrintAQrCodeOfTheTextInTheCodePageOfTheLink)
{
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    ASSERT_EQ(block("Ro\x9E", false), Refusal::none);
    EXPECT_TRUE(isExpecting());
    ASSERT_EQ(block("ok"), Refusal::none);
    EXPECT_EQ(printed().kind, Line::Kind::qrCode);
    EXPECT_EQ(printed().text, "Rožok");
    EXPECT_FALSE(isExpecting());
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    ASSERT_EQ(block("Ro\xA7ok", true, CodePage::cp852), Refusal::none);
    EXPECT_EQ(lastLine().text, "Rožok");
}

TEST_F(PrinterUploads, PrintNoQrCodeThatIsTooLongForOne)
{
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    for (int i = 0; i < 12; ++i) { // 3,072 bytes; the largest code holds 2,953
        ASSERT_EQ(block(std::string(256, '\xE1'), false), Refusal::none);
    }
    EXPECT_EQ(block("x"), Refusal::badCode);
}

TEST_F(PrinterUploads, ComeOnlyWhenTheyWereAnnounced)
{
    EXPECT_EQ(block(upperHalf), Refusal::unknownCommand);
}

TEST_F(PrinterUploads, NeedPaperOutsideAReceipt)
{
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    setHardware(true, false);
    EXPECT_EQ(block("text"), Refusal::outOfPaper);
    setHardware(false, false);
    ASSERT_EQ(begin(), Refusal::none);
    ASSERT_EQ(send(Command::printQRCode, {}), Refusal::none);
    setHardware(true, false);
    EXPECT_EQ(block("text"), Refusal::none) << "an open receipt goes on";
}

TEST_F(PrinterUploads, StandInFrontOfReceiptsWhenTheLogoIsOn)
{
    ASSERT_EQ(send(Command::loadGHNVOrRAMBitMap, {"1", "000000000000", "1"}), Refusal::none);
    ASSERT_EQ(block(upperHalf), Refusal::none);
    ASSERT_EQ(begin(), Refusal::none);
    EXPECT_EQ(receipt().lines.front().kind, Line::Kind::picture);
    EXPECT_EQ(decodePictureOfAnyLayout(receipt().lines.front().text),
              decodePicture(upperHalf, PictureLayout::columns));
}

} // namespace
} // namespace virtual_printer
