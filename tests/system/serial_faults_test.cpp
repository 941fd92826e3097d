// What goes wrong on a serial line. After each fault the next call works, or says that it does not.
#include "tests/system/serial_link_fixture.h"
#include "tests/unit/bytes.h"

#include <csignal>
#include <sys/time.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

class SerialFaults : public SerialLinkTest
{
protected:
    void TearDown() override
    {
        destroyResultObject(journal);
        SerialLinkTest::TearDown();
    }

    int fetchJournal() { return getJournal_ResultObject(1, journal); }

    ResultObject* journal = createResultObject();
};

TEST_F(SerialFaults, WithoutClearToSendNothingIsWritten)
{
    printer.setLines(false, true);
    EXPECT_EQ(printJobCancel(1), -10103);
    EXPECT_EQ(fetchJournal(), -10103);
    const unsigned char byte = 'x';
    EXPECT_EQ(rawWrite(&byte, 1), -1);
    EXPECT_TRUE(printer.hearsNothing());
    printer.setLines(true, true);
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, NoiseBeforeAReplyIsSkipped)
{
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send("\xFF\x5A\x11\x13");
        line.send(block("reply", etx));
        receiveBytes(line, 1);
    });
    EXPECT_EQ(fetchJournal(), 0);
    EXPECT_STREQ(getResultObjectString(journal), "reply");
    playing.wait();
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, NoiseBeforeAnAcknowledgeByteIsARefusalAndTheRequestIsSentAgain)
{
    auto requests = printer.play([](wire::Connection& line) {
        const auto first = receiveRequest(line);
        line.send(bytes({0xFF, ack}));
        const bool isSame = receiveRequest(line) == first;
        line.send("\x06");
        return isSame;
    });
    EXPECT_EQ(printJobCancel(1), 0);
    EXPECT_TRUE(requests.get());
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, NoiseBeforeAReplyForAFileIsAnErrorAtOnce)
{
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send("Z");
    });
    EXPECT_EQ(saveRAMMP(1, "password", folder.file("memory").c_str()), -10002);
    playing.wait();
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, AReplyDamagedThreeTimesIsRefused)
{
    auto answers = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        std::string received;
        for (int time = 0; time < 3; ++time) {
            line.send(damagedBlock("reply", etx));
            received += receiveBytes(line, 1);
        }
        line.send(":");
        return received;
    });
    EXPECT_EQ(fetchJournal(), -10002);
    EXPECT_EQ(answers.get(), std::string(3, nak));
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, TheThirdErrorCodeIsReturned)
{
    const auto playing = printer.play([](wire::Connection& line) {
        for (const int code : {9, 10, 11}) {
            receiveRequest(line);
            line.send(bytes({nak, code}));
        }
    });
    EXPECT_EQ(printJobCancel(1), 11);
    playing.wait();
    expectThatTheNextCallWorks();
}

TEST_F(SerialFaults, AHangUpInsideAReplyEndsTheCallAtOnceAndTheNextOnesTellTheTruth)
{
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send(block("reply", etx).substr(0, 4));
        std::this_thread::sleep_for(100ms);
        line.close();
    });
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(fetchJournal(), -10201);
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
    EXPECT_EQ(printJobCancel(1), -10201);
    EXPECT_EQ(fetchJournal(), -10201);
    unsigned char byte = 'x';
    EXPECT_EQ(rawWrite(&byte, 1), -1);
    EXPECT_EQ(rawRead(&byte, 1, &byte), -1);

    SerialPrinter another(folder.file("lines of another"));
    closeFM();
    ASSERT_EQ(openFM(another.name().c_str()), 0);
    const auto accepting = another.play([](wire::Connection& line) {
        receiveRequest(line);
        line.send("\x06");
    });
    EXPECT_EQ(printJobCancel(1), 0);
}

TEST_F(SerialFaults, AHangUpWhileTheAnswerIsAwaitedEndsTheCallAtOnce)
{
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        line.close();
    });
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(printJobCancel(1), -10201);
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
}

TEST_F(SerialFaults, AHangUpWhileThePrinterIsNotReadyEndsTheCall)
{
    printer.setLines(true, false);
    auto call = std::async(std::launch::async, printJobCancel, 1);
    EXPECT_EQ(call.wait_for(100ms), std::future_status::timeout);
    printer.line().close();
    ASSERT_EQ(call.wait_for(10s), std::future_status::ready);
    EXPECT_EQ(call.get(), -10201);
}

void ignoreSignal(int /*number*/) {}

// A host may have timers of its own; their signals interrupt every wait.
TEST_F(SerialFaults, SignalsDoNotDisturbAWait)
{
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    // They are meant for the caller's thread: the printer's begins with them blocked.
    pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
    const auto playing = printer.play([](wire::Connection& line) {
        receiveRequest(line);
        std::this_thread::sleep_for(300ms);
        line.send(block("reply", etx));
        receiveBytes(line, 1);
    });
    pthread_sigmask(SIG_UNBLOCK, &alarm, nullptr);
    struct sigaction handling = {};
    handling.sa_handler = ignoreSignal; // without SA_RESTART
    struct sigaction before = {};
    sigaction(SIGALRM, &handling, &before);
    const itimerval every = {.it_interval = {0, 2000}, .it_value = {0, 2000}};
    setitimer(ITIMER_REAL, &every, nullptr);
    EXPECT_EQ(fetchJournal(), 0);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_STREQ(getResultObjectString(journal), "reply");
}

} // namespace
} // namespace telvofm::test
