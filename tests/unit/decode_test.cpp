#include "tools/decoded_lines.h"

#include <gtest/gtest.h>

namespace telvofm::tools {
namespace {

std::string decodeRawLog(std::string_view text, const CodePage& codePage)
{
    const RawLog log = readRawLog(text);
    std::string all;
    for (const std::string& line : decodedLines(log, unitsOf(log.runs), codePage)) {
        all += line + "\n";
    }
    return all;
}

TEST(Decode, NamesCommandsAndShowsTheirFields)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 2b 30 00 8a e1 00 04 69 \nS: 06 ", windows1250),
              "till     destroyParagon to device 1 \"0\" \"Šá\", checksum ok\n"
              "printer  accepted\n");
}

TEST(Decode, ShowsTextsOfSerialLinksInTheirCodePage)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 2b 30 00 e6 a0 00 04 44 ", codePage852),
              "till     destroyParagon to device 1 \"0\" \"Šá\", checksum ok\n");
}

TEST(Decode, TellsWrongAndMissingChecksums)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 e0 04 00 ", windows1250),
              "till     printJobCancel to device 1, checksum wrong, f9 expected\n");
    EXPECT_EQ(decodeRawLog("C: 1c 01 e0 04 ", windows1250),
              "till     printJobCancel to device 1, the checksum is missing\n");
}

// 3a ^ 00 ^ 63 ^ 03 is 5a.
TEST(Decode, TellsAWrongChecksumOfABlock)
{
    EXPECT_EQ(decodeRawLog("S: 3a 00 63 03 5b ", windows1250),
              "printer  last block \"c\", checksum wrong, 5a expected\n");
    EXPECT_EQ(decodeRawLog("S: 3a 00 63 03 5a ", windows1250), "printer  last block \"c\", checksum ok\n");
}

TEST(Decode, ShowsRefusalsAndTriesOnLinesOfTheirOwn)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 e0 04 f9 11 1c 01 e0 04 f9 \nS: 15 05 ", windows1250),
              "till     printJobCancel to device 1, checksum ok\n"
              "till     are you there?\n"
              "till     printJobCancel to device 1, checksum ok\n"
              "printer  refused with error 5\n");
}

TEST(Decode, ShowsReplyBlocksAndTheirAnswers)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 9f 04 86 \r\nS: 3a 01 61 62 17 2f \nC: 06 \nS: 3a 00 63 03 5a \nC: 03 ",
                           windows1250),
              "till     getJournal to device 1, checksum ok\n"
              "printer  block \"ab\", checksum ok\n"
              "till     block received, go on\n"
              "printer  last block \"c\", checksum ok\n"
              "till     last block received\n");
}

TEST(Decode, MakesTheBestOfWhatIsBrokenOffOrUnknown)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 \nS: 3a 05 61 \nS: 5a \nS: 15 \nnonsense\nC: 1c 01 77 41 ", windows1250),
              "till     a request that is broken off: 1c 01\n"
              "printer  a block that is broken off: 3a 05 61\n"
              "printer  unknown byte 5a\n"
              "printer  refused, the error code is missing\n"
              "?        line 5: not a line of a raw log\n"
              "till     a request that is broken off: 1c 01 77 41\n");
    EXPECT_EQ(decodeRawLog("", windows1250), "");
    EXPECT_EQ(decodeRawLog("C: 1", windows1250),
              "?        line 1: the log is cut off in the middle of a byte\n");
}

TEST(Decode, GoesOnBehindWhatIsNoByte)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 e0 zz 04 f9 \nS: 06 6 \nC: 1c 01 e0 04 f9 ", windows1250),
              "till     printJobCancel to device 1, checksum ok\n"
              "?        line 1: 'zz' is no byte\n"
              "printer  accepted\n"
              "?        line 2: '6' is no byte\n"
              "till     printJobCancel to device 1, checksum ok\n");
}

// 3a ^ 01 ^ 61 ^ 62 ^ 17 is 2f: behind 17 more comes.
TEST(Decode, TellsWhereTheLogEndsInsideAReply)
{
    const std::string block = "till     getJournal to device 1, checksum ok\n"
                              "printer  block \"ab\", checksum ok\n";
    const std::string begun = "C: 1c 01 9f 04 86 \nS: 3a 01 61 62 17 2f ";
    EXPECT_EQ(decodeRawLog(begun, windows1250), block + "?        line 2: the log ends inside a reply\n");
    EXPECT_EQ(decodeRawLog(begun + "\nC: 06 11 \nS: 11 ", windows1250),
              block + "till     block received, go on\n"
                      "till     are you there?\n"
                      "printer  ready\n"
                      "?        line 4: the log ends inside a reply\n");
    EXPECT_EQ(decodeRawLog(begun + "\nC: 06 \nS: ", windows1250),
              block + "till     block received, go on\n"
                      "?        line 4: the log is cut off in front of a byte\n");
}

// The till's own blocks are asked for by the printer, which may have had enough of them.
TEST(Decode, TellsNothingOfWhereAnUploadEnds)
{
    EXPECT_EQ(decodeRawLog("C: 3a 01 61 62 17 2f \nS: 06 ", windows1250),
              "till     block \"ab\", checksum ok\n"
              "printer  accepted\n");
}

// The printer may pause inside a block, and the library then asks whether it is there.
TEST(Decode, JoinsABlockThatProbesInterrupt)
{
    EXPECT_EQ(decodeRawLog("C: 1c 01 9f 04 86 \nS: 3a 02 \nC: 11 \nS: 61 \nC: 11 \nS: 62 63 03 5b \nC: 03 ",
                           windows1250),
              "till     getJournal to device 1, checksum ok\n"
              "till     are you there?\n"
              "till     are you there?\n"
              "printer  last block \"abc\", checksum ok\n"
              "till     last block received\n");
}

// A line of the printer is missing behind the probe: what the till says next is its own.
TEST(Decode, JoinsNoBlockWithWhatTheTillSays)
{
    EXPECT_EQ(
        decodeRawLog("C: 1c 01 9f 04 86 \nS: 3a 02 \nC: 11 \nnonsense\nC: 1c 01 e0 04 f9 ", windows1250),
        "till     getJournal to device 1, checksum ok\n"
        "printer  a block that is broken off: 3a 02\n"
        "till     are you there?\n"
        "?        line 4: not a line of a raw log\n"
        "till     printJobCancel to device 1, checksum ok\n");
}

} // namespace
} // namespace telvofm::tools
