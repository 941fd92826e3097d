// What a session takes of memory, and when it gives that back.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/limited_memory.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

class MemoryOfSessions : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }
};

TEST_F(MemoryOfSessions, IsNotWantedForClosing)
{
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    withAllocations(0, closeFM);
    EXPECT_EQ(printJobCancel(1), -1);
}

TEST_F(MemoryOfSessions, IsGivenBackByAClosing)
{
    const wire::Listener refusing(false);
    const std::string address = "127.0.0.1:" + std::to_string(refusing.port());
    const auto heldAfterAnother = [&address] {
        EXPECT_EQ(openFM(address.c_str()), -1); // which leaves a session
        closeFM();
        return piecesHeld();
    };
    const long held = heldAfterAnother();
    EXPECT_EQ(heldAfterAnother(), held);
    EXPECT_EQ(heldAfterAnother(), held);
}

TEST_F(MemoryOfSessions, IsGivenBackWhenAHeldLinkIsOpenedAgain)
{
    const wire::Listener refusing(false);
    EXPECT_EQ(openFM(("127.0.0.1:" + std::to_string(refusing.port())).c_str()), -1);
    const auto heldAfterAnother = [] {
        EXPECT_EQ(openFMBaud("COM1", 9600), -1);
        return piecesHeld();
    };
    const long held = heldAfterAnother();
    EXPECT_EQ(heldAfterAnother(), held);
    EXPECT_EQ(heldAfterAnother(), held);
    closeFM();
}

// What was closed for it is not held beside it.
TEST_F(MemoryOfSessions, OfALinkThatWasOpenedAgainIsGivenBackByTheClosing)
{
    const wire::Listener refusing(false);
    const std::string address = "127.0.0.1:" + std::to_string(refusing.port());
    const auto heldAfterAnother = [&address] {
        EXPECT_EQ(openFM(address.c_str()), -1);
        EXPECT_EQ(openFMBaud("COM1", 9600), -1);
        closeFM();
        return piecesHeld();
    };
    heldAfterAnother();
    const long held = heldAfterAnother();
    EXPECT_EQ(heldAfterAnother(), held);
    EXPECT_EQ(heldAfterAnother(), held);
}

// A port that is opened again is closed first, wherever its session was.
TEST_F(MemoryOfSessions, IsGivenBackWhenAPortIsOpenedAgain)
{
    const OwnFolder folder;
    const std::string first = "COM" + folder.file("first");
    const std::string second = "COM" + folder.file("second");
    const auto heldAfterBoth = [&] {
        for (const std::string& name : {first, second}) {
            EXPECT_EQ(openFM(name.c_str()), -1); // which leaves a session
        }
        return piecesHeld();
    };
    heldAfterBoth();
    const long held = heldAfterBoth();
    EXPECT_EQ(heldAfterBoth(), held);
    EXPECT_EQ(heldAfterBoth(), held);
    closeFM();
    openFM(first.c_str());
    closeFM();
}

} // namespace
} // namespace telvofm::test
