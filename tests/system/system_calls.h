// Stands between the library and the system: while an object of this class lives, the calls of the
// thread that made it pass through here and are cut, interrupted and counted. Calls of other threads, the
// printer's for example, go by.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <vector>

namespace telvofm::test {

class SystemCalls
{
public:
    SystemCalls();
    ~SystemCalls();
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

    // What shall happen: how many of the next calls a signal interrupts, and how much of its bytes a send
    // takes.
    int connectsToInterrupt = 0;
    int sendsToInterrupt = 0;
    int receivesToInterrupt = 0;
    int opensToInterrupt = 0;
    int socketsToRefuse = 0;
    int socketQueriesToFail = 0;
    // With which errors the next waits for a socket or a terminal end.
    std::deque<int> waitErrors;
    std::size_t mostBytesPerSend = static_cast<std::size_t>(-1);
    // How many waits for room in a terminal a signal interrupts when half of their time is over.
    int waitsForRoomToInterrupt = 0;
    // Called when a terminal has no room for a byte, before the wait for it begins. Without it that wait ends
    // in vain, its time passes at once, and the terminal stays full.
    std::function<void()> whenTerminalIsFull;
    // Called when a terminal has no byte to read, before the wait for one begins.
    std::function<void()> whenTerminalIsEmpty;
    // With which errors the next writes to a terminal fail, each after a second, and the next reads.
    std::deque<int> terminalWriteErrors;
    std::deque<int> terminalReadErrors;

    // How much of its bytes a write to a file takes, with which errors the next ones fail, and how many files
    // of the C library tell with their closing that what was written is lost.
    std::size_t mostBytesPerFileWrite = static_cast<std::size_t>(-1);
    std::deque<int> fileWriteErrors;
    int fileWritesOfNothing = 0; // so many of the next ones take nothing and have not failed
    int filesToLose = 0;

    // What has happened.
    std::vector<std::size_t> sends; // how many bytes each was given
    std::vector<int> socketWaits;   // for how many milliseconds each was
    int socketOptionsSet = 0;
    std::chrono::milliseconds waitedForTerminal{0};
    bool terminalStaysFull = false; // the system may make a little room in it between two waits
    int rests = 0;
};

} // namespace telvofm::test
