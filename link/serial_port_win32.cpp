#include "link/serial_port.h"

#include <algorithm>
#include <windows.h>

namespace telvofm {
namespace {

HANDLE portOf(std::intptr_t handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

template <typename Change>
bool changeSettings(HANDLE port, Change change)
{
    DCB settings{};
    settings.DCBlength = sizeof settings;
    if (::GetCommState(port, &settings) == 0) {
        return false;
    }
    change(settings);
    return ::SetCommState(port, &settings) != 0;
}

// A port comes as the last program left it. Whatever our own steps do not set is put right here, so that no
// byte is dropped or replaced and no call refused.
void clean(DCB& settings)
{
    settings.fParity = FALSE;
    settings.fErrorChar = FALSE;
    settings.ErrorChar = 0;
    settings.fNull = FALSE;
    settings.fAbortOnError = FALSE; // otherwise noise makes every call fail until the error has been fetched
    settings.fTXContinueOnXoff = FALSE;
    // Not in use; but two that are equal are refused all the same.
    settings.XonChar = 0x11;
    settings.XoffChar = 0x13;
    // When the handshake holds the printer off. The platform's usual values: they suit our queues, and fit
    // the smaller one that a driver may have kept, which refuses limits beyond its size.
    settings.XonLim = 2048;
    settings.XoffLim = 512;
    settings.wReserved = 0;
}

// One overlapped operation with an event of its own.
class Overlapped
{
public:
    Overlapped() { operation.hEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr); }
    Overlapped(const Overlapped&) = delete;
    Overlapped& operator=(const Overlapped&) = delete;
    ~Overlapped()
    {
        if (hasEvent()) {
            ::CloseHandle(operation.hEvent);
        }
    }

    // Without one no operation can begin; GetLastError has the reason.
    [[nodiscard]] bool hasEvent() const { return operation.hEvent != nullptr; }

    // Waits for what `started` says has begun; the number of bytes moved, also when the time ran out. False
    // on a failure, with the reason in GetLastError.
    bool finish(HANDLE port, bool started, std::chrono::milliseconds limit, DWORD& moved)
    {
        moved = 0;
        DWORD waited = WAIT_OBJECT_0;
        if (!started) {
            if (::GetLastError() != ERROR_IO_PENDING) {
                return false;
            }
            waited = ::WaitForSingleObject(operation.hEvent, static_cast<DWORD>(limit.count()));
            if (waited != WAIT_OBJECT_0) {
                ::CancelIo(port);
            }
        }
        // Also after a cancel the operation has our memory until its end; and a byte that came before the
        // cancel counts.
        if (::GetOverlappedResult(port, &operation, &moved, TRUE) != 0) {
            return true;
        }
        return waited == WAIT_TIMEOUT && ::GetLastError() == ERROR_OPERATION_ABORTED;
    }

    OVERLAPPED operation{};
};

} // namespace

bool CSerial::openPort(const std::string& name, std::uint32_t queueSize)
{
    const HANDLE opened = ::CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OVERLAPPED, nullptr);
    if (!outcome(opened != INVALID_HANDLE_VALUE)) {
        return false;
    }
    handle = reinterpret_cast<std::intptr_t>(opened);
    return outcome(::SetupComm(opened, queueSize, queueSize) != 0);
}

void CSerial::closePort()
{
    if (handle != closed) {
        ::CloseHandle(portOf(handle));
        handle = closed;
    }
}

bool CSerial::setLine(std::uint32_t baud, StopBits stopBits)
{
    return outcome(changeSettings(portOf(handle), [&](DCB& settings) {
        clean(settings);
        settings.BaudRate = baud;
        settings.ByteSize = 8;
        settings.Parity = NOPARITY;
        settings.StopBits = static_cast<BYTE>(stopBits);
        settings.fBinary = TRUE;
    }));
}

