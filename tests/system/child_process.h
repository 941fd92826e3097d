// A program that a test starts beside itself: what it prints is read here, and its end is asked for or
// forced. There is one implementation per platform.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::test {

class ChildProcess
{
public:
    // The program and its arguments, in UTF-8. Its standard output and standard error come here together.
    explicit ChildProcess(std::vector<std::string> commandLine);
    // Kills it when it is still there.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The command line by which the platform's shell starts a program and waits for it.
    static std::vector<std::string> shell(const std::vector<std::string>& command);

    // To its standard input; whether it took all.
    [[nodiscard]] bool write(std::string_view bytes) const;
    // At most so many of the next bytes; waits for one. Empty when the program, and whoever has its output
    // too, is gone.
    [[nodiscard]] std::string read(std::size_t most) const;
    [[nodiscard]] std::optional<char> byte() const
    {
        const std::string next = read(1);
        return next.empty() ? std::nullopt : std::optional(next.front());
    }
    // The next line without its end.
    [[nodiscard]] std::string line() const
    {
        std::string text;
        for (auto next = byte(); next && *next != '\n'; next = byte()) {
            text += *next;
        }
        return text;
    }
    // Everything that it still prints, until it ends.
    [[nodiscard]] std::string rest() const
    {
        constexpr std::size_t enough = 4096;
        std::string text;
        for (std::string piece = read(enough); !piece.empty(); piece = read(enough)) {
            text += piece;
        }
        return text;
    }
    // Nobody reads what it prints any more.
    void closeOutput();

    // Windows knows but one such request, Ctrl+C, which stands for every signal.
    void askToEnd(int signal) const;
    // Waits for its end, and gives the exit status; -1 when it did not exit by itself.
    int exitCode();
    int end(int signal)
    {
        askToEnd(signal);
        return exitCode();
    }
    void kill();

    [[nodiscard]] std::int64_t id() const { return number; }

private:
    std::intptr_t process = 0; // 0 when it has ended
    std::int64_t number = 0;
    std::intptr_t input = -1;
    std::intptr_t output = -1;
};

} // namespace telvofm::test
