// A printer that can be told whose request it has answered: it replies to a question with the text that was
// asked for, refuses what names milk with 7, accepts all else, and refuses with 2 what came damaged, also by
// bytes of a raw access that stand in between. It counts what it has said.
#pragma once

#include "tests/system/printer_thread.h"
#include "tests/unit/bytes.h"

#include <atomic>
#include <string>
#include <string_view>

namespace telvofm::test {

class EchoingPrinter
{
public:
    [[nodiscard]] std::string address() const { return printer.address(); }

    std::atomic<long> accepted = 0;
    std::atomic<long> refused = 0;
    std::atomic<long> replies = 0;
    std::atomic<long> damaged = 0;

private:
    static constexpr char requestStart = 0x1C;
    static constexpr char requestEnd = 0x04;

    void serve(wire::Connection& connection)
    {
        constexpr std::chrono::milliseconds patience{1000};
        constexpr std::size_t piece = 4096;
        std::string heard;
        while (const auto more = connection.receive(piece, patience)) {
            heard += *more;
            const std::string answers = answersTo(heard);
            if (!answers.empty()) {
                connection.send(answers);
            }
        }
    }

    // Takes what is whole; between requests stand answers to blocks, probes and raw bytes.
    std::string answersTo(std::string& heard)
    {
        std::string answers;
        while (!heard.empty()) {
            if (heard.front() != requestStart) {
                answers += heard.front() == '\x11' ? "\x11" : "";
                heard.erase(0, 1);
                continue;
            }
            const auto end = heard.find(requestEnd);
            if (end == std::string::npos || end + 1 == heard.size()) {
                break;
            }
            answers += answerTo(std::string_view(heard).substr(0, end + 2));
            heard.erase(0, end + 2);
        }
        return answers;
    }

    std::string answerTo(std::string_view request)
    {
        constexpr std::size_t headSize = 3;
        constexpr char question = '\x92';
        char sum = 0;
        for (const char byte : request) {
            sum = static_cast<char>(sum ^ byte);
        }
        if (sum != 0 || request.size() <= headSize) {
            ++damaged;
            return "\x15\x02";
        }
        if (request[2] == question) {
            ++replies;
            const std::string_view fields = request.substr(headSize);
            return block(fields.substr(0, fields.find('\0')), etx);
        }
        const bool isRefused = request.find("Mlieko") != std::string_view::npos;
        ++(isRefused ? refused : accepted);
        return isRefused ? "\x15\x07" : "\x06";
    }

    PrinterThread printer{[this](wire::Connection& connection) { serve(connection); }};
};

} // namespace telvofm::test
