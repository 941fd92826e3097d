// Standard output as the paper of all printers. A reader that does not read, or has gone away, stops nothing:
// lines wait in a queue of bounded length, the oldest are lost, and a line says how many. A thread of its own
// writes them; it is the only one beside that of the printers.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string>

namespace virtual_printer {

class StandardOutput
{
public:
    StandardOutput();
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    void say(std::string line);
    // Whether everything has been written within the time. The thread goes with the process.
    bool flush(std::chrono::milliseconds limit);

private:
    static constexpr std::size_t longestQueue = 20000;

    [[noreturn]] void write();

    std::mutex state;
    std::condition_variable changed;
    std::deque<std::string> lines;
    std::size_t lost = 0;
    bool isWriting = false;
};

} // namespace virtual_printer
