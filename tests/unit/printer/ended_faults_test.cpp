// A fault that is disarmed, and a printer that is reset: nothing of what was before goes on.
#include "tests/unit/printer/tried_printer.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;

class EndedFaults : public testing::TestWithParam<CodePage>
{
protected:
    std::string probed() { return bytesOf(till.send("\x11")); }
    void disarm(std::uint64_t number) { ASSERT_TRUE(till.station.faults.disarm(number)); }

    TriedPrinter till{GetParam()};
    const std::string harmless = request(0xE0);
    const std::string variable = request(0x92, {"LIFE"});
};

TEST_P(EndedFaults, LeaveNoProbeWithoutItsAnswer)
{
    for (const char* fault : {R"({"kind":"silence"})", R"({"kind":"acknowledgeLost","probes":"busy"})",
                              R"({"kind":"acknowledgeLate","milliseconds":60000})", R"({"kind":"busy"})",
                              R"({"kind":"busy","milliseconds":60000})"}) {
        SCOPED_TRACE(fault);
        till.arm(fault);
        till.heard(harmless);
        EXPECT_NE(probed(), "\x11");
        disarm(till.station.faults.list().front().number);
        EXPECT_EQ(probed(), "\x11");
    }
}

TEST_P(EndedFaults, LeaveThePowerOn)
{
    till.arm(R"({"kind":"powerLoss","milliseconds":60000})");
    till.heard(harmless);
    EXPECT_EQ(till.heard(harmless), "");
    disarm(1);
    EXPECT_EQ(till.heard(harmless), accepted);
}

