// What the virtual printer carries: fifty printers in one process, each with a till that sells receipts of
// eight commands, with memories on disk.
//
//     printer_load PRINTER-PROGRAM FOLDER      once a receipt a second, once as fast as it goes
//
// It prints the share of a core that the process takes, commands and synchronised receipts a second, and the
// exchanges that were not accepted.
#include "bench/sale_requests.h"

#include <array>
#include <boost/asio.hpp>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr int printers = 50;

class PrinterProcess
{
public:
    PrinterProcess(const std::string& program, const std::filesystem::path& folder)
    {
        const std::filesystem::path ready = folder / "ready.json";
        std::filesystem::remove(ready);
        std::vector<std::string> arguments = {program, "--data", folder, "--ready", ready};
        for (int number = 0; number < printers; ++number) {
            arguments.emplace_back("--printer");
            arguments.push_back("p" + std::to_string(number) + "=127.0.0.1:0");
        }
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        if (::posix_spawn(&process, program.c_str(), &actions, nullptr, pointers.data(), environ) != 0) {
            throw std::runtime_error("cannot start " + program);
        }
        while (!std::filesystem::exists(ready)) {
            if (::waitpid(process, nullptr, WNOHANG) != 0) {
                throw std::runtime_error("the printers did not start");
            }
            std::this_thread::yield();
        }
        for (const auto& printer : nlohmann::json::parse(std::ifstream(ready))["printers"]) {
            addresses.push_back(printer["address"]);
        }
    }
    PrinterProcess(const PrinterProcess&) = delete;
    PrinterProcess& operator=(const PrinterProcess&) = delete;
    ~PrinterProcess()
    {
        ::kill(process, SIGTERM);
        ::waitpid(process, nullptr, 0);
    }

    // Seconds of processor time, user's and system's.
    [[nodiscard]] double processorTime() const
    {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        std::istringstream fields(text.substr(text.rfind(')') + 2));
        std::string skipped;
        constexpr int fieldsBefore = 11;
        for (int field = 0; field < fieldsBefore; ++field) {
            fields >> skipped;
        }
        double user = 0;
        double system = 0;
        fields >> user >> system;
        return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
    }

    [[nodiscard]] double residentMegabytes() const
    {
        std::ifstream file("/proc/" + std::to_string(process) + "/statm");
        double all = 0;
        double resident = 0;
        file >> all >> resident;
        constexpr double megabyte = 1024 * 1024;
        return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / megabyte;
    }

    std::vector<std::string> addresses;

private:
    pid_t process = 0;
};

struct Totals
{
    long commands = 0;
    long receipts = 0;
    long refused = 0;
};

// A till that sends one request after the other and counts the answers.
class Till
{
public:
    Till(boost::asio::io_context& context, const std::string& address, Totals& sums,
         std::chrono::milliseconds betweenReceipts)
        : socket(context), pause(context), totals(sums), interval(betweenReceipts)
    {
        const std::size_t colon = address.rfind(':');
        socket.connect({boost::asio::ip::make_address(address.substr(0, colon)),
                        static_cast<std::uint16_t>(std::stoi(address.substr(colon + 1)))});
        socket.set_option(tcp::no_delay(true));
        const std::string day = bench::dayRequest();
        boost::asio::write(socket, boost::asio::buffer(day));
        boost::asio::read(socket, boost::asio::buffer(answer, 1));
        if (answer[0] != 0x06) { // open already: its code comes behind
            boost::asio::read(socket, boost::asio::buffer(answer, 1));
        }
    }

    void sellFrom(Clock::time_point first)
    {
        due = first;
        pause.expires_at(due);
        pause.async_wait([this](const boost::system::error_code& failure) {
            if (!failure) {
                next = 0;
                send();
            }
        });
    }

private:
    void send()
    {
        boost::asio::async_write(socket, boost::asio::buffer(requests[next]),
                                 [this](const boost::system::error_code& failure, std::size_t) {
                                     if (!failure) {
                                         receive();
                                     }
                                 });
    }

    void receive()
    {
        socket.async_read_some(boost::asio::buffer(answer),
                               [this](const boost::system::error_code& failure, std::size_t) {
                                   if (!failure) {
                                       count();
                                   }
                               });
    }

    void count()
    {
        ++totals.commands;
        totals.refused += answer[0] == 0x06 ? 0 : 1;
        if (++next < requests.size()) {
            send();
            return;
        }
        ++totals.receipts;
        sellFrom(due + interval);
    }

    tcp::socket socket;
    boost::asio::steady_timer pause;
    Totals& totals;
    std::chrono::milliseconds interval;
    Clock::time_point due;
    std::vector<std::string> requests = bench::receiptRequests();
    std::size_t next = 0;
    std::array<unsigned char, 16> answer{};
};

void run(const char* title, const PrinterProcess& process, std::chrono::milliseconds betweenReceipts)
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
    context.run_for(measured);
    const std::chrono::duration<double> lasted = Clock::now() - began;
    const double processor = process.processorTime() - processorBefore;
    std::printf("%-22s %9.0f commands/s %7.0f receipts/s %6.1f %% of a core %6.1f MB, %ld not accepted\n",
                title, static_cast<double>(totals.commands) / lasted.count(),
                static_cast<double>(totals.receipts) / lasted.count(), 100 * processor / lasted.count(),
                process.residentMegabytes(), totals.refused);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("printer_load: usage: printer_load PRINTER-PROGRAM FOLDER\n", stderr);
        return 2;
    }
    try {
        const PrinterProcess process(arguments[1], arguments[2]);
        run("50 x 1 receipt/s", process, std::chrono::seconds(1));
        run("as fast as it goes", process, std::chrono::milliseconds(0));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "printer_load: %s\n", failure.what());
        return 1;
    }
    return 0;
}
