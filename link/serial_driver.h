// The link to a printer on a serial line. The printer's hardware lines are its flow control: DSR must be on
// for each byte that is written, CTS for a write to begin; while an answer is awaited, a printer that holds
// CTS off is busy and waited for without limit, and one that holds it on but says nothing has failed.
#pragma once

#include "link/block_protocol.h"
#include "link/serial_port_ex.h"

namespace telvofm {

class SerialDriver final : public BlockProtocol, private CSerialEx
{
public:
    // `name` begins with "COM" or "\\.\COM".
    SerialDriver(std::string_view name, std::uint32_t baud, StopBits stopBits);

    void open() override;
    void close() override;
    std::size_t writeRaw(std::string_view bytes) override;
    // `passThrough` means nothing here; without `waitMs` only a byte that is there already is read.
    Byte readByte(bool passThrough, std::int64_t waitMs) override;
    std::int64_t readRaw(Byte* buffer, std::int64_t count, const void* marker) override;

    // The same for all names of one port.
    static std::string portIdentity(std::string_view name);

private:
    void beginTry(Exchange exchange) override;
    void writeProtocolByte(Byte byte) override;
    Byte readAnswerByte() override;
    void readData(char* target, std::size_t count) override;
    void waitForDataSetReady();
    void requireOpen() const;

    std::uint32_t lineBaud;
    StopBits lineStopBits;
};

} // namespace telvofm
