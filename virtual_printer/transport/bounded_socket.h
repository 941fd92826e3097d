// A client's socket on which nothing takes for ever, however slow, half-open or dead the client is. It lives
// as long as one of its operations, and what is called upon one is not called once the connection has ended.
#pragma once

#include <array>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace virtual_printer {

class BoundedSocket : public std::enable_shared_from_this<BoundedSocket>
{
public:
    // `afterwards` is called once, when the connection has ended from either side.
    BoundedSocket(boost::asio::ip::tcp::socket open, std::function<void()> afterwards);

    // What is going on must be over within this time, or the connection ends.
    void limit(std::chrono::milliseconds duration);
    void limitNothing() { deadline.cancel(); }

    void read(std::function<void(std::string_view)> then);
    // All of them; the client has to take some within each `longestPause`.
    void write(std::string bytes, std::chrono::milliseconds longestPause, std::function<void()> then);
    [[nodiscard]] bool isWriting() const { return !outgoing.empty(); }
    // While nobody reads.
    void noticeHangUp(std::function<void()> then);

    // Ends the connection when the client has what was sent to it.
    void hangUp();
    void close();

private:
    void writeRest(std::chrono::milliseconds longestPause, std::function<void()> then);
    void drain(std::size_t before);

    boost::asio::ip::tcp::socket socket;
    boost::asio::steady_timer deadline;
    std::function<void()> ended;
    std::array<char, 4096> received{};
    std::string outgoing;
    std::size_t sent = 0; // of it
};

} // namespace virtual_printer
