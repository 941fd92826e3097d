// The link to a printer over TCP. While it waits for an answer it looks every three seconds: a printer that
// stays silent is probed once with a single byte, one that says "busy" is waited for without limit, one that
// says "ready" but nothing else has nothing more to say.
#pragma once

#include "link/block_protocol.h"
#include "link/input_buffer.h"
#include "link/socket.h"

#include <mutex>

namespace telvofm {

class TcpDriver final : public BlockProtocol
{
public:
    // `address` is a host name, or a host name and a port joined by a colon.
    explicit TcpDriver(std::string address);

    void open() override;
    void close() override;
    void cut() override;
    std::size_t writeRaw(std::string_view bytes) override;
    Byte readByte(bool passThrough, std::int64_t waitMs) override;

private:
    void connectToFirstThatAccepts();
    bool createSocket(const SocketAddress& address);
    void closeSocket();
    void beginTry(Exchange exchange) override;
    void writeProtocolByte(Byte byte) override;
    Byte readAnswerByte() override;
    void readData(char* target, std::size_t count) override;
    void waitForBytes(std::int64_t waitMs, bool& probeSent);
    void sendRecorded(std::string_view bytes);

    Socket socket;
    std::mutex socketChanges; // while it is made, closed or cut
    InputBuffer input;
};

} // namespace telvofm
