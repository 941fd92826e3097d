#include "tests/system/printer_thread.h"

#include <algorithm>
#include <utility>

namespace telvofm::test {
namespace {

constexpr std::chrono::milliseconds patience{60000};
constexpr std::size_t largestPiece = 4096;

} // namespace

PrinterThread::PrinterThread(Dialogue dialogueOfConnections)
    : dialogue(std::move(dialogueOfConnections)), thread([this] { serve(); })
{
}

PrinterThread::~PrinterThread()
{
    isEnding = true;
    thread.join();
}

std::string PrinterThread::address() const
{
    return "127.0.0.1:" + std::to_string(listener.port());
}

void PrinterThread::serve()
{
    constexpr std::chrono::milliseconds glance{20};
    while (!isEnding) {
        wire::Connection connection = listener.accept(glance);
        if (connection.isOpen()) {
            dialogue(connection);
        }
    }
}

std::optional<std::string> receiveRequest(wire::Connection& connection)
{
    std::string request;
    char sum = 0;
    while (true) {
        const auto byte = connection.receive(1, patience);
        if (!byte || byte->empty()) {
            return std::nullopt;
        }
        // The checksum byte is the XOR of all bytes before it.
        if (!request.empty() && request.back() == 0x04 && byte->front() == sum) {
            return request;
        }
        request += *byte;
        sum = static_cast<char>(sum ^ byte->front());
    }
}

std::string receiveBytes(wire::Connection& connection, std::size_t count)
{
    std::string all;
    while (all.size() < count) {
        const auto bytes = connection.receive(std::min(count - all.size(), largestPiece), patience);
        if (!bytes || bytes->empty()) {
            break;
        }
        all += *bytes;
    }
    return all;
}

std::string receiveUntilClosed(wire::Connection& connection)
{
    return receiveBytes(connection, std::string::npos);
}

void acceptAll(wire::Connection& connection)
{
    while (receiveRequest(connection)) {
        connection.send("\x06");
    }
}

} // namespace telvofm::test
