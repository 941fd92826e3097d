#include "virtual_printer/transport/bounded_socket.h"

#include "virtual_printer/transport/socket_options.h"

#include <boost/asio/buffer.hpp>
#include <utility>

namespace virtual_printer {

using boost::asio::ip::tcp;

BoundedSocket::BoundedSocket(tcp::socket open, std::function<void()> afterwards)
    : socket(std::move(open)), deadline(socket.get_executor()), ended(std::move(afterwards))
{
    answerWithoutDelay(socket);
}

void BoundedSocket::limit(std::chrono::milliseconds duration)
{
    deadline.expires_after(duration);
    deadline.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        // One that is set anew may have its last call on the way.
        if (!failure && self->deadline.expiry() <= std::chrono::steady_clock::now()) {
            self->close();
        }
    });
}

void BoundedSocket::read(std::function<void(std::string_view)> then)
{
    socket.async_read_some(boost::asio::buffer(received),
                           [self = shared_from_this(), then = std::move(then)](
                               const boost::system::error_code& failure, std::size_t count) {
                               if (failure || !self->socket.is_open()) {
                                   self->close();
                               } else {
                                   then({self->received.data(), count});
                               }
                           });
}

void BoundedSocket::write(std::string bytes, std::chrono::milliseconds longestPause,
                          std::function<void()> then)
{
    outgoing = std::move(bytes);
    sent = 0;
    writeRest(longestPause, std::move(then));
}

void BoundedSocket::writeRest(std::chrono::milliseconds longestPause, std::function<void()> then)
{
    limit(longestPause);
    socket.async_write_some(boost::asio::buffer(outgoing) + sent,
                            [self = shared_from_this(), longestPause, then = std::move(then)](
                                const boost::system::error_code& failure, std::size_t count) {
                                self->sent += count;
                                if (failure || !self->socket.is_open()) {
                                    self->close();
                                } else if (self->sent < self->outgoing.size()) {
                                    self->writeRest(longestPause, then);
                                } else {
                                    self->outgoing.clear();
                                    self->limitNothing();
                                    then();
                                }
                            });
}

void BoundedSocket::noticeHangUp(std::function<void()> then)
{
    socket.async_wait(tcp::socket::wait_read, [self = shared_from_this(), then = std::move(then)](
                                                  const boost::system::error_code& failure) {
        if (!failure && self->socket.is_open() && hasHungUp(self->socket)) {
            then();
        }
    });
}

// A socket that is closed over unread bytes takes back what it has sent: they are read before.
void BoundedSocket::hangUp()
{
    constexpr std::chrono::seconds longest{2};
    boost::system::error_code ignored;
    socket.shutdown(tcp::socket::shutdown_send, ignored);
    limit(longest);
    drain(0);
}

void BoundedSocket::drain(std::size_t before)
{
    constexpr std::size_t patience = std::size_t{16} * 1024 * 1024;
    read([this, before](std::string_view more) {
        if (before + more.size() > patience) {
            close();
        } else {
            drain(before + more.size());
        }
    });
}

void BoundedSocket::close()
{
    boost::system::error_code ignored;
    deadline.cancel();
    socket.close(ignored);
    std::exchange(ended, [] {})();
}

} // namespace virtual_printer
