// A test that asks the control interface one thing after the other, and how long its calls take.
#pragma once

#include "bench/endpoint.h"

#include <algorithm>
#include <atomic>
#include <boost/asio.hpp>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace bench {

// A call each few milliseconds, until it is told to end.
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
        boost::asio::ip::tcp::socket socket(context);
        socket.connect(endpointOf(address));
        socket.set_option(boost::asio::ip::tcp::no_delay(true));
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
                const auto start = std::chrono::steady_clock::now();
                boost::asio::write(socket, boost::asio::buffer(bytes));
                readAnswer(socket);
                milliseconds.push_back(
                    std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                        .count());
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

    static void readAnswer(boost::asio::ip::tcp::socket& socket)
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

} // namespace bench
