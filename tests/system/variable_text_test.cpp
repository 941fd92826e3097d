// The text that getVariableStr returns: how long it lives, and for whom.
#include "telvofm.h"
#include "tests/system/replying_printer.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

namespace telvofm::test {
namespace {

// The value of each variable is its own code behind a word; the variable "none" does not exist.
void serveVariables(wire::Connection& connection)
{
    constexpr std::size_t head = 3;
    while (const auto request = receiveRequest(connection)) {
        const std::string code = request->substr(head, request->size() - head - 2);
        if (code == "none") {
            connection.send(bytes({nak, 9}));
        } else {
            sendReply(connection, "is " + code);
        }
    }
}

class VariableText : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOff();
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
    }
    void TearDown() override { closeFM(); }

    PrinterThread printer{serveVariables};
};

TEST_F(VariableText, OutlivesTheCallsOfOtherThreads)
{
    const char* const mine = getVariableStr(1, "A");
    std::string theirs;
    std::thread([&theirs] { theirs = getVariableStr(1, "B"); }).join();
    EXPECT_EQ(theirs, "is B");
    EXPECT_STREQ(mine, "is A");
}

TEST_F(VariableText, OutlivesOtherExportsAndTheSession)
{
    const char* const text = getVariableStr(1, "a variable too long for the short form of a string ");
    const std::string copy = text;
    std::array<char, 8> other;
    EXPECT_EQ(getVariable(1, "B", other.data(), other.size()), 0);
    closeFM();
    EXPECT_EQ(text, copy);
}

TEST_F(VariableText, IsErrorAfterARefusalAndWithoutAPrinter)
{
    EXPECT_STREQ(getVariableStr(1, "none"), "Error");
    EXPECT_STREQ(getVariableStr(1, "A"), "is A");
    closeFM();
    EXPECT_STREQ(getVariableStr(1, "A"), "Error");
}

} // namespace
} // namespace telvofm::test
