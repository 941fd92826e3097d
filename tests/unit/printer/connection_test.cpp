// What a printer does on one till's stream, beyond the steps that its session gives: a stream whose bytes
// move when the test says so.
#include "tests/system/till_bytes.h"
#include "virtual_printer/faults/fault_json.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/transport/serial_line.h"

#include <boost/asio/buffers_iterator.hpp>
#include <boost/asio/io_context.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using telvofm::test::request;
using Completion = std::function<void(const boost::system::error_code&, std::size_t)>;

// What a stream has been asked for and has not done yet.
struct Asked
{
    boost::asio::mutable_buffer room{};
    Completion read{};
    std::string bytes{};
    Completion write{};
    bool isOpen = true;
};

class ScriptedStream
{
public:
    using executor_type = boost::asio::io_context::executor_type;

    ScriptedStream(boost::asio::io_context& context, std::shared_ptr<Asked> asked)
        : executor(context.get_executor()), all(std::move(asked))
    {
    }

    [[nodiscard]] executor_type get_executor() const { return executor; }
    [[nodiscard]] bool is_open() const { return all->isOpen; }
    template <typename Handler>
    void async_read_some(boost::asio::mutable_buffer room, Handler handler)
    {
        all->room = room;
        all->read = std::move(handler);
    }
    template <typename Buffers, typename Handler>
    void async_write_some(const Buffers& buffers, Handler handler)
    {
        all->bytes.assign(boost::asio::buffers_begin(buffers), boost::asio::buffers_end(buffers));
        all->write = std::move(handler);
    }
    void cancel(boost::system::error_code& /*failure*/)
    {
        if (all->read) {
            boost::asio::post(executor, [read = std::exchange(all->read, {})] {
                read(boost::asio::error::operation_aborted, 0);
            });
        }
    }
    void close(boost::system::error_code& failure)
    {
        all->isOpen = false;
        cancel(failure);
    }

private:
    executor_type executor;
    std::shared_ptr<Asked> all;
};

class ScriptedTill : public testing::Test
{
protected:
    void TearDown() override { *asked = {}; } // what waits holds the connection

    std::uint64_t arm(const std::string& fault)
    {
        return station.faults.arm(faultFromJson(nlohmann::ordered_json::parse(fault)));
    }
    void say(const std::string& bytes)
    {
        ASSERT_TRUE(asked->read) << "nobody listens";
        const std::size_t size = boost::asio::buffer_copy(asked->room, boost::asio::buffer(bytes));
        std::exchange(asked->read, {})({}, size);
    }
    // The bytes that wait for the till leave the printer.
    std::string hear()
    {
        std::string heard = std::exchange(asked->bytes, {});
        if (asked->write) {
            std::exchange(asked->write, {})({}, heard.size());
        }
        return heard;
    }
    // What is due by now, and no more.
    void letTimePass()
    {
        context.restart();
        context.poll();
    }
    [[nodiscard]] bool isOver(std::uint64_t exchange) const { return station.trace.find(exchange)->isOver; }
    [[nodiscard]] bool isAcknowledged(std::uint64_t exchange) const
    {
        return station.trace.find(exchange)->isAcknowledged;
    }

    const std::string job = request(0xE0); // always accepted
    boost::asio::io_context context;
    std::shared_ptr<Asked> asked = std::make_shared<Asked>();
    const Codes codes;
    Station station{"printer", Printer(Memory(), readyToSell(),
                                       [] { return parseMoment("2026-01-01 12:00", Edge::first).value(); })};
};

class TillOverTcp : public ScriptedTill
{
protected:
    TillOverTcp()
    {
        till->start([] {});
        station.faults.watch([this](const Armed& one, Faults::Event event) {
            if (event == Faults::Event::disarmed) {
                till->endFault(one.number);
            }
        });
    }
    void disarm(std::uint64_t fault)
    {
        ASSERT_TRUE(station.faults.disarm(fault));
        letTimePass();
    }

    std::shared_ptr<Connection<ScriptedStream>> till = std::make_shared<Connection<ScriptedStream>>(
        ScriptedStream(context, asked), station, CodePage::windows1250, codes, LinkActions<ScriptedStream>{});
};

