// One till on a byte stream: reads what it sends, answers, and only then shows what has happened. Anything
// that the stream reports ends the connection.
#pragma once

#include "virtual_printer/printers/station.h"
#include "virtual_printer/printers/till_session.h"

#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace virtual_printer {

template <typename Stream>
class Connection : public std::enable_shared_from_this<Connection<Stream>>
{
public:
    // `preparation` is called before each read.
    Connection(Stream open, Station& at, CodePage texts, const Codes& codes,
               std::function<void(Stream&)> preparation)
        : stream(std::move(open)), station(at), session(at, texts, codes),
          prepareToRead(std::move(preparation))
    {
    }

    // `afterwards` is called once, when the till has gone.
    void start(std::function<void()> afterwards)
    {
        ended = std::move(afterwards);
        read();
    }

    Stream& link() { return stream; }

    // Ends it from this side.
    void close()
    {
        boost::system::error_code ignored;
        stream.close(ignored);
    }

private:
    void read()
    {
        prepareToRead(stream);
        stream.async_read_some(
            boost::asio::buffer(received),
            [self = this->shared_from_this()](const boost::system::error_code& failure, std::size_t count) {
                if (failure) {
                    self->end();
                } else {
                    self->answer(
                        self->session.take({self->received.data(), count}, std::chrono::steady_clock::now()));
                }
            });
    }

    void answer(std::string bytes)
    {
        if (bytes.empty()) {
            station.show();
            read();
            return;
        }
        sending = std::move(bytes);
        boost::asio::async_write(
            stream, boost::asio::buffer(sending),
            [self = this->shared_from_this()](const boost::system::error_code& failure, std::size_t) {
                self->station.show();
                if (failure) {
                    self->end();
                } else {
                    self->session.hasSent(std::chrono::steady_clock::now());
                    self->read();
                }
            });
    }

    void end()
    {
        close();
        std::exchange(ended, [] {})();
    }

    Stream stream;
    Station& station;
    TillSession session;
    std::function<void(Stream&)> prepareToRead;
    std::array<char, 4096> received{};
    std::string sending;
    std::function<void()> ended = [] {};
};

} // namespace virtual_printer
