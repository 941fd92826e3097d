// The printer's end of a serial line: a pseudo-terminal and the modem lines that the printer drives. The test
// plays the printer on a thread of its own while a call runs.
#pragma once

#include "tests/system/printer_thread.h"

#include <functional>
#include <future>
#include <string>

namespace telvofm::test {

class SerialPrinter
{
public:
    // `stateFile` keeps the modem lines; both are on to begin with.
    explicit SerialPrinter(std::string stateFile);

    // As the open exports take it: "COM" and the path of the terminal.
    [[nodiscard]] std::string name() const { return "COM" + path; }
    [[nodiscard]] const std::string& terminal() const { return path; }
    wire::Connection& line() { return connection; }

    // Another terminal in the place of one that was closed.
    void plugAgain() { connection = wire::openPseudoTerminal(path); }

    void setLines(bool clearToSend, bool dataSetReady) const;
    // What the program at the other end drives.
    [[nodiscard]] bool dataTerminalReady() const;

    // That many bytes of the printer's lie ready for the program: the line may deliver late.
    void waitUntilDelivered(int count) const;

    // Nothing has been sent to the printer, and nothing comes.
    bool hearsNothing() { return connection.receive(1, silence) == std::string(); }

    // Holds the dialogue on another thread; the result's destructor waits for its end.
    template <typename Dialogue>
    [[nodiscard]] auto play(Dialogue dialogue)
    {
        // As a function, so that the compiler makes a thread for each type of result, not for each dialogue.
        std::function held = [this, dialogue] { return dialogue(connection); };
        return std::async(std::launch::async, std::move(held));
    }

private:
    static constexpr std::chrono::milliseconds silence{200};

    std::string state;
    std::string path;
    wire::Connection connection;
};

} // namespace telvofm::test
