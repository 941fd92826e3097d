// A printer of a few lines on a thread of its own: it takes one connection after the other and holds with
// each the dialogue that the test gives it.
#pragma once

#include "tests/wire/loopback.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <thread>

namespace telvofm::test {

class PrinterThread
{
public:
    using Dialogue = std::function<void(wire::Connection&)>;

    explicit PrinterThread(Dialogue dialogueOfConnections);
    // Ends when the running dialogue does; the test closes its connections first.
    ~PrinterThread();
    PrinterThread(const PrinterThread&) = delete;
    PrinterThread& operator=(const PrinterThread&) = delete;

    // As the open exports take it.
    [[nodiscard]] std::string address() const;

private:
    void serve();

    wire::Listener listener;
    Dialogue dialogue;
    std::atomic<bool> isEnding = false;
    std::thread thread;
};

// The next request without its checksum byte; nothing when the connection ends first. The test's requests
// hold 0x04 at their end only.
std::optional<std::string> receiveRequest(wire::Connection& connection);
// Exactly `count` bytes; fewer when the connection ends first.
std::string receiveBytes(wire::Connection& connection, std::size_t count);
// Everything until the other end closes.
std::string receiveUntilClosed(wire::Connection& connection);

// Accepts every request.
void acceptAll(wire::Connection& connection);

} // namespace telvofm::test
