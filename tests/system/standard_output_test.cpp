// The host's standard output, which the library writes lines to: a pipe whose reader has gone, a full pipe, a
// file, a terminal. The host is a child process, because only one can lose its standard output.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

constexpr unsigned int patience = 20; // in seconds: a child that blocks is ended

// What became of a child that ran this: its exit code, or the negative number of the signal that ended it.
template <typename Host>
int outcomeOf(Host host)
{
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGPIPE, SIG_DFL);
        ::alarm(patience);
        ::_exit(host());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

struct Pipe
{
    Pipe() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0); }
    int ends[2] = {-1, -1};
};

void fill(int output)
{
    const int flags = ::fcntl(output, F_GETFL);
    ::fcntl(output, F_SETFL, flags | O_NONBLOCK);
    for (const std::size_t piece : {std::size_t{4096}, std::size_t{1}}) {
        const std::string bytes(piece, '.');
        while (::write(output, bytes.data(), bytes.size()) > 0) {
        }
    }
    ::fcntl(output, F_SETFL, flags);
}

// A terminal hands on what it has taken, and has room once more.
void fillForGood(int terminal)
{
    constexpr int moment = 50; // in milliseconds
    pollfd room = {.fd = terminal, .events = POLLOUT, .revents = 0};
    do {
        fill(terminal);
    } while (::poll(&room, 1, moment) != 0);
}

std::string drain(int pipe)
{
    ::fcntl(pipe, F_SETFL, O_NONBLOCK);
    std::string all;
    std::string piece(4096, '\0');
    for (ssize_t count = 0; (count = ::read(pipe, piece.data(), piece.size())) > 0;) {
        all.append(piece, 0, static_cast<std::size_t>(count));
    }
    return all;
}

class StandardOutput : public ::testing::Test
{
protected:
    void SetUp() override { setLogginOff(); }

    wire::Listener printer; // its queue takes the connections
    std::string address = "127.0.0.1:" + std::to_string(printer.port());
    std::string line = "host: 127.0.0.1 port: " + std::to_string(printer.port()) + "\n";
    Pipe pipe;
};

TEST_F(StandardOutput, GetsExactlyOneLineOfAnOpening)
{
    const OwnFolder folder;
    const std::string file = folder.file("captured");
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDOUT_FILENO);
                  return openFM(address.c_str());
              }),
              0);
    EXPECT_EQ(contentOf(file), line) << "and it is there without a flush of the host's";
}

TEST_F(StandardOutput, ThatIsAFileGetsALineOfAnyLength)
{
    const OwnFolder folder;
    const std::string file = folder.file("captured");
    const std::string host(5000, 'x'); // more than a pipe promises to take
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDOUT_FILENO);
                  return openFM((host + ":1").c_str()) == -1 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(contentOf(file), "host: " + host + " port: 1\n");
}

TEST_F(StandardOutput, ThatIsAPipeGetsALineOfAWholePage)
{
    const std::string host(PIPE_BUF - std::string_view("host:  port: 1\n").size(), 'x');
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  return openFM((host + ":1").c_str()) == -1 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(drain(pipe.ends[0]), "host: " + host + " port: 1\n");
}

TEST_F(StandardOutput, WhoseReaderHasGoneDoesNotEndTheHost)
{
    ::close(pipe.ends[0]);
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  return openFM(address.c_str()) == 0 && openFM(address.c_str()) == 0 ? 0 : 1;
              }),
              0);
}

// The signal would come late when it was only held back.
TEST_F(StandardOutput, WhoseReaderHasGoneLeavesTheHostsSignalsAlone)
{
    ::close(pipe.ends[0]);
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  sigset_t blocked;
                  ::sigemptyset(&blocked);
                  ::sigaddset(&blocked, SIGUSR1);
                  ::sigprocmask(SIG_SETMASK, &blocked, nullptr);
                  ::raise(SIGUSR1);
                  if (openFM(address.c_str()) != 0) {
                      return 1;
                  }
                  sigset_t mask;
                  sigset_t pending;
                  ::sigprocmask(SIG_SETMASK, nullptr, &mask);
                  ::sigpending(&pending);
                  for (int number = 1; number < NSIG; ++number) {
                      const bool expected = number == SIGUSR1;
                      if ((::sigismember(&mask, number) == 1) != expected ||
                          (::sigismember(&pending, number) == 1) != expected) {
                          return number + 1;
                      }
                  }
                  return 0;
              }),
              0);
}