bool CSerial::setBlockingReads()
{
    COMMTIMEOUTS timeouts{};
    if (!outcome(::GetCommTimeouts(portOf(handle), &timeouts) != 0)) {
        return false;
    }
    timeouts.ReadIntervalTimeout = 0;
    timeouts.ReadTotalTimeoutMultiplier = 0;
    timeouts.ReadTotalTimeoutConstant = 0;
    // Of writes too: the limit of a write is ours.
    timeouts.WriteTotalTimeoutMultiplier = 0;
    timeouts.WriteTotalTimeoutConstant = 0;
    return outcome(::SetCommTimeouts(portOf(handle), &timeouts) != 0);
}

bool CSerial::setHardwareHandshake()
{
    return outcome(changeSettings(portOf(handle), [](DCB& settings) {
        settings.fOutxCtsFlow = TRUE;
        settings.fRtsControl = RTS_CONTROL_HANDSHAKE;
        settings.fDtrControl = DTR_CONTROL_ENABLE;
        settings.fOutX = FALSE;
        settings.fInX = FALSE;
        settings.fOutxDsrFlow = FALSE;
        settings.fDsrSensitivity = FALSE;
    }));
}

bool CSerial::setSpecialCharacters(char event, char endOfFile)
{
    return outcome(changeSettings(portOf(handle), [&](DCB& settings) {
        settings.EvtChar = event;
        settings.EofChar = endOfFile;
    }));
}

bool CSerial::setEventMask()
{
    constexpr DWORD events = EV_RXCHAR | EV_TXEMPTY | EV_CTS | EV_DSR | EV_RLSD | EV_BREAK | EV_ERR | EV_RING;
    return outcome(::SetCommMask(portOf(handle), events) != 0);
}

bool CSerial::purge()
{
    constexpr DWORD both = PURGE_TXCLEAR | PURGE_RXCLEAR;
    return outcome(::PurgeComm(portOf(handle), both) != 0);
}

bool CSerial::raiseDataTerminalReady()
{
    return outcome(::EscapeCommFunction(portOf(handle), SETDTR) != 0);
}

bool CSerial::modemStatus(ModemStatus& status)
{
    DWORD lines = 0;
    if (!outcome(::GetCommModemStatus(portOf(handle), &lines) != 0)) {
        return false;
    }
    status.clearToSend = (lines & MS_CTS_ON) != 0;
    status.dataSetReady = (lines & MS_DSR_ON) != 0;
    return true;
}

bool CSerial::writePort(char byte, std::chrono::milliseconds limit)
{
    Overlapped writing;
    if (!outcome(writing.hasEvent())) {
        return false;
    }
    DWORD written = 0;
    const bool started = ::WriteFile(portOf(handle), &byte, 1, nullptr, &writing.operation) != 0;
    if (!outcome(writing.finish(portOf(handle), started, limit, written))) {
        return false;
    }
    if (written == 0) {
        error = ERROR_TIMEOUT;
    }
    return written == 1;
}

bool CSerial::readPort(std::span<char> buffer, std::chrono::milliseconds limit, std::size_t& count)
{
    // A read waits for all that it asks for: ask for what is there, and for one byte when nothing is.
    COMSTAT waiting{};
    DWORD lineErrors = 0;
    if (!outcome(::ClearCommError(portOf(handle), &lineErrors, &waiting) != 0)) {
        return false;
    }
    const auto wanted = std::min<std::size_t>(buffer.size(), std::max<DWORD>(waiting.cbInQue, 1));
    Overlapped reading;
    if (!outcome(reading.hasEvent())) {
        return false;
    }
    DWORD received = 0;
    const bool started = ::ReadFile(portOf(handle), buffer.data(), static_cast<DWORD>(wanted), nullptr,
                                    &reading.operation) != 0;
    if (!outcome(reading.finish(portOf(handle), started, limit, received))) {
        return false;
    }
    count = received;
    return true;
}

std::string CSerial::identity(const std::string& name)
{
    return name;
}

std::chrono::milliseconds CSerial::now()
{
    return std::chrono::milliseconds(::GetTickCount64());
}

void CSerial::pause(std::chrono::milliseconds time)
{
    ::Sleep(static_cast<DWORD>(time.count()));
}

bool CSerial::outcome(bool succeeded)
{
    if (!succeeded) {
        error = ::GetLastError();
    }
    return succeeded;
}

} // namespace telvofm
