// Connecting and closing: the name, the addresses in their order, and who cleans up after what.
#include "tests/unit/tcp_driver_fixture.h"

#include <array>

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

class TcpOpen : public ::testing::Test
{
protected:
    void SetUp() override { resetNetwork(); }

    static std::int32_t open(const std::string& name)
    {
        TcpDriver driver(name);
        try {
            driver.open();
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0;
    }

    static std::string resolvedBy(const std::string& name)
    {
        resetNetwork();
        open(name);
        return network().calls.at(1);
    }
};

TEST_F(TcpOpen, SplitsTheNameAtItsFirstColon)
{
    EXPECT_EQ(resolvedBy("10.1.1.5:9100"), "resolve 10.1.1.5 9100");
    EXPECT_EQ(resolvedBy("printer:a:b"), "resolve printer a:b");
    EXPECT_EQ(resolvedBy(":9100"), "resolve  9100");
}

TEST_F(TcpOpen, UsesTheDefaultPortWhenNoneIsGiven)
{
    EXPECT_EQ(resolvedBy("10.1.1.5"), "resolve 10.1.1.5 64000");
    EXPECT_EQ(resolvedBy("10.1.1.5:"), "resolve 10.1.1.5 64000");
    EXPECT_EQ(resolvedBy(""), "resolve  64000");
}

TEST_F(TcpOpen, SaysHostAndPortOnStandardOutput)
{
    ::testing::internal::CaptureStdout();
    open("till-printer:9100");
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "host: till-printer port: 9100\n");
}

TEST_F(TcpOpen, ConnectsToTheFirstAddressThatAccepts)
{
    network().addresses = 3;
    EXPECT_EQ(open("printer"), 0);
    EXPECT_THAT(network().calls, ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1"));
}

TEST_F(TcpOpen, TriesTheAddressesInTheirOrder)
{
    network().addresses = 3;
    network().refusing = {1, 2};
    EXPECT_EQ(open("printer"), 0);
    EXPECT_THAT(network().calls,
                ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1", "close", "create 2",
                            "connect 2", "close", "create 3", "connect 3"));
}

TEST_F(TcpOpen, FailsWhenNoAddressAccepts)
{
    network().addresses = 2;
    network().refusing = {1, 2};
    EXPECT_EQ(open("printer"), -10201);
    EXPECT_THAT(network().calls, ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1",
                                             "close", "create 2", "connect 2", "close", "cleanUp"));
}

TEST_F(TcpOpen, FailsAtOnceWhenASocketCannotBeMade)
{
    network().addresses = 3;
    network().refusing = {1};
    network().withoutSocket = {2};
    EXPECT_EQ(open("printer"), -10201);
    EXPECT_THAT(network().calls, ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1",
                                             "close", "create 2", "cleanUp"));
}

TEST_F(TcpOpen, FailsWhenTheNameDoesNotResolve)
{
    network().addresses = std::nullopt;
    EXPECT_EQ(open("nowhere"), -10201);
    EXPECT_THAT(network().calls, ElementsAre("startUp", "resolve nowhere 64000", "cleanUp"));
}

TEST_F(TcpOpen, CleansNothingUpWhenTheSocketsDoNotStart)
{
    network().startsUp = false;
    EXPECT_EQ(open("printer"), -10201);
    EXPECT_THAT(network().calls, ElementsAre("startUp"));
}

TEST_F(TcpOpen, CloseReleasesOnceAndThenDoesNothing)
{
    TcpDriver driver("printer");
    driver.close();
    EXPECT_THAT(network().takeCalls(), ElementsAre());
    driver.open();
    network().calls.clear();
    driver.close();
    EXPECT_THAT(network().takeCalls(), ElementsAre("close", "cleanUp"));
    driver.close();
    EXPECT_THAT(network().takeCalls(), ElementsAre());
}

TEST_F(TcpOpen, CloseAfterAFailedOpenDoesNothing)
{
    network().refusing = {1};
    TcpDriver driver("printer");
    EXPECT_THROW(driver.open(), Telvo06FMException);
    network().calls.clear();
    driver.close();
    EXPECT_THAT(network().calls, ElementsAre());
}

// Callers close first; a connection that nobody closed stays.
TEST_F(TcpOpen, TheDestructorClosesNothing)
{
    {
        TcpDriver driver("printer");
        driver.open();
        network().calls.clear();
    }
    EXPECT_THAT(network().calls, ElementsAre());
}

// What another connection has left behind is not what this printer says.
TEST_F(TcpOpen, OpenedAgainItReadsNothingOfTheConnectionBefore)
{
    TcpDriver driver("printer");
    std::array<unsigned char, 3> buffer{};
    driver.open();
    network().play({arrive("OLDBYTES")});
    EXPECT_EQ(driver.readRaw(buffer.data(), 1, &buffer), 1);
    driver.close();
    driver.open();
    network().play({arrive("new")});
    EXPECT_EQ(driver.readRaw(buffer.data(), 3, &buffer), 3);
    EXPECT_EQ(buffer, (std::array<unsigned char, 3>{'n', 'e', 'w'}));
}

TEST_F(TcpOpen, AnOpenLinkIsClosedBeforeItIsOpenedAgain)
{
    TcpDriver driver("printer");
    driver.open();
    network().calls.clear();
    driver.open();
    EXPECT_THAT(network().calls,
                ElementsAre("close", "cleanUp", "startUp", "resolve printer 64000", "create 1", "connect 1"));
}

TEST_F(TcpOpen, ALinkThatIsClosedMeanwhileTriesNoOtherAddress)
{
    network().addresses = 2;
    network().refusing = {1};
    TcpDriver driver("printer");
    network().meanwhile("connect", [&driver] { driver.interrupt(); });
    EXPECT_THROW(driver.open(), Telvo06FMException);
    EXPECT_THAT(network().calls,
                ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1", "close", "cleanUp"));
}

TEST_F(TcpOpen, OpensAgainAfterClosing)
{
    TcpDriver driver("printer");
    driver.open();
    driver.close();
    network().calls.clear();
    driver.open();
    EXPECT_THAT(network().calls, ElementsAre("startUp", "resolve printer 64000", "create 1", "connect 1"));
}

} // namespace
} // namespace telvofm::test
