// Closing a TCP link beside calls that wait, each in its own way without limit: closeFM is back within a step
// of the wait, and the calls end with the code of a closed link.
#include "telvofm.h"
#include "tests/system/closing_time.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <future>
#include <vector>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr auto step = 3s;
constexpr int closedLink = -10201;
constexpr std::size_t manyMegabytes = 64U << 20U;

class Closing : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }

    // A printer that tells when the call is inside its wait.
    void expectThatClosingEnds(PrinterThread::Dialogue dialogue, const std::function<std::int64_t()>& call,
                               std::int64_t result)
    {
        PrinterThread printer(std::move(dialogue));
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        auto running = std::async(std::launch::async, call);
        isInside.get_future().wait();
        EXPECT_LT(closingTime(), step + margin);
        EXPECT_EQ(running.get(), result);
        EXPECT_EQ(printJobCancel(1), -1);
    }

    static std::int64_t journal()
    {
        ResultObject* const result = createResultObject();
        const int outcome = getJournal_ResultObject(1, result);
        EXPECT_EQ(getResultObjectLength(result), 0);
        destroyResultObject(result);
        return outcome;
    }

    std::promise<void> isInside;
};

TEST_F(Closing, BesideAPrinterThatAnswersEveryProbeWithBusy)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            for (int probe = 0; !receiveBytes(connection, 1).empty(); ++probe) {
                connection.send("\x13");
                if (probe == 0) {
                    isInside.set_value();
                }
            }
        },
        [] { return printJobCancel(1); }, closedLink);
}

TEST_F(Closing, BesideAPrinterThatChattersInFrontOfItsReply)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            connection.send("\x13\x13");
            isInside.set_value();
            while (connection.receive(1, 1ms)) {
                connection.send("\x13\x11\x13");
            }
        },
        journal, closedLink);
}

// The call ends itself, long before it would be cut off and before its answer comes.
TEST_F(Closing, BesideAPrinterThatIsBusyForAMoment)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            isInside.set_value();
            for (int times = 0; times < 50 && connection.receive(1, 50ms); ++times) {
                connection.send("\x13");
            }
            connection.send("\x06");
        },
        [] { return printJobCancel(1); }, closedLink);
}

// Nothing is cut off that ends by itself in time: the printer has done what it says, and the call tells so.
TEST_F(Closing, BesideAnAnswerThatComesWithinTheStepDoesNotTakeIt)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            isInside.set_value();
            EXPECT_EQ(connection.receive(1, 300ms), std::string());
            connection.send("\x06");
            receiveUntilClosed(connection);
        },
        [] { return printJobCancel(1); }, 0);
}

TEST_F(Closing, BesideAReplyOfGoodBlocksWithoutEnd)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            const std::string good = block(std::string(16, 'x'), etb);
            connection.send(good);
            isInside.set_value();
            while (!receiveBytes(connection, 1).empty()) {
                connection.send(good);
            }
        },
        journal, closedLink);
}

TEST_F(Closing, BesideAReplyThatTrickles)
{
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveRequest(connection);
            connection.send(":\xFF");
            isInside.set_value();
            while (connection.receive(1, 200ms)) {
                connection.send("x");
            }
        },
        journal, closedLink);
}

// One waits for the printer, the others for their turn: none of them may take another step.
TEST_F(Closing, BesideCallsThatWaitForTheirTurn)
{
    std::vector<std::future<int>> waiting;
    expectThatClosingEnds(
        [&](wire::Connection& connection) {
            receiveRequest(connection);
            for (int call = 0; call < 4; ++call) {
                waiting.push_back(std::async(std::launch::async, printJobCancel, 1));
            }
            isInside.set_value();
            receiveUntilClosed(connection);
        },
        [] { return printJobCancel(1); }, closedLink);
    for (auto& call : waiting) {
        const int result = call.get();
        EXPECT_TRUE(result == closedLink || result == -1) << result; // -1: it came when all was over
    }
}

TEST_F(Closing, BesideRawBytesThatThePrinterDoesNotRead)
{
    const std::string bytes(manyMegabytes, 'x');
    std::promise<void> isClosed;
    expectThatClosingEnds(
        [&](wire::Connection& connection) {
            receiveBytes(connection, 1);
            isInside.set_value();
            isClosed.get_future().wait_for(step + 2 * margin);
        },
        [&] {
            const auto* start = reinterpret_cast<const unsigned char*>(bytes.data());
            const auto written = rawWrite(start, static_cast<std::int64_t>(bytes.size()));
            isClosed.set_value();
            return written;
        },
        -1);
}

TEST_F(Closing, BesideARequestThatThePrinterDoesNotRead)
{
    const std::string text(manyMegabytes, 'x');
    std::promise<void> isClosed;
    expectThatClosingEnds(
        [&](wire::Connection& connection) {
            receiveBytes(connection, 1);
            isInside.set_value();
            isClosed.get_future().wait_for(step + 2 * margin);
        },
        [&] {
            const int result = destroyParagon(1, 0, text.c_str());
            isClosed.set_value();
            return result;
        },
        closedLink);
}

TEST_F(Closing, BesideARawReadThatWaits)
{
    std::array<unsigned char, 16> buffer{};
    expectThatClosingEnds(
        [this](wire::Connection& connection) {
            receiveBytes(connection, 1); // the probe: the read is in its second step
            isInside.set_value();
            receiveUntilClosed(connection);
        },
        [&] { return rawRead(buffer.data(), buffer.size(), &buffer); }, -1);
}

TEST_F(Closing, BesideARawReadOfBytesWithoutEnd)
{
    constexpr std::int64_t wanted = 1LL << 24U;
    std::vector<unsigned char> buffer(wanted);
    std::int64_t received = 0;
    {
        PrinterThread printer([this](wire::Connection& connection) {
            connection.send("xxxx");
            isInside.set_value();
            while (connection.receive(1, 0ms)) {
                connection.send("x");
            }
        });
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        auto reading =
            std::async(std::launch::async, [&] { return rawRead(buffer.data(), wanted, buffer.data()); });
        isInside.get_future().wait();
        EXPECT_LT(closingTime(), step + margin);
        received = reading.get();
    }
    // -1: the connection was gone before the next byte was looked for, or nothing was open any more.
    EXPECT_TRUE(received == -1 || (received > 0 && received < wanted)) << received;
}

// A session is found by a closing only when its link is open, or has failed to: no connection stays behind.
TEST_F(Closing, BesideAnOpeningLeavesNoConnectionBehind)
{
    constexpr int rounds = 1000;
    wire::Listener listener;
    const std::string address = "127.0.0.1:" + std::to_string(listener.port());
    for (int round = 0; round < rounds; ++round) {
        std::atomic<bool> isOpening = true;
        auto closing = std::async(std::launch::async, [&] {
            while (isOpening) {
                closeFM();
            }
        });
        const int result = openFM(address.c_str());
        isOpening = false;
        closing.get();
        closeFM();
        if (result != 0) {
            continue; // closed before it connected
        }
        wire::Connection connection = listener.accept(5s);
        while (const auto bytes = connection.receive(16, 10s)) {
            ASSERT_FALSE(bytes->empty()) << "a connection stayed open in round " << round;
        }
    }
}

} // namespace
} // namespace telvofm::test