TEST_F(TillOverTcp, IsToldWhatHasLeftThePrinterAndNotWhatWaitsBehindIt)
{
    const auto busy = arm(R"({"kind":"busy"})");
    say(job);
    EXPECT_EQ(hear(), "\x13");
    say(job); // its answer is on its way
    disarm(busy);
    EXPECT_FALSE(isAcknowledged(1) || isAcknowledged(2));
    EXPECT_EQ(hear(), "\x06");
    EXPECT_TRUE(isAcknowledged(2));
    EXPECT_FALSE(isAcknowledged(1)) << "this one still waits";
    EXPECT_EQ(hear(), "\x06");
    EXPECT_TRUE(isAcknowledged(1));
}

TEST_F(TillOverTcp, LosesTheLinkWhenWhatPutsThatOffIsDisarmed)
{
    for (const char* at : {"answer", "afterwards"}) {
        SCOPED_TRACE(at);
        const bool isAnswered = std::string_view(at) == "afterwards";
        const auto busy = arm(R"({"kind":"busy"})");
        const auto closed = arm(R"({"kind":"connectionClosed","at":")" + std::string(at) + R"("})");
        say(job);
        EXPECT_EQ(hear(), "\x13");
        EXPECT_TRUE(asked->isOpen);
        disarm(busy);
        EXPECT_EQ(hear(), isAnswered ? "\x06" : "");
        letTimePass();
        EXPECT_FALSE(asked->isOpen);
        disarm(closed);
        *asked = {};
        till = std::make_shared<Connection<ScriptedStream>>(ScriptedStream(context, asked), station,
                                                            CodePage::windows1250, codes,
                                                            LinkActions<ScriptedStream>{});
        till->start([] {});
    }
}

TEST_F(TillOverTcp, KeepsTheLinkWhoseEndIsDisarmedBeforeItsTime)
{
    for (const char* putsOff : {R"({"kind":"busy"})", R"({"kind":"acknowledgeLate","milliseconds":1})"}) {
        SCOPED_TRACE(putsOff);
        const auto other = arm(putsOff);
        const auto closed = arm(R"({"kind":"connectionClosed"})");
        say(job);
        hear();
        disarm(closed);
        disarm(other);
        context.restart();
        context.run_one_for(std::chrono::milliseconds(5)); // at once, for nothing is to come
        EXPECT_TRUE(asked->isOpen);
        say(job);
        EXPECT_EQ(hear(), "\x06");
    }
}

TEST_F(TillOverTcp, LosesTheLinkAlsoWhenTheLateAnswerBeforeThatIsDisarmed)
{
    const auto late = arm(R"({"kind":"acknowledgeLate","milliseconds":60000})");
    arm(R"({"kind":"connectionClosed","at":"afterwards"})");
    say(job);
    EXPECT_TRUE(asked->isOpen);
    disarm(late);
    EXPECT_EQ(hear(), "");
    EXPECT_FALSE(asked->isOpen);
}

TEST_F(TillOverTcp, WaitsNoLongerWhenItHangsUp)
{
    arm(R"({"kind":"busy"})");
    say(job);
    EXPECT_EQ(hear(), "\x13");
    EXPECT_FALSE(isOver(1));
    std::exchange(asked->read, {})(boost::asio::error::eof, 0);
    EXPECT_TRUE(isOver(1));
    EXPECT_FALSE(isAcknowledged(1));
}

TEST_F(TillOverTcp, WaitsForNothingThatDoesNotComeAnyMore)
{
    const auto late = arm(R"({"kind":"acknowledgeLate","milliseconds":60000})");
    say(job);
    EXPECT_FALSE(isOver(1));
    disarm(late);
    EXPECT_TRUE(isOver(1));
    EXPECT_FALSE(isAcknowledged(1));
    const auto busy = arm(R"({"kind":"busy"})");
    say(job);
    EXPECT_EQ(hear(), "\x13");
    station.trace.beginAnew();
    EXPECT_FALSE(isOver(2));
    disarm(busy);
    EXPECT_EQ(hear(), "") << "it is another printer";
    EXPECT_TRUE(isOver(2));
}

class TillOnSerialLine : public ScriptedTill
{
protected:
    void begin()
    {
        SerialLine<ScriptedStream>::Kind kind;
        kind.open = [this] {
            *asked = {};
            return ScriptedStream(context, asked);
        };
        kind.setLines = [this](ScriptedStream&, const SetLines& wanted) {
            lines = std::string(wanted.clearToSend ? "CTS" : "-") + (wanted.dataSetReady ? " DSR" : " -");
        };
        kind.announce = [this] { announced.push_back(lines); };
        std::make_shared<SerialLine<ScriptedStream>>(context, station, codes, std::move(kind))->begin();
    }

