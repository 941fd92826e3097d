// A link that another thread closes while calls run: each ends with its present step and with the code of a
// closed link; what is answered within its step ends well.
#include "tests/unit/tcp_driver_fixture.h"

#include <array>

namespace telvofm::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

constexpr std::int32_t closedLink = -10201;
constexpr std::string_view request = "\x1C\x01\xE0\x04";

struct ExchangeCase
{
    const char* name;
    void (*run)(TcpDriver&);
    std::string answer;
};

std::ostream& operator<<(std::ostream& out, const ExchangeCase& exchange)
{
    return out << exchange.name;
}

class TcpClosing : public TcpDriverTest, public ::testing::WithParamInterface<ExchangeCase>
{
protected:
    void interruptDuring(const char* call, int before = 0)
    {
        network().meanwhile(
            call, [this] { driver.interrupt(); }, before);
    }
    std::int32_t codeOfExchange()
    {
        return codeOf([&] { GetParam().run(driver); });
    }
};

INSTANTIATE_TEST_SUITE_P(
    EachExchange, TcpClosing,
    ::testing::Values(ExchangeCase{"sendCommand", [](TcpDriver& link) { link.sendCommand(request); }, {ack}},
                      ExchangeCase{"sendBlocks", [](TcpDriver& link) { link.sendBlocks("A", true); }, {ack}},
                      ExchangeCase{"query", [](TcpDriver& link) { link.query(request); }, block("abc", etx)},
                      ExchangeCase{"queryStrict", [](TcpDriver& link) { link.queryStrict(request); },
                                   block("abc", etx)}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(TcpClosing, AnExchangeThatHadToWaitForItsTurnSendsNothing)
{
    driver.interrupt();
    network().play({arrive(GetParam().answer)});
    EXPECT_EQ(codeOfExchange(), closedLink);
    EXPECT_THAT(network().calls, ElementsAre());
}

TEST_P(TcpClosing, ASilentStepIsTheLastAndNotProbed)
{
    interruptDuring("wait 3000");
    network().play({silence, arrive(GetParam().answer)});
    EXPECT_EQ(codeOfExchange(), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
    EXPECT_THAT(network().calls, Not(Contains("send 11")));
}

TEST_P(TcpClosing, ABusyByteIsTheLast)
{
    interruptDuring("wait 3000", 1);
    network().play({arrive("\x13"), arrive("\x13"), arrive(GetParam().answer)});
    EXPECT_EQ(codeOfExchange(), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
}

TEST_P(TcpClosing, AnAnswerWithinTheStepEndsTheExchangeWell)
{
    interruptDuring("wait 3000");
    network().play({arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
}

TEST_P(TcpClosing, ALinkThatIsOpenedAgainIsAsGoodAsNew)
{
    driver.interrupt();
    driver.cut();
    driver.close();
    driver.open();
    network().play({silence, arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
}

class TcpClosingInsideAReply : public TcpDriverTest
{
protected:
    void interruptDuringWait(int before = 0)
    {
        network().meanwhile(
            "wait", [this] { driver.interrupt(); }, before);
    }
    std::int32_t codeOfQuery()
    {
        return codeOf([&] { driver.query(request); });
    }
};

TEST_F(TcpClosingInsideAReply, ABlockThatTricklesIsNotWaitedFor)
{
    const std::string reply = block("abcdef", etx);
    interruptDuringWait(1);
    network().play({arrive(reply.substr(0, 3)), arrive(reply.substr(3, 1)), arrive(reply.substr(4))});
    EXPECT_EQ(codeOfQuery(), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
}

TEST_F(TcpClosingInsideAReply, GoodBlocksWithoutEndAreLeftAfterTheNext)
{
    interruptDuringWait(1);
    const std::string good = block("abc", etb);
    network().play({arrive(good), arrive(good), arrive(good), arrive(good)});
    EXPECT_EQ(codeOfQuery(), closedLink);
    EXPECT_EQ(network().events.size(), 2U);
}

TEST_F(TcpClosingInsideAReply, BytesWithoutEndBetweenBlocksAreLeft)
{
    interruptDuringWait(1);
    const std::string chatter(50, 'x');
    network().play({arrive(block("abc", etb)), arrive(chatter), arrive(chatter)});
    EXPECT_EQ(codeOfQuery(), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
}

// The third damage decides the exchange, but not what becomes of a call whose link is closed.
TEST_F(TcpClosingInsideAReply, SilenceAfterTheThirdDamageIsAClosedLink)
{
    const std::string damaged = damagedBlock("A", etx);
    interruptDuringWait(3);
    network().play({arrive(damaged), arrive(damaged), arrive(damaged), silence});
    EXPECT_EQ(codeOfQuery(), closedLink);
    EXPECT_THAT(network().events, ::testing::IsEmpty());
}

TEST_F(TcpClosingInsideAReply, AnUploadSendsNoOtherBlock)
{
    interruptDuringWait();
    network().play({arrive({ack}), arrive({ack})});
    EXPECT_EQ(codeOf([&] { driver.sendBlocks(std::string(257, 'x'), true); }), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
    EXPECT_EQ(network().sends, 2) << "one block and its checksum byte";
}

class TcpClosingBesideRawAccess : public TcpDriverTest
{
protected:
    std::int64_t readRaw() { return driver.readRaw(buffer.data(), 300, &buffer); }

    std::array<unsigned char, 300> buffer{};
};

TEST_F(TcpClosingBesideRawAccess, ASilentStepIsTheLast)
{
    network().meanwhile("wait", [this] { driver.interrupt(); });
    network().play({silence, arrive("x")});
    EXPECT_EQ(codeOf([&] { readRaw(); }), closedLink);
    EXPECT_THAT(network().calls, ElementsAre("wait 3000"));
}

TEST_F(TcpClosingBesideRawAccess, ABusyByteIsTheLast)
{
    network().meanwhile("wait", [this] { driver.interrupt(); });
    network().play({arrive("\x13"), arrive("x")});
    EXPECT_EQ(codeOf([&] { readRaw(); }), closedLink);
    EXPECT_EQ(network().events.size(), 1U);
}

TEST_F(TcpClosingBesideRawAccess, APrinterThatNeverStopsIsLeftWithWhatHasCome)
{
    network().meanwhile(
        "wait", [this] { driver.interrupt(); }, 1);
    network().play({arrive(std::string(10, 'x')), arrive(std::string(10, 'x')), arrive("x")});
    EXPECT_EQ(readRaw(), 11);
    EXPECT_EQ(network().events.size(), 1U);
}

TEST_F(TcpClosingBesideRawAccess, CuttingShutsTheConnectionDownAndLeavesTheSocket)
{
    driver.cut();
    EXPECT_THAT(network().takeCalls(), ElementsAre("shut down"));
    driver.close();
    EXPECT_THAT(network().takeCalls(), ElementsAre("close", "cleanUp"));
}

// The platform reports as many bytes as it took, which is a success.
TEST_F(TcpClosingBesideRawAccess, AWriteThatIsCutOffIsNoSuccess)
{
    network().meanwhile("send", [this] {
        driver.interrupt();
        driver.cut();
    });
    EXPECT_EQ(codeOf([&] { driver.writeRaw("abc"); }), closedLink);
}

TEST_F(TcpClosingBesideRawAccess, AWriteThatIsOnlyInterruptedEndsWell)
{
    network().meanwhile("send", [this] { driver.interrupt(); });
    EXPECT_EQ(driver.writeRaw("abc"), 3U);
}

} // namespace
} // namespace telvofm::test
