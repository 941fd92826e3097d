// What the virtual printer carries: fifty printers in one process, each with a till that sells receipts of
// eight commands, with memories on disk.
//
//     printer_load PRINTER-PROGRAM FOLDER      once a receipt a second, once as fast as it goes
//
// It prints the share of a core that the process takes, commands that were accepted and synchronised receipts
// a second, and apart from them the exchanges that were not accepted; then, with new printers, the same
// beside a test that asks the control interface one thing after the other, and how long these calls take.
#include "bench/printer_process.h"
#include "bench/sale_requests.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/asio.hpp>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using bench::PrinterProcess;
using boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr int printers = 50;

struct Totals
{
    long commands = 0; // accepted
    long receipts = 0; // all of whose commands were
    long notAccepted = 0;
};

tcp::endpoint endpointOf(const std::string& address)
{
    const std::size_t colon = address.rfind(':');
    return {boost::asio::ip::make_address(address.substr(0, colon)),
            static_cast<std::uint16_t>(std::stoi(address.substr(colon + 1)))};
}

// A till that sends one request after the other and counts the answers.
class Till
{
public:
    Till(boost::asio::io_context& context, const std::string& address, Totals& sums,
         std::chrono::milliseconds betweenReceipts)
        : socket(context), pause(context), totals(sums), interval(betweenReceipts)
    {
        socket.connect(endpointOf(address));
        socket.set_option(tcp::no_delay(true));
        const std::string day = bench::dayRequest();
        boost::asio::write(socket, boost::asio::buffer(day));
        boost::asio::read(socket, boost::asio::buffer(answer));
        if (answer[0] != 0x06) { // open already: its code comes behind
            boost::asio::read(socket, boost::asio::buffer(answer));
        }
    }

    void sellFrom(Clock::time_point first)
    {
        due = first;
        pause.expires_at(due);
        pause.async_wait([this](const boost::system::error_code& failure) {
            if (!failure) {
                next = 0;
                isWhole = true;
                send();
            }
        });
    }

    // Goes on to the end of the receipt that is open.
    void endReceipt()
    {
        isEnding = true;
        pause.cancel();
    }

private:
    void send()
    {
        boost::asio::async_write(socket, boost::asio::buffer(requests[next]),
                                 [this](const boost::system::error_code& failure, std::size_t) {
                                     if (failure) {
                                         ++totals.notAccepted;
                                     } else {
                                         receive();
                                     }
                                 });
    }

    void receive()
    {
        boost::asio::async_read(socket, boost::asio::buffer(answer),
                                [this](const boost::system::error_code& failure, std::size_t) {
                                    if (failure) {
                                        ++totals.notAccepted;
                                    } else if (answer[0] == 0x06) {
                                        accepted();
                                    } else {
                                        refused();
                                    }
                                });
    }

    void refused()
    {
        ++totals.notAccepted;
        isWhole = false;
        boost::asio::async_read(socket, boost::asio::buffer(answer), // its code
                                [this](const boost::system::error_code& failure, std::size_t) {
                                    if (!failure) {
                                        goOn();
                                    }
                                });
    }

    void accepted()
    {
        ++totals.commands;
        goOn();
    }

    void goOn()
    {
        if (++next < requests.size()) {
            send();
            return;
        }
        totals.receipts += isWhole ? 1 : 0;
        if (!isEnding) {
            sellFrom(due + interval);
        }
    }

    tcp::socket socket;
    boost::asio::steady_timer pause;
    Totals& totals;
    std::chrono::milliseconds interval;
    Clock::time_point due;
    std::vector<std::string> requests = bench::receiptRequests();
    std::size_t next = 0;
    bool isWhole = true; // the receipt that is sold: nothing of it was refused
    bool isEnding = false;
    std::array<unsigned char, 1> answer{};
};

// A test that asks one thing after the other, a call each few milliseconds, until it is told to end.
class ControlCalls
{
public:
    explicit ControlCalls(const std::string& address) : asker([this, address] { askAll(address); }) {}
    ControlCalls(const ControlCalls&) = delete;
    ControlCalls& operator=(const ControlCalls&) = delete;
    ~ControlCalls() { end(); }

    void end()
    {
        isEnding = true;
        if (asker.joinable()) {
            asker.join();
        }
    }

