// A printer that accepts everything, answers questions with an empty reply, and keeps what it was sent. It
// can be made to let its answers wait.
#pragma once

#include "tests/system/printer_thread.h"

#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace telvofm::test {

class RecordingPrinter
{
public:
    [[nodiscard]] std::string address() const { return printer.address(); }

    // What has come since the last time: requests and uploaded blocks, without their checksum bytes.
    std::vector<std::string> takeReceived()
    {
        const std::scoped_lock held(lock);
        return std::exchange(received, {});
    }

    // While this lives nothing is answered.
    [[nodiscard]] std::unique_lock<std::mutex> holdAnswers() { return std::unique_lock(answers); }

private:
    void serve(wire::Connection& connection)
    {
        std::string start;
        while (!(start = receiveBytes(connection, 1)).empty()) {
            std::string unit = start + (start == ":" ? restOfBlock(connection) : restOfRequest(connection));
            receiveBytes(connection, 1); // the checksum byte
            const bool isQuestion = start != ":" && isQuery(unit[2]);
            {
                const std::scoped_lock held(lock);
                received.push_back(std::move(unit));
            }
            const std::scoped_lock free(answers);
            connection.send(isQuestion ? "\x04" : "\x06");
        }
    }

    // The texts of the tests hold no 0x04.
    static std::string restOfRequest(wire::Connection& connection)
    {
        constexpr std::size_t addressAndCode = 2;
        std::string rest = receiveBytes(connection, addressAndCode);
        do {
            rest += receiveBytes(connection, 1);
        } while (rest.back() != '\x04');
        return rest;
    }

    static std::string restOfBlock(wire::Connection& connection)
    {
        const std::string length = receiveBytes(connection, 1);
        const auto data = static_cast<unsigned char>(length.front()) + std::size_t{1};
        return length + receiveBytes(connection, data + 1);
    }

    static bool isQuery(char code)
    {
        return std::string_view("\x79\x7B\x92\x93\x97\x98\x99\x9A\x9B\x9C\x9D\x9F\xAF").find(code) !=
               std::string_view::npos;
    }

    std::mutex lock;
    std::mutex answers;
    std::vector<std::string> received;
    PrinterThread printer{[this](wire::Connection& connection) { serve(connection); }};
};

} // namespace telvofm::test
