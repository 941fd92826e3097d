// The device's side of the block protocol: requests are judged by their checksum, carried out and answered;
// data goes out in blocks that the till acknowledges; uploads come in in blocks.
#pragma once

#include "virtual_printer/printer.h"
#include "virtual_printer/transport.h"

namespace virtual_printer {

class ProtocolServer
{
public:
    ProtocolServer(ByteStream& connection, Printer& device) : stream(connection), printer(device) {}

    // Serves one till until it has gone. Bytes that begin nothing are passed over.
    void serve();

private:
    // Each is false when the till has gone.
    bool takeRequest();
    bool takeBlock();
    bool sendData(const std::string& data);
    bool sendBlock(std::string_view piece, bool isLast);
    void refuse(Refusal refusal);
    void writeByte(unsigned char byte);

    ByteStream& stream;
    Printer& printer;
};

} // namespace virtual_printer
