// A printer's serial line: the port set up for it, and reads and writes whose failures are thrown. The
// printer's modem lines carry its flow control.
#pragma once

#include "link/serial_port.h"

namespace telvofm {

class CSerialEx : public CSerial
{
public:
    // Opens and sets up the port; a port that is open already is closed first.
    void openLine(const std::string& name, std::uint32_t baud, StopBits stopBits);
    // Discards what has been received and what has not been sent yet.
    void purgeLine();
    bool isDataSetReady();
    void writeToLine(char byte);
    // The number of bytes read; 0 after a time-out.
    std::size_t readLine(std::span<char> buffer, std::chrono::milliseconds limit);
    // Off also when the status cannot be read.
    bool isClearToSend();

private:
    void require(bool succeeded);
};

} // namespace telvofm
