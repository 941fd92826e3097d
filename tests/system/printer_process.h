// The virtual printer as a process of its own; whatever it prints is read here.
#pragma once

#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace telvofm::test {

class PrinterProcess
{
public:
    explicit PrinterProcess(std::vector<std::string> options)
    {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
        ::posix_spawn_file_actions_addclose(&actions, ends[0]);
        std::string program = TELVOFM_PRINTER;
        std::vector<char*> arguments = {program.data()};
        for (std::string& option : options) {
            arguments.push_back(option.data());
        }
        arguments.push_back(nullptr);
        EXPECT_EQ(::posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        output = ends[0];
    }
    PrinterProcess(const PrinterProcess&) = delete;
    PrinterProcess& operator=(const PrinterProcess&) = delete;
    ~PrinterProcess()
    {
        if (process > 0) {
            ::kill(process, SIGKILL);
            ::waitpid(process, nullptr, 0);
        }
        ::close(output);
    }

    [[nodiscard]] pid_t id() const { return process; }

    // The next line on standard output, without its end.
    [[nodiscard]] std::string line() const
    {
        std::string text;
        for (char byte = 0; ::read(output, &byte, 1) == 1 && byte != '\n';) {
            text += byte;
        }
        return text;
    }

    // Everything that it still prints, until it ends.
    [[nodiscard]] std::string rest() const
    {
        std::string text;
        std::array<char, 4096> piece{};
        for (ssize_t size = 0; (size = ::read(output, piece.data(), piece.size())) > 0;) {
            text.append(piece.data(), static_cast<std::size_t>(size));
        }
        return text;
    }

    // The reader of its paper goes away.
    void closePaper() { ::close(std::exchange(output, -1)); }

    // Of its greeting, the first line when it listens on this machine.
    [[nodiscard]] int port() const
    {
        const std::string greeting = line();
        const std::string start = "listening on 127.0.0.1:";
        if (greeting.substr(0, start.size()) != start) {
            ADD_FAILURE() << "it greets with: " << greeting;
            return 0;
        }
        return std::stoi(greeting.substr(start.size()));
    }

    // The exit status after the signal; -1 when the process did not exit by itself.
    int end(int signal)
    {
        ::kill(process, signal);
        return exitCode();
    }

    // Waits for its end.
    int exitCode()
    {
        int status = 0;
        ::waitpid(std::exchange(process, 0), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process = 0;
    int output = -1;
};

} // namespace telvofm::test