    void print()
    {
        end();
        std::sort(milliseconds.begin(), milliseconds.end());
        const auto at = [this](double share) {
            return milliseconds.at(
                static_cast<std::size_t>(share * static_cast<double>(milliseconds.size() - 1)));
        };
        std::printf("    %zu control calls: median %.2f ms, 95th percentile %.2f ms, longest %.2f ms\n",
                    milliseconds.size(), at(0.5), at(0.95), at(1));
    }

private:
    void askAll(const std::string& address)
    {
        boost::asio::io_context context;
        tcp::socket socket(context);
        socket.connect(endpointOf(address));
        socket.set_option(tcp::no_delay(true));
        const std::string here = "/printers/p7/";
        const std::vector<std::string> calls = {
            call("GET", here + "state", ""),
            call("GET", here + "totals", ""),
            call("GET", here + "documents?kind=receipt&limit=10", ""),
            call(
                "POST", here + "assert",
                R"({"received": [{"name": "payment", "fields": {"total": "99.00"}, "count": 0}], "situation": "open"})"),
            call("POST", here + "faults", R"({"kind": "refuse", "code": 49, "command": "fiscalization"})"),
            call("DELETE", here + "faults", ""),
            call("PATCH", here + "hardware", R"({"drawer": "closed"})"),
            call("GET", here + "trace?limit=50", "")};
        while (!isEnding) {
            for (const std::string& bytes : calls) {
                const auto start = Clock::now();
                boost::asio::write(socket, boost::asio::buffer(bytes));
                readAnswer(socket);
                milliseconds.push_back(
                    std::chrono::duration<double, std::milli>(Clock::now() - start).count());
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        }
    }

    static std::string call(const std::string& method, const std::string& path, const std::string& body)
    {
        return method + " " + path +
               " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
               body;
    }

    static void readAnswer(tcp::socket& socket)
    {
        const std::string name = "Content-Length: ";
        std::string text;
        const std::size_t head =
            boost::asio::read_until(socket, boost::asio::dynamic_buffer(text), "\r\n\r\n");
        const std::size_t size = std::stoul(text.substr(text.find(name) + name.size()));
        boost::asio::read(socket, boost::asio::dynamic_buffer(text),
                          boost::asio::transfer_exactly(head + size - text.size()));
    }

    std::atomic<bool> isEnding = false;
    std::vector<double> milliseconds;
    std::thread asker;
};

void run(const char* title, const PrinterProcess& process, std::chrono::milliseconds betweenReceipts,
         bool isControlled)
{
    constexpr std::chrono::seconds measured{10};
    boost::asio::io_context context(1);
    Totals totals;
    std::vector<std::unique_ptr<Till>> tills;
    const auto start = Clock::now();
    for (std::size_t number = 0; number < process.addresses.size(); ++number) {
        tills.push_back(std::make_unique<Till>(context, process.addresses[number], totals, betweenReceipts));
        tills.back()->sellFrom(start + betweenReceipts * static_cast<int>(number) / printers);
    }
    const double processorBefore = process.processorTime();
    const auto began = Clock::now();
    std::optional<ControlCalls> control;
    if (isControlled) {
        control.emplace(process.control);
    }
    context.run_for(measured);
    if (control) {
        control->end();
    }
    const std::chrono::duration<double> lasted = Clock::now() - began;
    const double processor = process.processorTime() - processorBefore;
    std::printf("%-22s %9.0f commands/s %7.0f receipts/s %6.1f %% of a core %6.1f MB, %ld not accepted\n",
                title, static_cast<double>(totals.commands) / lasted.count(),
                static_cast<double>(totals.receipts) / lasted.count(), 100 * processor / lasted.count(),
                process.residentMegabytes(), totals.notAccepted);
    if (control) {
        control->print();
    }
    for (const auto& till : tills) {
        till->endReceipt();
    }
    context.restart();
    context.run();
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("printer_load: usage: printer_load PRINTER-PROGRAM FOLDER\n", stderr);
        return 2;
    }
    try {
        std::vector<std::string> names;
        names.reserve(printers);
        for (int number = 0; number < printers; ++number) {
            names.push_back("p" + std::to_string(number));
        }
        for (const bool isControlled : {false, true}) {
            const std::filesystem::path folder =
                std::filesystem::path(arguments[2]) / (isControlled ? "controlled" : "alone");
            std::filesystem::create_directories(folder);
            const PrinterProcess process(arguments[1], folder, names);
            run("50 x 1 receipt/s", process, std::chrono::seconds(1), isControlled);
            run("as fast as it goes", process, std::chrono::milliseconds(0), isControlled);
        }
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "printer_load: %s\n", failure.what());
        return 1;
    }
    return 0;
}