    std::string lines = "CTS DSR";
    std::vector<std::string> announced; // how the lines stood each time
};

TEST_F(TillOnSerialLine, MayComeWhenTheLinesAreOff)
{
    const auto off = arm(R"({"kind":"connectionRefused","milliseconds":60000})");
    begin();
    EXPECT_THAT(announced, testing::ElementsAre("- -"));
    ASSERT_TRUE(station.faults.disarm(off));
    EXPECT_EQ(lines, "CTS DSR");
    arm(R"({"kind":"connectionRefused","milliseconds":60000})");
    std::exchange(asked->read, {})(boost::asio::error::eof, 0); // the line hangs up
    EXPECT_EQ(lines, "CTS DSR");
    letTimePass();
    EXPECT_THAT(announced, testing::ElementsAre("- -", "- -"));
}

TEST_F(TillOnSerialLine, GoesWithItsPrinter)
{
    std::weak_ptr<Asked> ofTheLine;
    {
        Station other("other", Printer(Memory(), readyToSell(), [] { return Moment(); }));
        SerialLine<ScriptedStream>::Kind kind;
        kind.open = [&] {
            const auto streams = std::make_shared<Asked>();
            ofTheLine = streams;
            return ScriptedStream(context, streams);
        };
        kind.setLines = [](ScriptedStream&, const SetLines&) {};
        std::make_shared<SerialLine<ScriptedStream>>(context, other, codes, std::move(kind))->begin();
        ofTheLine.lock()->read = {}; // as when the context goes
    }
    EXPECT_TRUE(ofTheLine.expired());
}

TEST_F(TillOnSerialLine, WhomNobodyHearsSeesThePrinterBeSwitchedOff)
{
    begin();
    const auto half = arm(R"({"kind":"halfOpen"})");
    say(job);
    letTimePass();
    EXPECT_FALSE(asked->read);
    const auto off = arm(R"({"kind":"connectionRefused","milliseconds":60000})");
    EXPECT_EQ(lines, "- -");
    ASSERT_TRUE(station.faults.disarm(half));
    EXPECT_EQ(lines, "- -");
    say(job);
    EXPECT_EQ(hear(), "") << "it is off";
    ASSERT_TRUE(station.faults.disarm(off));
    EXPECT_EQ(lines, "CTS DSR");
    say(job);
    EXPECT_EQ(hear(), "\x06");
}

TEST_F(TillOnSerialLine, SeesAnotherPrinterWithItsPowerAndNothingOfWhatFaultsHaveBegun)
{
    begin();
    for (const char* fault :
         {R"({"kind":"powerLoss","milliseconds":60000})", R"({"kind":"ctsOff","milliseconds":60000})",
          R"({"kind":"busy"})", R"({"kind":"halfOpen"})"}) {
        SCOPED_TRACE(fault);
        arm(fault);
        say(job);
        hear();
        letTimePass();
        station.trace.beginAnew();
        station.faults.endDeeds();
        letTimePass();
        EXPECT_EQ(lines, "CTS DSR");
        say(job);
        EXPECT_EQ(hear(), "\x06");
    }
}

TEST_F(TillOnSerialLine, WaitsForNothingFromAPrinterThatIsSwitchedOff)
{
    begin();
    arm(R"({"kind":"busy"})");
    say(job);
    EXPECT_FALSE(isOver(1));
    arm(R"({"kind":"connectionRefused","milliseconds":60000})");
    EXPECT_TRUE(isOver(1));
    EXPECT_FALSE(isAcknowledged(1));
}

TEST_F(TillOnSerialLine, SeesAnotherPrinterSwitchedOffByWhatHasHitNothing)
{
    begin();
    const auto off = arm(R"({"kind":"connectionRefused","milliseconds":60000})");
    station.trace.beginAnew();
    station.faults.endDeeds();
    EXPECT_EQ(lines, "- -");
    ASSERT_TRUE(station.faults.disarm(off));
    EXPECT_EQ(lines, "CTS DSR");
}

} // namespace
} // namespace virtual_printer
