// The printer of the second opinion: over loopback TCP and on pseudo-terminals it plays the plan of each
// call, on a thread for each connection, and writes down what both sides have sent, in order.
#pragma once

#include "tests/second_opinion/plan.h"
#include "tests/wire/loopback.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace telvofm::test {

class PlayingPrinter
{
public:
    PlayingPrinter() = default;
    ~PlayingPrinter();
    PlayingPrinter(const PlayingPrinter&) = delete;
    PlayingPrinter& operator=(const PlayingPrinter&) = delete;

    // As the open exports take it.
    [[nodiscard]] std::string address() const;
    // Takes the connection that the library has opened there.
    void acceptConnection();
    // A new terminal, as the open exports take it: "COM" and its path.
    std::string openTerminal();

    // The plan of the next call, and on which kind of link it is made.
    void play(Plan next, bool onSerialLine);
    // Sends what nothing has asked for, and waits until a terminal has it.
    void say(const std::string& bytes);
    // What was sent in the call: "C" and "S" and the hexadecimal digits of what the library and the printer
    // sent, and "T" where the library waited in vain.
    std::string takeTranscript();

    // Nothing is on its way, and the printer says nothing until it hears more: a wait for it would be in
    // vain. Notes that.
    bool isWaitedForInVain(std::size_t sentByLibrary);

private:
    void serve(wire::Connection connection);
    void begin(wire::Connection connection);
    void hear(const std::string& bytes);
    // How much of what has come is one request, block or single byte; 0 while its end is missing.
    [[nodiscard]] std::size_t unitLength() const;
    void answer(std::string_view unit);
    void note(char from, std::string_view bytes);

    std::mutex lock;
    std::condition_variable heardAll;
    const wire::Connection* current = nullptr;
    Plan plan;
    bool isSerial = false;
    bool isOwed = false; // what the library has yet to send in this call
    bool isSilent = false;
    std::size_t heard = 0; // in this call
    std::string incoming;
    std::string transcript;
    char side = '\0'; // whose bytes stand last there

    wire::Listener listener;
    std::string terminal;
    std::atomic<bool> isEnding = false;
    std::vector<std::thread> threads;
};

} // namespace telvofm::test
