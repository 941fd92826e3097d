// What the exports do while no printer is open.
#include "telvofm.h"

#include <gtest/gtest.h>

#include <array>

namespace {

class ClosedSession : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
};

TEST_F(ClosedSession, TheVersionIsKnown)
{
    EXPECT_EQ(getVersion(), 106);
}

TEST_F(ClosedSession, CommandsReturnMinusOne)
{
    EXPECT_EQ(paragonBegin(1, 0, 1, 0, 0, 1, 0), -1);
    EXPECT_EQ(itemSale(1, 0, "Chlieb", 12.50, 'A', 1.5, 8.33, "ks"), -1);
    EXPECT_EQ(itemSale_int(1, 0, nullptr, 0, nullptr, 0, 0, nullptr), -1);
    EXPECT_EQ(itemSale_str(1, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(sendUnspecifiedData("x"), -1);
    EXPECT_EQ(sendUnspecifiedData(nullptr), -1);
}

TEST_F(ClosedSession, AutoTwoLineItemIsOff)
{
    setAutoTwoLineItem(true);
    EXPECT_FALSE(isAutoTwoLineItem());
}

TEST_F(ClosedSession, RawAccessReturnsMinusOne)
{
    std::array<unsigned char, 4> buffer{};
    EXPECT_EQ(rawRead(buffer.data(), 4, &buffer), -1);
    EXPECT_EQ(rawRead(buffer.data(), 4, nullptr), -1);
    EXPECT_EQ(rawWrite(buffer.data(), 4), -1);
}

TEST_F(ClosedSession, ClosingTwiceDoesNothing)
{
    closeFM();
    closeFM();
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(ClosedSession, TheTimeoutHasNowhereToGo)
{
    setTcpTimeout(1);
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(ClosedSession, SerialOpensRefuseOtherNamesWithoutTrying)
{
    EXPECT_EQ(openFMBaud("10.0.0.5", 57600), -1);
    EXPECT_EQ(openFMStopBit("10.0.0.5", 1), -1);
    EXPECT_EQ(openFMBaud(nullptr, 57600), -1);
    std::array<unsigned char, 1> byte{};
    EXPECT_EQ(rawWrite(byte.data(), 1), -1) << "no link may be held";
}

TEST_F(ClosedSession, AnUnknownRateWithoutALinkIsRefused)
{
    EXPECT_EQ(openFMBaud("COM1", 9600), -1);
    EXPECT_EQ(printJobCancel(1), -1);
}

} // namespace
