// One serial port of the platform, call by call: each function is one call of the communications interface.
// CSerialEx makes the port's use out of these; a test can put a scripted port with a scripted clock in their
// place. There is one implementation per platform.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace telvofm {

// As the line settings of the platform number them.
enum class StopBits : std::uint8_t
{
    one = 0,
    oneAndHalf = 1,
    two = 2
};

class CSerial
{
public:
    struct ModemStatus
    {
        bool clearToSend;
        bool dataSetReady;
    };

    CSerial() = default;
    CSerial(const CSerial&) = delete;
    CSerial& operator=(const CSerial&) = delete;
    ~CSerial() { closePort(); }

    // Everything that returns false leaves the reason in `lastError`. `\\.\COM<n>`, or on POSIX systems also
    // `\\.\COM` followed by an absolute path.
    bool openPort(const std::string& name, std::uint32_t queueSize);
    void closePort();
    // 8 data bits and no parity.
    bool setLine(std::uint32_t baud, StopBits stopBits);
    // Reads wait for their bytes; the waits of the driver bound them.
    bool setBlockingReads();
    // Output flow controlled by CTS, RTS in handshake mode, DTR on, nothing in band.
    bool setHardwareHandshake();
    bool setSpecialCharacters(char event, char endOfFile);
    // All line events but the event character.
    bool setEventMask();
    bool purge();
    bool raiseDataTerminalReady();
    bool modemStatus(ModemStatus& status);

    // Writes one byte; a time-out is a failure.
    bool writePort(char byte, std::chrono::milliseconds limit);
    // Waits for the first byte, takes what is there up to the size of the buffer and sets `count`; 0 after a
    // time-out.
    bool readPort(std::span<char> buffer, std::chrono::milliseconds limit, std::size_t& count);

    [[nodiscard]] std::uint32_t lastError() const { return error; }

    // The same for all names of one port.
    static std::string identity(const std::string& name);

    static std::chrono::milliseconds now();
    static void pause(std::chrono::milliseconds time);

private:
    bool outcome(bool succeeded);

    static constexpr std::intptr_t closed = -1;

    std::intptr_t handle = closed;
    std::atomic<std::uint32_t> error = 0; // raw access may fail beside an exchange
};

} // namespace telvofm