// A host that holds the signal back itself, and has one waiting, finds it as it was.
TEST_F(StandardOutput, ASignalOfTheHostsOwnStaysPending)
{
    ::close(pipe.ends[0]);
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  sigset_t blocked;
                  ::sigemptyset(&blocked);
                  ::sigaddset(&blocked, SIGPIPE);
                  ::sigprocmask(SIG_SETMASK, &blocked, nullptr);
                  ::raise(SIGPIPE);
                  openFM(address.c_str());
                  sigset_t pending;
                  ::sigpending(&pending);
                  return ::sigismember(&pending, SIGPIPE) == 1 ? 0 : 1;
              }),
              0);
}

TEST_F(StandardOutput, ThatIsFullDoesNotBlockAndGetsTheLinesLater)
{
    EXPECT_EQ(outcomeOf([&] {
                  fill(pipe.ends[1]);
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  if (openFM(address.c_str()) != 0 || openFM(address.c_str()) != 0) {
                      return 1;
                  }
                  if (drain(pipe.ends[0]).find('h') != std::string::npos) {
                      return 2;
                  }
                  std::fputs("of the host\n", stdout);
                  std::fflush(stdout);
                  return drain(pipe.ends[0]) == line + line + "of the host\n" ? 0 : 3;
              }),
              0);
}

// One that nothing was written to yet: its buffer is made for the line.
TEST_F(StandardOutput, ThatIsFullAndUnusedGetsTheLineLater)
{
    EXPECT_EQ(outcomeOf([&] {
                  fill(pipe.ends[1]);
                  stdout = ::fdopen(pipe.ends[1], "w");
                  if (openFM(address.c_str()) != 0) {
                      return 1;
                  }
                  if (drain(pipe.ends[0]).find('h') != std::string::npos) {
                      return 2;
                  }
                  std::fflush(stdout);
                  return drain(pipe.ends[0]) == line ? 0 : 3;
              }),
              0);
}

// More lines than the stream has room for, and streams without any room.
TEST_F(StandardOutput, ThatIsFullNeverBlocks)
{
    for (const int buffering : {_IOFBF, _IOLBF, _IONBF}) {
        EXPECT_EQ(outcomeOf([&] {
                      constexpr int openings = 300;
                      const std::string noPrinter = "127.0.0.1:no-such-service";
                      fill(pipe.ends[1]);
                      ::dup2(pipe.ends[1], STDOUT_FILENO);
                      std::setvbuf(stdout, nullptr, buffering, 4096);
                      for (int opening = 0; opening < openings; ++opening) {
                          openFM(noPrinter.c_str());
                          closeFM();
                      }
                      drain(pipe.ends[0]); // for what ends the process, which may flush
                      return 0;
                  }),
                  0)
            << "buffering " << buffering;
    }
}

// What one page more or less decides: a pipe that says it takes bytes takes a page of them for certain.
void readAPage(int pipe)
{
    std::string page(PIPE_BUF, '\0');
    ssize_t missing = PIPE_BUF;
    while (missing > 0) {
        missing -= ::read(pipe, page.data(), static_cast<std::size_t>(missing));
    }
}

// The host's own bytes are not pushed into a pipe that may not take them all; the line follows them.
TEST_F(StandardOutput, WithAPageOfRoomDoesNotBlockOnTheHostsOwnBytes)
{
    EXPECT_EQ(outcomeOf([&] {
                  std::string buffer(200000, '\0');
                  const std::string own(100000, 'o');
                  fill(pipe.ends[1]);
                  readAPage(pipe.ends[0]);
                  stdout = ::fdopen(pipe.ends[1], "w"); // one that has no buffer yet
                  std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size());
                  std::fputs(own.c_str(), stdout);
                  if (openFM(address.c_str()) != 0) {
                      return 1;
                  }
                  closeFM();
                  if (drain(pipe.ends[0]).find('h') != std::string::npos) {
                      return 2;
                  }
                  std::string all;
                  std::thread reader([&] {
                      while (all.size() < own.size() + line.size()) {
                          all += drain(pipe.ends[0]);
                      }
                  });
                  std::fflush(stdout);
                  reader.join();
                  return all == own + line ? 0 : 3;
              }),
              0);
}

// A line that is longer than a page: it may not fit.
TEST_F(StandardOutput, WithAPageOfRoomDoesNotBlockOnALongName)
{
    for (const std::size_t length : {std::size_t{5000}, std::size_t{100000}}) {
        EXPECT_EQ(outcomeOf([&] {
                      const std::string name = std::string(length, 'x') + ":no-such-service";
                      fill(pipe.ends[1]);
                      readAPage(pipe.ends[0]);
                      ::dup2(pipe.ends[1], STDOUT_FILENO);
                      const bool isRefused = openFM(name.c_str()) == -1;
                      closeFM();
                      const std::string lost = drain(pipe.ends[0]);
                      return isRefused && lost.find('x') == std::string::npos ? 0 : 1;
                  }),
                  0)
            << "length " << length;
    }
}

