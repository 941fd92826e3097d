// What each kind of fault makes of an exchange, on both kinds of link, and that nothing of it is left
// afterwards.
#include "tests/unit/printer/tried_printer.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const std::string job = request(0xE0);             // always accepted, and changes nothing
const std::string asked = request(0x92, {"LIFE"}); // a variable

struct Expected
{
    const char* fault;
    std::string bytes;
    std::string overTcp;
    std::string onSerialLine;
};

// 3a, length less one, data, 03, checksum: the reply to `asked`.
std::string reply()
{
    return TriedPrinter(CodePage::windows1250).heard(asked);
}

std::string changed(std::string bytes, std::size_t place, unsigned flips)
{
    bytes[place] = static_cast<char>(static_cast<unsigned char>(bytes[place]) ^ flips);
    return bytes;
}

std::vector<Expected> expectations()
{
    const std::string whole = reply();
    const std::string good = pairsOf(whole);
    const std::size_t end = whole.size();
    std::string longer = whole;
    ++longer[1];
    // 03 becomes 55, and the checksum changes by the same bits.
    const std::string otherEnd = changed(changed(whole, end - 2, 0x03 ^ 0x55), end - 1, 0x03 ^ 0x55);
    const auto same = [](const char* fault, const std::string& bytes, const std::string& steps) {
        return Expected{fault, bytes, steps, steps};
    };
    return {
        same(R"({"kind":"refuse","code":49})", job, "0:1531!"),
        same(R"({"kind":"requestLost"})", job, ""),
        same(R"({"kind":"silence"})", job, ""),
        same(R"({"kind":"acknowledgeLost"})", job, ""),
        same(R"({"kind":"acknowledgeLate","milliseconds":4000})", job, "4000:06!"),
        same(R"({"kind":"acknowledgeTwice"})", job, "0:06! 0:06"),
        same(R"({"kind":"acknowledgeTwice","milliseconds":50})", job, "0:06! 50:06"),
        same(R"({"kind":"executedNotAcknowledged","code":49})", job, "0:1531"),
        same(R"({"kind":"acknowledgedNotExecuted"})", job, "0:06!"),
        same(R"({"kind":"wrongChecksum"})", asked, "0:" + pairsOf(changed(whole, end - 1, 0xFF))),
        same(R"({"kind":"flippedBit","byte":2,"bit":5})", asked, "0:" + pairsOf(changed(whole, 2, 0x20))),
        same(R"({"kind":"cut","byte":4})", asked, "0:" + good.substr(0, 8)),
        same(R"({"kind":"cut","byte":0})", job, ""),
        same(R"({"kind":"extraBytes","bytes":"00 ff"})", job, "0:0600ff!"),
        same(R"({"kind":"noise","bytes":"aa"})", asked, "0:aa" + good),
        same(R"({"kind":"staleAnswer"})", asked, "0:06"), // of the job before
        same(R"({"kind":"blockRepeated"})", asked, "0:" + good + good + "!"),
        same(R"({"kind":"wrongTerminator"})", asked, "0:" + pairsOf(otherEnd)),
        same(R"({"kind":"wrongLength"})", asked, "0:" + pairsOf(longer)),
        {R"({"kind":"busy","milliseconds":5000})", job, "0:13 5000:06!", "0:cts-dsr+ 5000:cts+dsr+ 5000:06!"},
        {R"({"kind":"busy"})", job, "0:13 disarmed:06!", "0:cts-dsr+ disarmed:cts+dsr+ disarmed:06!"},
        same(R"({"kind":"slow","milliseconds":20})", request(0x07), "0:15 20:02!"),
        same(R"({"kind":"split","byte":1,"milliseconds":30})", request(0x07), "0:15 30:02!"),
        same(R"({"kind":"connectionClosed"})", job, "0:close"),
        same(R"({"kind":"connectionClosed","at":"afterwards"})", job, "0:06! 0:close"),
        same(R"({"kind":"connectionReset","at":"request"})", job, "0:reset"),
        same(R"({"kind":"halfOpen"})", job, "0:abandon"),
        {R"({"kind":"powerLoss","milliseconds":700})", job, "0:refuse700 0:reset",
         "0:forget 0:cts-dsr- 700:cts+dsr+"},
        {R"({"kind":"powerLoss","at":"request"})", job, "0:reset", "0:forget 0:cts-dsr- 0:cts+dsr+"},
        same(R"({"kind":"diskFull"})", request(0x29, {"0"}), "0:1533!"),
        same(R"({"kind":"paperOut"})", request(0x32, {"0", "text"}), "0:1531!"),
        {R"({"kind":"ctsOff","milliseconds":900})", job, "0:06!", "0:cts-dsr+ 0:06! 900:cts+dsr+"},
        {R"({"kind":"dsrOff","milliseconds":900})", job, "0:06!", "0:cts+dsr- 0:06! 900:cts+dsr+"},
    };
}

