// A printer with a till on one of both links, a clock that the test moves, and faults; and the steps that it
// takes as text.
#pragma once

#include "tests/system/virtual_printer_fixture.h"
#include "virtual_printer/faults/fault_json.h"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace virtual_printer {

inline std::string pairsOf(const std::string& bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) / digits.size()];
        text += digits[static_cast<unsigned char>(byte) % digits.size()];
    }
    return text;
}

// One word for each step: its time, what is done, and "!" behind the bytes that make an answer whole.
inline std::string textOf(const Steps& steps)
{
    std::string text;
    for (const Step& step : steps) {
        text += (text.empty() ? "" : " ") +
                (step.after >= untilDisarmed ? "disarmed" : std::to_string(step.after.count())) + ":";
        if (const auto* send = std::get_if<Send>(&step.action)) {
            text += pairsOf(send->bytes) + (send->acknowledges == 0 ? "" : "!");
        } else if (const auto* lines = std::get_if<SetLines>(&step.action)) {
            text += std::string("cts") + (lines->clearToSend ? "+" : "-") + "dsr" +
                    (lines->dataSetReady ? "+" : "-");
        } else if (const auto* refusal = std::get_if<RefuseConnections>(&step.action)) {
            text += "refuse" + std::to_string(refusal->duration.count());
        } else if (std::holds_alternative<ForgetSteps>(step.action)) {
            text += "forget";
        } else {
            text += std::holds_alternative<CloseLink>(step.action)   ? "close"
                    : std::holds_alternative<ResetLink>(step.action) ? "reset"
                                                                     : "abandon";
        }
    }
    return text;
}

inline Printer newPrinter()
{
    return {Memory(), readyToSell(), [] { return parseMoment("2026-01-01 12:00", Edge::first).value(); }};
}

// A printer with a till on one of both links, and a clock that the test moves.
class TriedPrinter
{
public:
    explicit TriedPrinter(CodePage link) : session(station, link, codes)
    {
        station.faults.watch([this](const Armed& one, Faults::Event event) {
            if (event == Faults::Event::disarmed || event == Faults::Event::stopped) {
                session.endFault(one.number); // as a link does
            }
        });
    }
    TriedPrinter(const TriedPrinter&) = delete;
    TriedPrinter& operator=(const TriedPrinter&) = delete;

    void arm(const std::string& fault)
    {
        station.faults.arm(faultFromJson(nlohmann::ordered_json::parse(fault)));
    }

    Steps send(const std::string& bytes, std::chrono::milliseconds after = std::chrono::milliseconds(10))
    {
        now += after;
        Steps steps = session.take(bytes, now);
        for (const Step& step : steps) {
            const auto* sent = std::get_if<Send>(&step.action);
            if (sent != nullptr && sent->acknowledges != 0) {
                session.hasAcknowledged(sent->acknowledges, now);
            }
            if (step.ends != 0) {
                session.hasEnded(step.ends);
            }
        }
        return steps;
    }

    std::string heard(const std::string& bytes) { return bytesOf(send(bytes)); }

    std::vector<std::string> takePaper()
    {
        std::vector<std::string> paper;
        for (const Happened& event : station.printer.takeHappened()) {
            for (std::string& printed : linesFor(event, columnsOfPaper, codes)) {
                paper.push_back(std::move(printed));
            }
        }
        return paper;
    }

    // A day with a receipt and its closure, with all that is said and printed.
    std::string sellForADay()
    {
        takePaper();
        std::string all;
        for (const std::string& bytes :
             {request(0x29, {"0"}), request(0x20, {"0", "1", "0", "0", "1", "0"}),
              item(0x24, "Chlieb", "2.00"), request(0x30, {"0", "1", "2.00", "2.00", "0", "Hotovost  "}),
              request(0x22, {"0", "0"}), std::string("\x11"), request(0x92, {"DAY"}), std::string("\x15"),
              std::string("\x03"), request(0x50, {"Z", "0"}), request(0x9F), std::string("\x06")}) {
            all += pairsOf(heard(bytes)) + "\n";
        }
        for (const std::string& line : takePaper()) {
            all += line + "\n";
        }
        return all;
    }

    [[nodiscard]] const Exchanged& last() const { return *station.trace.find(station.trace.end() - 1); }

    const Codes codes;
    Station station{"printer", newPrinter()};
    TillSession session;
    TillSession::Time now{std::chrono::seconds(100)};
};

} // namespace virtual_printer
