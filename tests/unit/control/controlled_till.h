// A printer under control: a till that talks to it in bytes, and tests that ask the control interface without
// a socket. Everything that they ask and are answered is written down, so that it can be held against the
// description of the interface.
#pragma once

#include "tests/system/till_bytes.h"
#include "virtual_printer/control/control.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/till_session.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace virtual_printer {

struct Answered
{
    int status = 0;
    Json json;
};

class ControlledTill : public testing::Test
{
protected:
    ControlledTill()
    {
        station.show(); // as the program does before anybody can ask
        control.add(station);
    }

    static HttpRequest requestFor(const std::string& method, const std::string& target,
                                  const std::string& body)
    {
        HttpRequest request;
        request.method = method;
        request.target = target;
        request.body = body;
        request.host = "127.0.0.1:9180";
        return request;
    }

    // What is answered at once.
    Answered ask(const std::string& method, const std::string& target, const std::string& body = "")
    {
        return noteDown(method, target, body,
                        std::get<HttpAnswer>(control.answer(requestFor(method, target, body))));
    }
    Json get(const std::string& target)
    {
        Answered answered = ask("GET", target);
        EXPECT_EQ(answered.status, 200) << target << answered.json;
        return answered.json;
    }
    Answered post(const std::string& target, const std::string& body) { return ask("POST", target, body); }
    Answered patch(const std::string& target, const std::string& body) { return ask("PATCH", target, body); }

    // The sentence of a request that is refused so.
    std::string refusedWith(int status, const Answered& answered)
    {
        EXPECT_EQ(answered.status, status) << answered.json;
        return answered.json.value("error", "no sentence");
    }

    Answered noteDown(const std::string& method, const std::string& target, const std::string& body,
                      const HttpAnswer& answer)
    {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        std::filesystem::create_directories("control_exchanges");
        std::ofstream record(std::string("control_exchanges/") + test->test_suite_name() + "." + test->name(),
                             isFirst ? std::ios::trunc : std::ios::app);
        isFirst = false;
        record << Json{{"method", method},        {"target", target},           {"request", body},
                       {"status", answer.status}, {"type", answer.contentType}, {"answer", answer.body}}
                      .dump()
               << '\n';
        return {answer.status, Json::parse(answer.body, nullptr, false)};
    }

    // What the printer answers to the till; all of it reaches the till.
    std::string tillSays(const std::string& bytes)
    {
        std::string answer;
        for (const Step& step : session.take(bytes, now)) {
            if (const auto* send = std::get_if<Send>(&step.action)) {
                answer += send->bytes;
                session.hasAcknowledged(send->acknowledges, now);
            }
        }
        station.show();
        return answer;
    }
    void beginDay() { ASSERT_EQ(tillSays(telvofm::test::request(0x29, {"0"})), "\x06"); }
    void beginReceipt()
    {
        ASSERT_EQ(tillSays(telvofm::test::request(0x20, {"0", "1", "0", "0", "1", "0"})), "\x06");
    }
    void sellItem(const std::string& total)
    {
        ASSERT_EQ(tillSays(telvofm::test::request(0x24, {"0", "Chlieb", total, "A", "1.000", total, "ks "})),
                  "\x06");
    }
    // The type 2 is the card.
    void payAndEnd(const std::string& total, const std::string& type = "2")
    {
        ASSERT_EQ(tillSays(telvofm::test::request(0x30, {"0", type, total, total, "0", "x"})), "\x06");
        ASSERT_EQ(tillSays(telvofm::test::request(0x22, {"0", "0"})), "\x06");
    }
    void sell(const std::string& total)
    {
        beginReceipt();
        sellItem(total);
        payAndEnd(total);
    }

    static constexpr const char* here = "/printers/printer";

    Codes codes;
    TillSession::Time now{};
    Station station{"printer", Printer(Memory(), readyToSell(),
                                       [] { return parseMoment("2026-01-31 12:00", Edge::first).value(); })};
    Printer& printer = station.printer;
    Control control{readyToSell(), "", ""};
    TillSession session{station, CodePage::windows1250, codes};

private:
    bool isFirst = true;
};

inline std::string at(const std::string& path)
{
    return "/printers/printer/" + path;
}

} // namespace virtual_printer
