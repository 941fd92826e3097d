// A journal fetched by the library's system calls alone: once kept, as who wants it has to, once thrown away.
#pragma once

#include "bench/journal_printer.h"
#include "bench/own_process.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace bench {

// The data among the bytes received, which stand at a place of their block: after ":" and the length byte.
inline std::string_view dataIn(std::string_view received, std::size_t place, std::size_t dataSize)
{
    constexpr std::size_t head = 2;
    const std::size_t begin = std::max(head, place);
    const std::size_t end = std::min(head + dataSize, place + received.size());
    return begin < end ? received.substr(begin - place, end - begin) : std::string_view();
}

// The library's system calls, one by one: a wait and a receive of at most 256 bytes until a block is there,
// and the one byte that asks for the next. `use` gets the data.
template <typename Use>
Outcome fetchBare(int socket, std::size_t size, Use use)
{
    const auto send = [socket](std::string_view bytes) {
        if (::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) {
            _exit(1);
        }
    };
    std::array<char, 256> buffer{};
    const Meter meter;
    send(journalRequest.substr(0, journalRequest.size() - 1));
    send(journalRequest.substr(journalRequest.size() - 1)); // the checksum byte goes out by itself
    for (std::size_t left = size; left > 0;) {
        const std::size_t data = std::min(left, largestPiece);
        for (std::size_t missing = data + blockOverhead; missing > 0;) {
            pollfd readable = {.fd = socket, .events = POLLIN, .revents = 0};
            if (poll(&readable, 1, 3000) != 1) {
                _exit(1);
            }
            const ssize_t received = recv(socket, buffer.data(), buffer.size(), 0);
            if (received <= 0) {
                _exit(1);
            }
            const std::string_view came(buffer.data(), static_cast<std::size_t>(received));
            use(dataIn(came, data + blockOverhead - missing, data));
            missing -= came.size();
        }
        left -= data;
        send(left > 0 ? "\x06" : "\x03");
    }
    return meter.outcome();
}

inline Outcome fetchAndKeep(int socket, std::size_t size)
{
    std::string kept;
    const Outcome outcome = fetchBare(socket, size, [&kept](std::string_view data) { kept.append(data); });
    if (kept.size() != size) {
        _exit(1);
    }
    return outcome;
}

inline Outcome fetchAndThrowAway(int socket, std::size_t size)
{
    return fetchBare(socket, size, [](std::string_view /*data*/) {});
}

} // namespace bench
