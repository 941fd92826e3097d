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
    // What comes, taken from the system in large pieces: byte by byte a long text took seconds under Wine on
    // a busy machine, and the library asked whether the printer was still there.
    class Incoming
    {
    public:
        explicit Incoming(wire::Connection& source) : connection(source) {}

        // Fewer when the connection ends first.
        std::string bytes(std::size_t count)
        {
            while (waiting.size() < count) {
                constexpr std::size_t piece = 65'536;
                constexpr std::chrono::milliseconds glance{100};
                const auto more = connection.receive(piece, glance);
                if (!more) {
                    break;
                }
                waiting += *more;
            }
            std::string taken = waiting.substr(0, count);
            waiting.erase(0, count);
            return taken;
        }

    private:
        wire::Connection& connection;
        std::string waiting;
    };

    void serve(wire::Connection& connection)
    {
        Incoming incoming(connection);
        std::string start;
        while (!(start = incoming.bytes(1)).empty()) {
            std::string unit = start + (start == ":" ? restOfBlock(incoming) : restOfRequest(incoming));
            if (incoming.bytes(1).empty()) { // the checksum byte
                return;
            }
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
    static std::string restOfRequest(Incoming& incoming)
    {
        constexpr std::size_t addressAndCode = 2;
        std::string rest = incoming.bytes(addressAndCode);
        std::string next;
        do {
            next = incoming.bytes(1);
            rest += next;
        } while (!next.empty() && next != "\x04");
        return rest;
    }

    static std::string restOfBlock(Incoming& incoming)
    {
        const std::string length = incoming.bytes(1);
        const auto data = static_cast<unsigned char>(length.empty() ? '\0' : length.front()) + std::size_t{1};
        return length + incoming.bytes(data + 1);
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