bool isOfSerialLine(std::string_view fault)
{
    return fault.find("ctsOff") != std::string_view::npos || fault.find("dsrOff") != std::string_view::npos;
}

// Over both links: the steps, that the trace names the fault, that it ends, and that a day afterwards is the
// day of a printer that has never been armed.
TEST(DisturbedSession, DoesWhatEachKindSaysAndIsThenAsIfNothingHadBeen)
{
    for (const CodePage link : {CodePage::windows1250, CodePage::cp852}) {
        const std::string dayOfAFreshOne = TriedPrinter(link).sellForADay();
        for (const Expected& expected : expectations()) {
            SCOPED_TRACE(expected.fault);
            TriedPrinter tried(link);
            tried.heard(job);
            tried.arm(expected.fault);
            EXPECT_EQ(textOf(tried.send(expected.bytes)),
                      link == CodePage::cp852 ? expected.onSerialLine : expected.overTcp);
            const bool isIdle = link == CodePage::windows1250 && isOfSerialLine(expected.fault);
            EXPECT_EQ(tried.last().faults.size(), 1U);
            EXPECT_NE(tried.station.faults.list().front().hasEnded, isIdle);
            tried.station.faults.disarmAll();
            if (expected.bytes ==
                job) { // a printer that waits for the rest of a reply's answer hears no probe
                EXPECT_EQ(bytesOf(tried.send("\x11")), "\x11");
            }
            EXPECT_EQ(tried.sellForADay(), dayOfAFreshOne);
        }
    }
}

// The second block of an upload is accepted or refused as a request is.
TEST(DisturbedSession, DoesTheSameToABlockOfAnUpload)
{
    for (const CodePage link : {CodePage::windows1250, CodePage::cp852}) {
        const std::string dayOfAFreshOne = TriedPrinter(link).sellForADay();
        for (const Expected& expected : expectations()) {
            if (expected.bytes != job) {
                continue;
            }
            SCOPED_TRACE(expected.fault);
            TriedPrinter tried(link);
            tried.heard(request(0xD2, {"1", "0"}));
            tried.heard(blockOf("first", '\x17'));
            tried.arm(expected.fault);
            EXPECT_EQ(textOf(tried.send(blockOf("second", '\x17'))),
                      link == CodePage::cp852 ? expected.onSerialLine : expected.overTcp);
            EXPECT_EQ(tried.last().faults.size(), 1U);
            tried.station.faults.disarmAll();
            EXPECT_EQ(tried.sellForADay(), dayOfAFreshOne);
        }
    }
}

// Whichever was armed first.
TEST(DisturbedSession, EndsTheLinkBehindAllThatOthersMakeOfTheAnswer)
{
    const std::string end = R"({"kind":"connectionClosed","at":"afterwards"})";
    const std::vector<std::pair<std::string, std::string>> others = {
        {R"({"kind":"acknowledgeLate","milliseconds":40})", "40:1502! 40:close"},
        {R"({"kind":"acknowledgeTwice","milliseconds":50})", "0:1502! 50:1502 50:close"},
        {R"({"kind":"slow","milliseconds":20})", "0:15 20:02! 20:close"},
        {R"({"kind":"busy","milliseconds":70})", "0:13 70:1502! 70:close"},
    };
    for (const auto& [other, steps] : others) {
        for (const bool comesFirst : {true, false}) {
            TriedPrinter tried(CodePage::windows1250);
            tried.arm(comesFirst ? other : end);
            tried.arm(comesFirst ? end : other);
            EXPECT_EQ(textOf(tried.send(request(0x07))), steps) << other << comesFirst;
        }
    }
}

// The line goes off before the answer, however late that comes.
TEST(DisturbedSession, HoldsALineOffFromTheRequestOn)
{
    TriedPrinter tried(CodePage::cp852);
    tried.arm(R"({"kind":"ctsOff","milliseconds":900})");
    tried.arm(R"({"kind":"acknowledgeLate","milliseconds":40})");
    EXPECT_EQ(textOf(tried.send(job)), "0:cts-dsr+ 40:06! 900:cts+dsr+");
}