TEST_P(EndedFaults, LeaveThePrinterSwitchedOn)
{
    till.heard(variable);
    EXPECT_EQ(textOf(till.session.switchOff(1, milliseconds(60'000), till.now)),
              "0:forget 0:cts-dsr- 60000:cts+dsr+");
    till.session.switchOff(2, milliseconds(50), till.now);
    EXPECT_EQ(till.heard("\x15"), ""); // the reply is forgotten as well
    EXPECT_EQ(bytesOf(till.send(harmless, milliseconds(100))), "");
    till.session.endFault(1);
    EXPECT_EQ(till.heard("\x15"), "");
    EXPECT_EQ(till.heard(harmless), accepted);
    till.session.switchOff(3, milliseconds(50), till.now);
    EXPECT_EQ(bytesOf(till.send(harmless, milliseconds(49))), "");
    EXPECT_EQ(bytesOf(till.send(harmless, milliseconds(1))), accepted);
}

TEST_P(EndedFaults, LeaveTheRestOfAReplyWhole)
{
    const std::string whole = till.heard(variable);
    till.arm(R"({"kind":"wrongChecksum","blocks":9})");
    EXPECT_NE(till.heard(variable), whole);
    EXPECT_NE(till.heard("\x15"), whole);
    disarm(1);
    EXPECT_EQ(till.heard("\x15"), whole);
}

TEST_P(EndedFaults, OfAnotherRequestChangeNothing)
{
    till.arm(R"({"kind":"refuse","code":9,"command":"payment"})");
    till.arm(R"({"kind":"busy"})");
    till.heard(harmless);
    disarm(1);
    EXPECT_NE(probed(), "\x11");
}

// The first has hit a request, and its end is none of the second's.
TEST_P(EndedFaults, LeaveWhatAnotherOneStillDoes)
{
    till.arm(R"({"kind":"noise","bytes":"aa"})");
    till.heard(harmless);
    till.arm(R"({"kind":"silence"})");
    till.heard(harmless);
    disarm(1);
    EXPECT_EQ(probed(), "");
    till.arm(R"({"kind":"wrongChecksum","blocks":9})");
    const std::string damaged = till.heard(variable);
    disarm(2);
    EXPECT_EQ(till.heard("\x15"), damaged);
    till.heard("\x03");
    till.arm(R"({"kind":"powerLoss","milliseconds":60000})");
    till.heard(harmless);
    disarm(3);
    EXPECT_EQ(till.heard(harmless), "");
}

TEST_P(EndedFaults, OfTwoOnOneRequestLeaveWhatTheOtherDoes)
{
    till.arm(R"({"kind":"silence"})");
    till.arm(R"({"kind":"busy"})");
    till.heard(harmless);
    EXPECT_EQ(probed(), "\x13");
    disarm(2);
    EXPECT_EQ(probed(), "");
}

TEST_P(EndedFaults, ActFromTheNextRequestOnAlsoInTheMiddleOfACall)
{
    const std::string end = request(0x22, {"0", "0"}); // refused: there is no receipt
    till.heard(end);
    till.arm(R"({"kind":"refuse","code":77})");
    EXPECT_EQ(till.heard(end), "\x15\x4D");
}

// The call is over when no further try of it can come, and the fault with it.
TEST_P(EndedFaults, AreThoseWhoseLastCallIsOver)
{
    const auto hasEnded = [this] { return till.station.faults.list().back().hasEnded; };
    const bool isSerial = GetParam() == CodePage::cp852;
    till.arm(R"({"kind":"refuse","code":77,"calls":1})");
    till.heard(harmless);
    EXPECT_EQ(hasEnded(), !isSerial); // which tries twice more
    till.heard(harmless);
    EXPECT_EQ(hasEnded(), !isSerial);
    till.heard(harmless);
    EXPECT_TRUE(hasEnded());
    // An acceptance is the end of the call.
    till.arm(R"({"kind":"acknowledgeTwice","calls":1})");
    till.heard(harmless);
    EXPECT_TRUE(hasEnded());
    // Any other request is, whichever it is; on a serial line silence, too, after which the link gives up.
    till.arm(R"({"kind":"acknowledgeLost","command":"E0","calls":1})");
    till.heard(harmless);
    EXPECT_EQ(hasEnded(), isSerial);
    till.heard(variable);
    EXPECT_TRUE(hasEnded());
    till.heard("\x03");
    // And the end of the connection.
    till.arm(R"({"kind":"acknowledgeLost","calls":1})");
    till.heard(harmless);
    EXPECT_EQ(hasEnded(), isSerial);
    till.session.hasGone();
    EXPECT_TRUE(hasEnded());
}

// What the till sends again by itself is one call: on a serial line what was answered otherwise, over TCP
// silence.
TEST_P(EndedFaults, CountTheCallsAsTheLinkMakesThem)
{
    const bool isSerial = GetParam() == CodePage::cp852;
    till.arm(R"({"kind":"acknowledgeLost","calls":1})");
    EXPECT_EQ(till.heard(harmless), "");
    EXPECT_EQ(bytesOf(till.send(harmless, milliseconds(4000))), isSerial ? accepted : "");
    EXPECT_EQ(till.station.trace.find(2)->attempt, isSerial ? 1 : 2);
    disarm(1);
    till.heard(harmless);
    till.arm(R"({"kind":"refuse","code":77,"calls":1})");
    EXPECT_EQ(till.heard(harmless), "\x15\x4D");
    EXPECT_EQ(bytesOf(till.send(harmless, milliseconds(4000))), isSerial ? "\x15\x4D" : accepted);
}

TEST_P(EndedFaults, AreThoseWhoseUploadIsOver)
{
    till.arm(R"({"kind":"extraBytes","bytes":"aa","command":"loadGHMMC1","calls":1})");
    EXPECT_EQ(till.heard(request(0xD2, {"1", "0"})), "\x06\xAA");
    EXPECT_FALSE(till.station.faults.list().back().hasEnded);
    EXPECT_EQ(till.heard(telvofm::test::blockOf("x", '\x17')), "\x06\xAA");
    EXPECT_FALSE(till.station.faults.list().back().hasEnded);
    till.heard(harmless);
    EXPECT_TRUE(till.station.faults.list().back().hasEnded);
}

TEST_P(EndedFaults, OfAResetPrinterLeaveNothingToBeRepeated)
{
    till.arm(R"({"kind":"acknowledgeLost"})");
    till.heard(harmless);
    till.station.trace.beginAnew();
    till.heard(harmless);
    EXPECT_EQ(till.last().repeatOf, 0U);
}

TEST_P(EndedFaults, OfAResetPrinterLeaveNoReplyAndNoUpload)
{
    till.heard(variable);
    till.station.trace.beginAnew();
    EXPECT_EQ(till.heard("\x15"), "");
    till.heard(request(0xD2, {"1", "0"}));
    till.station.trace.beginAnew();
    EXPECT_EQ(till.heard(telvofm::test::blockOf("x", '\x17')), "");
}

TEST_P(EndedFaults, OfAResetPrinterLeaveNoAnswer)
{
    till.heard(variable);
    till.heard("\x03");
    till.station.trace.beginAnew();
    till.arm(R"({"kind":"staleAnswer"})");
    EXPECT_EQ(till.heard(harmless), accepted);
    EXPECT_THAT(till.last().faults,
                testing::ElementsAre("staleAnswer did nothing: there was no answer before"));
}

const auto bothLinks = testing::Values(CodePage::windows1250, CodePage::cp852);
INSTANTIATE_TEST_SUITE_P(OnBothLinks, EndedFaults, bothLinks);

} // namespace
} // namespace virtual_printer
