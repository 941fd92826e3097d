// Host programs with habits of their own: many open files, signals at any time, programs that they start.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/system/started_programs_posix.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>
#include <vector>

namespace telvofm::test {
namespace {

class HostProgram : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }
    void TearDown() override { closeFM(); }
};

TEST_F(HostProgram, MayHaveMoreThan1024OpenFiles)
{
    constexpr rlim_t files = 1100;
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    limit.rlim_cur = 2 * files;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0) << "this machine allows too few open files";
    std::vector<int> opened;
    opened.reserve(files);
    for (rlim_t count = 0; count < files; ++count) {
        opened.push_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    }
    ASSERT_GE(opened.back(), 1024);

    PrinterThread printer(acceptAll);
    EXPECT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(printJobCancel(1), 0);
    closeFM();
    for (const int file : opened) {
        ::close(file);
    }
}

TEST_F(HostProgram, StartsProgramsThatDoNotHaveItsConnection)
{
    PrinterThread printer(acceptAll);
    const auto before = filesOfStartedPrograms();
    EXPECT_EQ(openFM(printer.address().c_str()), 0);
    EXPECT_EQ(filesOfStartedPrograms(), before);
    closeFM();
}

volatile std::sig_atomic_t signalsSeen = 0;

TEST_F(HostProgram, MayBeInterruptedBySignalsWhileItWaits)
{
    struct sigaction action = {};
    action.sa_handler = [](int) { signalsSeen = signalsSeen + 1; };
    struct sigaction before = {};
    ASSERT_EQ(sigaction(SIGALRM, &action, &before), 0);

    PrinterThread printer([](wire::Connection& connection) {
        // The alarms shall meet the thread that waits in the library.
        sigset_t alarms;
        sigemptyset(&alarms);
        sigaddset(&alarms, SIGALRM);
        pthread_sigmask(SIG_BLOCK, &alarms, nullptr);
        receiveRequest(connection);
        receiveBytes(connection, 1); // the probe, which must come in spite of the alarms
        connection.send("\x13");
        connection.send("\x06");
        receiveUntilClosed(connection);
    });
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    const itimerval every20Milliseconds = {{0, 20000}, {0, 20000}};
    const itimerval never = {};
    setitimer(ITIMER_REAL, &every20Milliseconds, nullptr);
    const int result = printJobCancel(1);
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    closeFM();
    EXPECT_EQ(result, 0);
    EXPECT_GT(signalsSeen, 20);
}

} // namespace
} // namespace telvofm::test