// A stream whose buffer is nearly full of the host's bytes, and a pipe that takes both, but not at once.
TEST_F(StandardOutput, GetsTheHostsBytesFirstWhereOnePageDoesNotTakeBoth)
{
    EXPECT_EQ(outcomeOf([&] {
                  std::string buffer(PIPE_BUF, '\0');
                  const std::string own(PIPE_BUF - 10, 'o');
                  stdout = ::fdopen(pipe.ends[1], "w"); // one that has no buffer yet
                  std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size());
                  std::fputs(own.c_str(), stdout);
                  if (openFM(address.c_str()) != 0) {
                      return 1;
                  }
                  return drain(pipe.ends[0]) == own + line ? 0 : 2;
              }),
              0);
}

// A page of the host's is flushed and the line goes out behind it; one byte more stays, and the line with it.
TEST_F(StandardOutput, GetsAPageOfTheHostsBytesFirstAndNoMore)
{
    for (const std::size_t length : {std::size_t{PIPE_BUF}, std::size_t{PIPE_BUF} + 1}) {
        EXPECT_EQ(outcomeOf([&] {
                      std::string buffer(2 * std::size_t{PIPE_BUF}, '\0');
                      const std::string own(length, 'o');
                      stdout = ::fdopen(pipe.ends[1], "w"); // one that has no buffer yet
                      std::setvbuf(stdout, buffer.data(), _IOFBF, buffer.size());
                      std::fputs(own.c_str(), stdout);
                      if (openFM(address.c_str()) != 0) {
                          return 1;
                      }
                      const std::string heard = drain(pipe.ends[0]);
                      return heard == (length == PIPE_BUF ? own + line : std::string()) ? 0 : 2;
                  }),
                  0)
            << "length " << length;
    }
}

TEST_F(StandardOutput, GetsASingleByteOfTheHostsBeforeALineOfAWholePage)
{
    const std::string host(PIPE_BUF - std::string_view("host:  port: 1\n").size(), 'x');
    EXPECT_EQ(outcomeOf([&] {
                  ::dup2(pipe.ends[1], STDOUT_FILENO);
                  std::fputc('o', stdout);
                  return openFM((host + ":1").c_str()) == -1 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(drain(pipe.ends[0]), "ohost: " + host + " port: 1\n");
}

// The C library makes a buffer when the first byte is written, and not a smaller one than for such a line.
TEST_F(StandardOutput, ThatIsFullAndUnusedGetsALineOf511BytesAndNoLongerOne)
{
    for (const std::size_t length : {std::size_t{511}, std::size_t{512}}) {
        const std::string host(length - std::string_view("host:  port: 1").size(), 'x');
        EXPECT_EQ(outcomeOf([&] {
                      fill(pipe.ends[1]);
                      stdout = ::fdopen(pipe.ends[1], "w");
                      openFM((host + ":1").c_str());
                      drain(pipe.ends[0]);
                      std::fflush(stdout);
                      const std::string later = drain(pipe.ends[0]);
                      return later == (length == 511 ? "host: " + host + " port: 1\n" : "") ? 0 : 1;
                  }),
                  0)
            << "length " << length;
    }
}

// As when somebody has halted it: a terminal gets each line at once, also the first one of a stream.
TEST_F(StandardOutput, ThatIsATerminalWhichTakesNothingDoesNotBlock)
{
    std::string path;
    wire::Connection screen = wire::openPseudoTerminal(path);
    EXPECT_EQ(outcomeOf([&] {
                  const int terminal = ::open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
                  stdout = ::fdopen(terminal, "w");
                  if (openFM(address.c_str()) != 0 || receiveBytes(screen, line.size()) != line) {
                      return 1;
                  }
                  std::string shown;
                  for (std::FILE* stream : {stdout, ::fdopen(::dup(terminal), "w")}) {
                      stdout = stream;
                      fillForGood(terminal);
                      if (openFM(address.c_str()) != 0) {
                          return 2;
                      }
                      for (auto bytes = screen.receive(PIPE_BUF, 1ms); bytes && !bytes->empty();
                           bytes = screen.receive(PIPE_BUF, 1ms)) {
                          shown += *bytes;
                      }
                  }
                  return shown.find('h') == std::string::npos ? 0 : 3;
              }),
              0);
}

} // namespace
} // namespace telvofm::test
