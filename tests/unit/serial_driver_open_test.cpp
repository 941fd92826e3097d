// Opening and closing a serial link: the name, the steps in their order, and what each failing step comes to.
#include "tests/unit/serial_driver_fixture.h"

namespace telvofm::test {
namespace {

using ::testing::ElementsAre;

class SerialDriverOpen : public ::testing::Test
{
protected:
    SerialDriverOpen() { resetPort(); }

    static std::string firstCallOfOpening(std::string_view name)
    {
        resetPort();
        SerialDriver driver(name, 57600, StopBits::one);
        driver.open();
        return port().calls.front();
    }

    static std::int32_t codeOfOpening(SerialDriver& driver)
    {
        try {
            driver.open();
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0x7FFFFFFF;
    }
};

TEST_F(SerialDriverOpen, ANameThatBeginsWithComIsPutBehindThePrefix)
{
    EXPECT_EQ(firstCallOfOpening("COM12"), R"(open \\.\COM12 28800)");
    EXPECT_EQ(firstCallOfOpening("COMX"), R"(open \\.\COMX 28800)");
    EXPECT_EQ(firstCallOfOpening("COM/dev/ttyUSB0"), R"(open \\.\COM/dev/ttyUSB0 28800)");
}

TEST_F(SerialDriverOpen, ANameThatHasThePrefixIsOpenedAsGiven)
{
    EXPECT_EQ(firstCallOfOpening(R"(\\.\COM3)"), R"(open \\.\COM3 28800)");
}

TEST_F(SerialDriverOpen, ConstructionTouchesNoPort)
{
    const SerialDriver driver("COM1", 57600, StopBits::one);
    EXPECT_THAT(port().calls, ElementsAre());
}

TEST_F(SerialDriverOpen, SetsThePortUpStepByStep)
{
    SerialDriver driver("COM4", 115200, StopBits::two);
    driver.open();
    EXPECT_THAT(port().calls, ElementsAre(R"(open \\.\COM4 57600)", "line 115200 2", "blocking reads",
                                          "handshake", "characters 0a 04", "mask", "purge", "raise DTR"));
}

TEST_F(SerialDriverOpen, StopBitsAreThoseOfTheLineSettings)
{
    const auto lineWith = [](StopBits stopBits) {
        resetPort();
        SerialDriver driver("COM1", 57600, stopBits);
        driver.open();
        return port().calls.at(1);
    };
    EXPECT_EQ(lineWith(StopBits::one), "line 57600 0");
    EXPECT_EQ(lineWith(StopBits::oneAndHalf), "line 57600 1");
    EXPECT_EQ(lineWith(StopBits::two), "line 57600 2");
}

TEST_F(SerialDriverOpen, EachFailingStepGivesTheCodeOfItsErrorAndLeavesTheLinkClosed)
{
    for (const char* step :
         {"open", "line", "blocking reads", "handshake", "characters", "mask", "purge", "raise DTR"}) {
        for (const auto& [error, code] : {std::pair{2U, -10200}, std::pair{5U, -10201}}) {
            resetPort();
            SerialDriver driver("COM1", 57600, StopBits::one);
            port().fail(step, error);
            EXPECT_EQ(codeOfOpening(driver), code) << step;
            EXPECT_EQ(port().count("close"), std::string_view(step) == "open" ? 0 : 1) << step;
            EXPECT_THROW(driver.writeRaw("x"), Telvo06FMException) << step;
            EXPECT_EQ(port().written(), "") << step;
        }
    }
}

TEST_F(SerialDriverOpen, AFailedOpenDoesNotHinderTheNext)
{
    SerialDriver driver("COM1", 57600, StopBits::one);
    port().fail("handshake", 5);
    EXPECT_EQ(codeOfOpening(driver), -10201);
    driver.open();
    EXPECT_EQ(driver.writeRaw("x"), 1U);
}

TEST_F(SerialDriverOpen, CloseClosesThePortOnce)
{
    SerialDriver driver("COM1", 57600, StopBits::one);
    driver.close();
    EXPECT_THAT(port().calls, ElementsAre());
    driver.open();
    port().calls.clear();
    driver.close();
    driver.close();
    EXPECT_THAT(port().calls, ElementsAre("close"));
}

TEST_F(SerialDriverOpen, AnOpenPortIsClosedBeforeItIsOpenedAgain)
{
    SerialDriver driver("COM1", 57600, StopBits::one);
    driver.open();
    port().calls.clear();
    driver.open();
    EXPECT_EQ(port().calls.at(0), "close");
    EXPECT_EQ(port().calls.at(1), R"(open \\.\COM1 28800)");
}

TEST_F(SerialDriverOpen, APortThatCannotBeOpenedAgainIsNotOpen)
{
    SerialDriver driver("COM1", 57600, StopBits::one);
    driver.open();
    port().fail("open", 2);
    EXPECT_EQ(codeOfOpening(driver), -10200);
    EXPECT_THROW(driver.writeRaw("x"), Telvo06FMException);
    EXPECT_EQ(port().written(), "");
}

TEST_F(SerialDriverOpen, DestructionReleasesThePort)
{
    {
        SerialDriver driver("COM1", 57600, StopBits::one);
        driver.open();
    }
    EXPECT_EQ(port().calls.back(), "close");
}

} // namespace
} // namespace telvofm::test