TEST(DisturbedSession, HasAnExpectationForEveryKind)
{
    std::vector<std::string_view> kinds;
    for (const Expected& expected : expectations()) {
        kinds.push_back(ruleOf(faultFromJson(nlohmann::ordered_json::parse(expected.fault)).kind).name);
    }
    for (const FaultRule& rule : faultRules) {
        if (rule.kind != FaultKind::connectionRefused) { // it has no exchange
            EXPECT_THAT(kinds, testing::Contains(rule.name));
        }
    }
}

TEST(DisturbedSession, IsAsEverWhenItsFaultMeetsNothing)
{
    TriedPrinter tried(CodePage::windows1250);
    tried.arm(R"({"kind":"silence","command":"fiscalization"})");
    EXPECT_EQ(tried.sellForADay(), TriedPrinter(CodePage::windows1250).sellForADay());
}

class DisturbedSale : public testing::Test
{
protected:
    DisturbedSale()
    {
        till.heard(request(0x29, {"0"}));
        till.heard(request(0x20, {"0", "1", "0", "0", "1", "0"}));
        before = linesOfReceipt();
    }
    [[nodiscard]] std::size_t linesOfReceipt() const
    {
        return till.station.printer.state().receipt->document.lines.size();
    }

    TriedPrinter till{CodePage::windows1250};
    std::size_t before = 0;
    const std::string sold = item(0x24, "Chlieb", "2.00");
};

TEST_F(DisturbedSale, SellsTwiceWhenTheAcknowledgeIsLostAndTheLinkSendsAgain)
{
    till.arm(R"({"kind":"acknowledgeLost","command":"itemSale"})");
    EXPECT_EQ(till.heard(sold), "");
    EXPECT_TRUE(till.last().isExecuted && till.last().isCommitted && !till.last().isAcknowledged);
    EXPECT_EQ(bytesOf(till.send("\x11", seconds(3))), "\x11");
    EXPECT_EQ(till.heard(sold), accepted);
    EXPECT_EQ(till.last().repeatOf, till.last().number - 2);
    EXPECT_EQ(linesOfReceipt(), before + 2);
}

TEST_F(DisturbedSale, SellsNothingThatIsLostOrOnlyAcknowledged)
{
    till.arm(R"({"kind":"requestLost"})");
    EXPECT_EQ(till.heard(sold), "");
    EXPECT_FALSE(till.last().isExecuted);
    EXPECT_THAT(till.last().fields, testing::Contains("Chlieb"));
    till.arm(R"({"kind":"acknowledgedNotExecuted"})");
    EXPECT_EQ(till.heard(sold), accepted);
    EXPECT_TRUE(!till.last().isExecuted && !till.last().isCommitted && till.last().isAcknowledged);
    EXPECT_EQ(linesOfReceipt(), before);
}

TEST_F(DisturbedSale, MeetsFaultsUponWhatThePrinterDoesNotKnow)
{
    till.arm(R"({"kind":"refuse","code":49,"command":"3a"})");
    EXPECT_EQ(till.heard(sold), accepted);
    EXPECT_EQ(till.heard(request(0x3A)), "\x15\x31");
    EXPECT_EQ(till.heard(request(0x3A)), refused(Refusal::unknownCommand));
}

TEST_F(DisturbedSale, GoesOnWithAReceiptAfterThePowerLoss)
{
    till.takePaper();
    till.arm(R"({"kind":"powerLoss","at":"request","command":"itemSale"})");
    till.heard(sold);
    EXPECT_THAT(till.takePaper(), testing::ElementsAre(testing::HasSubstr("POWER LOST")));
    EXPECT_EQ(linesOfReceipt(), before + 1); // that the power was lost
    till.arm(R"({"kind":"powerLoss","at":"answer","command":"itemSale","milliseconds":1000})");
    till.heard(sold);
    EXPECT_EQ(linesOfReceipt(), before + 3);
    EXPECT_EQ(till.heard(sold), ""); // it has no power yet
    EXPECT_EQ(bytesOf(till.send(sold, seconds(1))), accepted);
}

TEST_F(DisturbedSale, FindsPaperCoverAndDrawerAsTheyWereAfterThePowerLoss)
{
    till.station.printer.changeHardware({.paperIsOut = true,
                                         .paperIsLow = true,
                                         .coverIsOpen = true,
                                         .drawerIsOpen = true,
                                         .display = "2.00",
                                         .operatorDisplay = "Chlieb"});
    till.arm(R"({"kind":"powerLoss","command":"itemSale"})");
    till.heard(sold);
    const Hardware& hardware = *till.station.printer.state().hardware;
    EXPECT_TRUE(hardware.paperIsOut && hardware.paperIsLow);
    EXPECT_TRUE(hardware.coverIsOpen && hardware.drawerIsOpen);
    EXPECT_EQ(hardware.display + hardware.operatorDisplay, "");
}

