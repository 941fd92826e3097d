// A port that another thread closes while calls run: each ends with its present step and with the code of a
// closed port; what is answered within its step ends well.
#include "tests/unit/serial_driver_fixture.h"

#include <array>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr std::int32_t closedPort = -10103;
constexpr std::string_view request = "\x1C\x01\xE0\x04";
constexpr std::size_t forLong = 100000;

struct ExchangeCase
{
    const char* name;
    void (*run)(SerialDriver&);
    std::string answer;
};

std::ostream& operator<<(std::ostream& out, const ExchangeCase& exchange)
{
    return out << exchange.name;
}

class SerialClosing : public SerialDriverTest, public ::testing::WithParamInterface<ExchangeCase>
{
protected:
    void interruptDuring(const char* call, int before = 0)
    {
        port().meanwhile(
            call, [this] { driver.interrupt(); }, before);
    }
    std::int32_t codeOfExchange()
    {
        return codeOf([&] { GetParam().run(driver); });
    }
};

INSTANTIATE_TEST_SUITE_P(
    EachExchange, SerialClosing,
    ::testing::Values(
        ExchangeCase{"sendCommand", [](SerialDriver& link) { link.sendCommand(request); }, {ack}},
        ExchangeCase{"sendBlocks", [](SerialDriver& link) { link.sendBlocks("A", true); }, {ack}},
        ExchangeCase{"query", [](SerialDriver& link) { link.query(request); }, block("abc", etx)},
        ExchangeCase{"queryStrict", [](SerialDriver& link) { link.queryStrict(request); },
                     block("abc", etx)}),
    [](const auto& instance) { return instance.param.name; });

TEST_P(SerialClosing, AnExchangeThatHadToWaitForItsTurnTouchesNothing)
{
    driver.interrupt();
    port().play({arrive(GetParam().answer)});
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_THAT(port().calls, ::testing::IsEmpty());
}

TEST_P(SerialClosing, APrinterThatIsOffIsNotLookedAtAgain)
{
    // The first look is the one at clear-to-send.
    constexpr int looksBefore = 1500;
    interruptDuring("look", looksBefore);
    port().looks.assign(forLong, onlyCts);
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_EQ(port().count("look"), looksBefore + 1);
    EXPECT_EQ(port().written(), "");
}

TEST_P(SerialClosing, APrinterThatGoesOffInsideTheRequestIsNotLookedAtAgain)
{
    constexpr int looksBefore = 20;
    interruptDuring("look", looksBefore);
    port().looks.assign(3, bothOn);
    port().looks.insert(port().looks.end(), forLong, onlyCts);
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_EQ(port().count("look"), looksBefore + 1);
    EXPECT_EQ(port().written().size(), 2U);
}

TEST_P(SerialClosing, ASilentStepIsTheLast)
{
    port().play({silence(1000ms), silence(1000ms), silence(1000ms), arrive(GetParam().answer)});
    port().meanwhile(
        "read", [this] { driver.interrupt(); }, 2);
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_EQ(port().events.size(), 1U);
}

TEST_P(SerialClosing, ASilentStepIsTheLastAfterACutToo)
{
    port().play({silence(1000ms), silence(1000ms), arrive(GetParam().answer)});
    port().meanwhile(
        "read", [this] { driver.cut(); }, 1);
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_EQ(port().events.size(), 1U);
}

