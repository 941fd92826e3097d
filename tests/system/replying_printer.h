// A printer that answers every request with the same reply, in data blocks.
#pragma once

#include "tests/system/printer_thread.h"
#include "tests/unit/bytes.h"

#include <string>
#include <utility>

namespace telvofm::test {

inline void sendReply(wire::Connection& connection, std::string_view reply)
{
    constexpr std::size_t largestPiece = 256;
    if (reply.empty()) {
        connection.send(std::string(1, eot));
    }
    while (!reply.empty()) {
        const std::string_view piece = reply.substr(0, largestPiece);
        reply.remove_prefix(piece.size());
        connection.send(block(piece, reply.empty() ? etx : etb));
        receiveBytes(connection, 1);
    }
}

inline PrinterThread::Dialogue replyingWith(std::string reply)
{
    return [reply = std::move(reply)](wire::Connection& connection) {
        while (receiveRequest(connection)) {
            sendReply(connection, reply);
        }
    };
}

} // namespace telvofm::test