TEST_F(DisturbedSale, GoesOnWithoutPaperInAReceiptButBeginsNone)
{
    till.arm(R"({"kind":"paperOut","requests":10})");
    EXPECT_EQ(till.heard(sold), accepted);
    EXPECT_EQ(till.heard(request(0x2B, {"0", "text"})), accepted);
    EXPECT_EQ(till.heard(request(0x20, {"0", "1", "0", "0", "1", "0"})), refused(Refusal::outOfPaper));
    till.station.faults.disarmAll();
    EXPECT_EQ(till.heard(request(0x20, {"0", "1", "0", "0", "1", "0"})), accepted);
}

TEST_F(DisturbedSale, KnowsNoTryOfARefusedCallForANewOne)
{
    TriedPrinter serial(CodePage::cp852);
    serial.arm(R"({"kind":"refuse","code":49,"calls":1})");
    std::string heard;
    for (int count = 0; count < 4; ++count) {
        heard += pairsOf(serial.heard(job)) + " ";
    }
    EXPECT_EQ(heard, "1531 1531 1531 06 ");
}

TEST_F(DisturbedSale, EndsWithItsCallThoughAPersonRepeatsItOverTcp)
{
    for (const char* kind : {"refuse", "executedNotAcknowledged"}) {
        till.arm(std::string(R"({"code":49,"calls":1,"kind":")") + kind + R"("})");
        EXPECT_EQ(bytesOf(till.send(job, seconds(3))), "\x15\x31");
        EXPECT_EQ(bytesOf(till.send(job, seconds(3))), accepted);
        EXPECT_EQ(till.last().attempt, 1);
    }
}

TEST(DisturbedReply, HasSoManyDamagedBlocksWithTheirRepeats)
{
    const std::string whole = reply();
    const std::string bad = changed(whole, whole.size() - 1, 0xFF);
    TriedPrinter till(CodePage::windows1250);
    till.arm(R"({"kind":"wrongChecksum","blocks":2})");
    EXPECT_EQ(till.heard(asked), bad);
    EXPECT_EQ(till.heard("\x15"), bad);
    EXPECT_EQ(till.heard("\x15"), whole);
    EXPECT_EQ(till.heard("\x03"), "");
    EXPECT_TRUE(till.last().isTaken);
}

class ProbedPrinter : public testing::Test
{
protected:
    std::string probed(milliseconds after = milliseconds(10)) { return bytesOf(till.send("\x11", after)); }

    TriedPrinter till{CodePage::windows1250};
};

TEST_F(ProbedPrinter, IsBusyForItsTime)
{
    till.arm(R"({"kind":"busy","milliseconds":5000})");
    till.heard(job);
    EXPECT_EQ(probed(seconds(3)), "\x13");
    EXPECT_EQ(probed(seconds(2)), "\x11");
}

TEST_F(ProbedPrinter, IsBusyForEverUntilItIsDisarmed)
{
    till.arm(R"({"kind":"busy"})");
    till.heard(job);
    EXPECT_EQ(probed(std::chrono::hours(2)), "\x13");
    till.station.faults.disarmAll();
    EXPECT_EQ(probed(), "\x11");
}

TEST_F(ProbedPrinter, SaysOnceThatItIsBusyForTwoReasons)
{
    till.arm(R"({"kind":"busy","milliseconds":5000})");
    till.arm(R"({"kind":"busy","milliseconds":3000})");
    EXPECT_EQ(textOf(till.send(job)), "0:13 8000:06!");
    EXPECT_EQ(probed(seconds(7)), "\x13");
    EXPECT_EQ(probed(seconds(1)), "\x11");
}

TEST_F(ProbedPrinter, IsSilentUntilTheNextRequest)
{
    till.arm(R"({"kind":"silence"})");
    till.heard(job);
    EXPECT_EQ(probed(seconds(3)), "");
    EXPECT_EQ(till.heard(job), accepted);
    EXPECT_EQ(probed(), "\x11");
}

TEST_F(ProbedPrinter, SaysWhatItIsToldWhileItsAnswerIsLost)
{
    till.arm(R"({"kind":"acknowledgeLost","probes":"busy"})");
    till.heard(job);
    EXPECT_EQ(probed(), "\x13");
}

TEST_F(ProbedPrinter, LosesAConnectionAsItIsMade)
{
    till.arm(R"({"kind":"connectionReset","at":"connection"})");
    EXPECT_EQ(textOf(till.session.greet()), "0:reset");
    EXPECT_EQ(textOf(till.session.greet()), "");
}

} // namespace
} // namespace virtual_printer