TEST_P(SerialClosing, AnAnswerWithinTheStepEndsTheExchangeWell)
{
    interruptDuring("read");
    port().play({arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
}

TEST_P(SerialClosing, ARequestThatIsBeingWrittenIsWrittenToItsEnd)
{
    interruptDuring("write");
    port().play({arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
}

// Of a request of megabytes the rest would take minutes.
TEST_P(SerialClosing, ARequestThatIsCutOffIsNot)
{
    port().meanwhile(
        "write",
        [this] {
            driver.interrupt();
            driver.cut();
        },
        1);
    EXPECT_EQ(codeOfExchange(), closedPort);
    EXPECT_EQ(port().written().size(), 2U);
}

// Nothing is cut off but a long request: the printer gets the checksum byte, and what acknowledges its reply.
TEST_P(SerialClosing, AnAnswerThatComesWithinTheStepAfterACutEndsTheExchangeWell)
{
    port().meanwhile("read", [this] { driver.cut(); });
    port().play({arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
    if (GetParam().answer != std::string{ack}) {
        EXPECT_EQ(port().written().back(), etx) << "the reply is not acknowledged";
    }
}

TEST_P(SerialClosing, APortThatIsOpenedAgainIsAsGoodAsNew)
{
    driver.interrupt();
    driver.cut();
    driver.close();
    driver.open();
    port().looks.assign(5, onlyCts);
    port().play({silence(15000ms), arrive(GetParam().answer)});
    EXPECT_NO_THROW(GetParam().run(driver));
}

class SerialClosingInsideAReply : public SerialDriverTest
{
protected:
    void interruptDuringRead(int before)
    {
        port().meanwhile(
            "read", [this] { driver.interrupt(); }, before);
    }
    std::int32_t codeOfQuery()
    {
        return codeOf([&] { driver.query(request); });
    }
};

TEST_F(SerialClosingInsideAReply, ABlockThatTricklesIsNotWaitedFor)
{
    const std::string reply = block("abcdef", etx);
    interruptDuringRead(3);
    port().play({arrive(reply.substr(0, 3)), arrive(reply.substr(3, 1)), arrive(reply.substr(4))});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_EQ(port().events.size(), 1U);
}

TEST_F(SerialClosingInsideAReply, StrayBytesWithoutEndBeforeItAreLeft)
{
    interruptDuringRead(50);
    port().play({arrive(std::string(1000, 'x'))});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_EQ(port().count("read 1 15000"), 51);
}

TEST_F(SerialClosingInsideAReply, TheBlockThatComesWithinTheStepBehindAStrayByteEndsTheQueryWell)
{
    interruptDuringRead(1);
    port().play({arrive("x" + block("abc", etx))});
    EXPECT_EQ(driver.query(request), "abc");
}

TEST_F(SerialClosingInsideAReply, AStrayByteThatComesWithinTheStepIsTheLast)
{
    interruptDuringRead(0);
    port().play({arrive("x" + block("abc", etx))});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_EQ(port().count("read 1 15000"), 1);
}

TEST_F(SerialClosingInsideAReply, GoodBlocksWithoutEndAreLeftAfterTheNext)
{
    const std::string good = block("abc", etb);
    interruptDuringRead(1);
    port().play({arrive(good), arrive(good), arrive(good), arrive(good)});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_EQ(port().events.size(), 2U);
}

TEST_F(SerialClosingInsideAReply, BytesWithoutEndBetweenBlocksAreLeft)
{
    interruptDuringRead(20);
    port().play({arrive(block("abc", etb)), arrive(std::string(1000, 'x'))});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_LT(port().count("read 1 15000"), 30);
}

TEST_F(SerialClosingInsideAReply, AByteBetweenBlocksThatComesWithinTheStepIsTheLast)
{
    constexpr int readsOfABlock = 3; // its ":", its length and the rest
    interruptDuringRead(readsOfABlock);
    port().play({arrive(block("abc", etb)), arrive("xx" + block("abc", etx))});
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_EQ(port().count("read 1 15000"), 3) << "two of the block, and one behind it";
}

// The third damage decides the exchange, but not what becomes of a call whose link is closed.
TEST_F(SerialClosingInsideAReply, SilenceAfterTheThirdDamageIsAClosedPort)
{
    constexpr int readsOfABlock = 3; // its ":", its length and the rest
    const std::string damaged = damagedBlock("A", etx);
    port().play({arrive(damaged), arrive(damaged), arrive(damaged), silence(15000ms)});
    interruptDuringRead(3 * readsOfABlock);
    EXPECT_EQ(codeOfQuery(), closedPort);
    EXPECT_THAT(port().events, ::testing::IsEmpty());
}

TEST_F(SerialClosingInsideAReply, AnUploadSendsNoOtherBlock)
{
    interruptDuringRead(0);
    port().play({arrive({ack}), arrive({ack})});
    EXPECT_EQ(codeOf([&] { driver.sendBlocks(std::string(257, 'x'), true); }), closedPort);
    EXPECT_EQ(port().written().size(), 260U) << "one block";
}

TEST_F(SerialDriverTest, ReadRawLeavesAPrinterThatNeverStopsWithWhatHasCome)
{
    std::array<unsigned char, 300> buffer{};
    port().waiting = std::string(1000, 'x');
    port().meanwhile(
        "read", [this] { driver.interrupt(); }, 4);
    EXPECT_EQ(driver.readRaw(buffer.data(), 300, &buffer), 5);
}

TEST_F(SerialDriverTest, RawBytesAreCutOffWhenThePortCloses)
{
    port().meanwhile(
        "write",
        [this] {
            driver.interrupt();
            driver.cut();
        },
        9);
    EXPECT_EQ(codeOf([&] { driver.writeRaw(std::string(1000, 'x')); }), closedPort);
    EXPECT_EQ(port().written().size(), 10U);
}

} // namespace
} // namespace telvofm::test
