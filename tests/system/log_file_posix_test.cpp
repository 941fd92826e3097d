// The call log's file as the system and other programs see it.
#include "telvofm.h"
#include "tests/system/started_programs_posix.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <future>
#include <map>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

class LogFile : public ::testing::Test
{
protected:
    void TearDown() override { setLogginOff(); }

    OwnFolder folder;
    const std::string log = folder.file("till.txt");
};

// The log is a pipe that has no room for the line, so that it stays open while we look.
TEST_F(LogFile, IsNotHadByAProgramThatTheHostStarts)
{
    const std::string description(std::size_t{1} << 20U, 'x');
    ASSERT_EQ(::mkfifo(log.c_str(), S_IRUSR | S_IWUSR), 0);
    const int reading = ::open(log.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const auto before = filesOfStartedPrograms();
    setLogginOn(log.c_str());
    const auto call = std::async(std::launch::async, [&] { destroyParagon(1, 0, description.c_str()); });
    pollfd beginning = {.fd = reading, .events = POLLIN, .revents = 0};
    EXPECT_EQ(::poll(&beginning, 1, -1), 1);
    EXPECT_EQ(filesOfStartedPrograms(), before);

    ::fcntl(reading, F_SETFL, 0);
    std::array<char, 65536> room;
    std::size_t size = 0;
    for (ssize_t count = 1; count > 0; size += static_cast<std::size_t>(count)) {
        count = ::read(reading, room.data(), room.size());
    }
    ::close(reading);
    EXPECT_GT(size, description.size());
}

TEST_F(LogFile, MayBeReadByWhomTheHostLets)
{
    const mode_t before = ::umask(0);
    for (const mode_t mask : {mode_t{0}, mode_t{022}, mode_t{077}}) {
        ::umask(mask);
        const std::string path = folder.file("till" + std::to_string(mask));
        setLogginOn(path.c_str());
        printJobCancel(1);
        struct stat made = {};
        EXPECT_EQ(::stat(path.c_str(), &made), 0);
        EXPECT_EQ(made.st_mode & 0777U, 0666U & ~mask);
    }
    ::umask(before);
}

// Each line is one write behind what others have written.
TEST_F(LogFile, TakesTheLinesOfSeveralProgramsWhole)
{
    constexpr int calls = 1000;
    const std::array descriptions{std::string(500, 'a'), std::string(500, 'b')};
    setLogginOn(log.c_str());
    for (const std::string& description : descriptions) {
        if (::fork() == 0) {
            for (int call = 0; call < calls; ++call) {
                destroyParagon(1, 2, description.c_str());
            }
            ::_exit(0);
        }
    }
    while (::wait(nullptr) > 0) {
    }
    std::map<std::string, int> lines;
    std::ifstream written(log);
    for (std::string line; std::getline(written, line);) {
        ++lines[line];
    }
    EXPECT_EQ(lines.size(), descriptions.size());
    for (const std::string& description : descriptions) {
        EXPECT_EQ(lines["destroyParagondevice 1, row 2, description " + description], calls);
    }
}

} // namespace
} // namespace telvofm::test
