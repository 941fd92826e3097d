#include "tests/system/child_process.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace telvofm::test {
namespace {

int descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> commandLine)
{
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    EXPECT_EQ(::pipe2(in.data(), O_CLOEXEC), 0);
    EXPECT_EQ(::pipe2(out.data(), O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, out[1], STDERR_FILENO);
    std::vector<char*> arguments;
    arguments.reserve(commandLine.size() + 1);
    for (std::string& argument : commandLine) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    pid_t started = 0;
    EXPECT_EQ(::posix_spawnp(&started, arguments.front(), &actions, nullptr, arguments.data(), environ), 0);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(in[0]);
    ::close(out[1]);
    process = number = started;
    input = in[1];
    output = out[0];
}

ChildProcess::~ChildProcess()
{
    kill();
    ::close(descriptor(input));
    if (output != -1) {
        closeOutput();
    }
}

std::vector<std::string> ChildProcess::shell(const std::vector<std::string>& command)
{
    std::string text;
    for (const std::string& word : command) {
        text += '\'' + word + "' ";
    }
    return {"sh", "-c", text + "; true"}; // a shell may become the program of its last command
}

bool ChildProcess::write(std::string_view bytes) const
{
    return ::write(descriptor(input), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

std::string ChildProcess::read(std::size_t most) const
{
    std::string bytes(most, '\0');
    const ssize_t count = ::read(descriptor(output), bytes.data(), bytes.size());
    bytes.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return bytes;
}

void ChildProcess::closeOutput()
{
    ::close(descriptor(std::exchange(output, -1)));
}

void ChildProcess::askToEnd(int signal) const
{
    ::kill(static_cast<pid_t>(process), signal);
}

int ChildProcess::exitCode()
{
    int status = 0;
    ::waitpid(static_cast<pid_t>(std::exchange(process, 0)), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::kill()
{
    if (process != 0) {
        end(SIGKILL);
    }
}

} // namespace telvofm::test
