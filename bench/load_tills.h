// Tills that sell receipts of eight commands at many printers, all in one thread.
#pragma once

#include "bench/endpoint.h"
#include "bench/sale_requests.h"

#include <array>
#include <boost/asio.hpp>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace bench {

struct Totals
{
    long commands = 0; // accepted
    long receipts = 0; // all of whose commands were
    long notAccepted = 0;
};

// A till that sends one request after the other and counts the answers.
class LoadTill
{
public:
    LoadTill(boost::asio::io_context& context, const std::string& address, Totals& sums,
             std::chrono::milliseconds betweenReceipts)
        : socket(context), pause(context), totals(sums), interval(betweenReceipts)
    {
        socket.connect(endpointOf(address));
        socket.set_option(boost::asio::ip::tcp::no_delay(true));
        const std::string day = dayRequest();
        boost::asio::write(socket, boost::asio::buffer(day));
        boost::asio::read(socket, boost::asio::buffer(answer));
        if (answer[0] != 0x06) { // open already: its code comes behind
            boost::asio::read(socket, boost::asio::buffer(answer));
        }
    }

    void sellFrom(std::chrono::steady_clock::time_point first)
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

    boost::asio::ip::tcp::socket socket;
    boost::asio::steady_timer pause;
    Totals& totals;
    std::chrono::milliseconds interval;
    std::chrono::steady_clock::time_point due;
    std::vector<std::string> requests = receiptRequests();
    std::size_t next = 0;
    bool isWhole = true; // the receipt that is sold: nothing of it was refused
    bool isEnding = false;
    std::array<unsigned char, 1> answer{};
};

// One at each printer; receipts begin as long after each other as is said, evenly shared among the tills.
class LoadTills
{
public:
    LoadTills(const std::vector<std::string>& addresses, std::chrono::milliseconds betweenReceipts)
    {
        const auto start = std::chrono::steady_clock::now();
        const int count = static_cast<int>(addresses.size());
        for (int number = 0; number < count; ++number) {
            const std::string& address = addresses[static_cast<std::size_t>(number)];
            tills.push_back(std::make_unique<LoadTill>(context, address, totals, betweenReceipts));
            tills.back()->sellFrom(start + betweenReceipts * number / count);
        }
    }
    // The seconds that it really took.
    double sellFor(std::chrono::seconds wanted)
    {
        const auto began = std::chrono::steady_clock::now();
        context.run_for(wanted);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    }

    void endReceipts()
    {
        for (const auto& till : tills) {
            till->endReceipt();
        }
        context.restart();
        context.run();
    }

    Totals totals;

private:
    boost::asio::io_context context{1};
    std::vector<std::unique_ptr<LoadTill>> tills;
};

} // namespace bench
