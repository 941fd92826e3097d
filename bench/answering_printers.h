// Printers that only answer, in a thread of their own: what the same requests and answers cost without a
// printer behind them.
#pragma once

#include "bench/sale_requests.h"

#include <array>
#include <boost/asio.hpp>
#include <cstddef>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace bench {

// Knows what its till sends: the day, then receipts. It accepts all of it.
class AnsweringPrinter
{
public:
    explicit AnsweringPrinter(boost::asio::ip::tcp::socket till) : socket(std::move(till))
    {
        socket.set_option(boost::asio::ip::tcp::no_delay(true));
        receive();
    }

private:
    void receive()
    {
        boost::asio::async_read(socket, boost::asio::buffer(received.data(), requests[next].size()),
                                [this](const boost::system::error_code& failure, std::size_t) {
                                    if (!failure) {
                                        answer();
                                    }
                                });
    }

    void answer()
    {
        boost::asio::async_write(socket, boost::asio::buffer(accepted),
                                 [this](const boost::system::error_code& failure, std::size_t) {
                                     if (!failure) {
                                         next = next + 1 < requests.size() ? next + 1 : 1; // behind the day
                                         receive();
                                     }
                                 });
    }

    static std::vector<std::string> dayAndReceipt()
    {
        std::vector<std::string> requests = receiptRequests();
        requests.insert(requests.begin(), dayRequest());
        return requests;
    }

    boost::asio::ip::tcp::socket socket;
    std::vector<std::string> requests = dayAndReceipt();
    std::size_t next = 0;
    std::array<char, 256> received{}; // longer than each request
    static constexpr std::array<char, 1> accepted = {0x06};
};

class AnsweringPrinters
{
public:
    explicit AnsweringPrinters(int count)
    {
        for (int number = 0; number < count; ++number) {
            using boost::asio::ip::tcp;
            acceptors.emplace_back(context, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0));
            addresses.push_back("127.0.0.1:" + std::to_string(acceptors.back().local_endpoint().port()));
        }
        for (auto& acceptor : acceptors) {
            acceptor.async_accept(
                [this](const boost::system::error_code& failure, boost::asio::ip::tcp::socket till) {
                    if (!failure) {
                        printers.push_back(std::make_unique<AnsweringPrinter>(std::move(till)));
                    }
                });
        }
        server = std::thread([this] { context.run(); });
    }
    AnsweringPrinters(const AnsweringPrinters&) = delete;
    AnsweringPrinters& operator=(const AnsweringPrinters&) = delete;
    ~AnsweringPrinters()
    {
        context.stop();
        server.join();
    }

    std::vector<std::string> addresses;

private:
    boost::asio::io_context context{1};
    std::vector<boost::asio::ip::tcp::acceptor> acceptors;
    std::vector<std::unique_ptr<AnsweringPrinter>> printers;
    std::thread server;
};

} // namespace bench
