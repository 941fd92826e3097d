// The way to the printer: one object of this class stands for one connection, whatever carries it. The device
// object runs its exchanges through slots 3 to 6 while its lock is held; rawRead and rawWrite use slots 7 and
// 9 without it. Every failure is thrown as Telvo06FMException and leaves the link usable.
//
// Who closes a link beside running calls interrupts it first, so that no wait without limit holds it up.
#pragma once

#include "link/exchange_lock.h"
#include "link/transport_lock.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace telvofm {

class LinkDriver
{
public:
    using Byte = unsigned char;

    explicit LinkDriver(std::string connectionText);
    // Callers close first: no driver closes its transport here.
    virtual ~LinkDriver() = default;
    LinkDriver(const LinkDriver&) = delete;
    LinkDriver& operator=(const LinkDriver&) = delete;

    virtual void open() = 0;
    // Does nothing on a closed link.
    virtual void close() = 0;
    // Sends a request and its checksum byte; returns the printer's acknowledge byte.
    virtual Byte sendCommand(std::string_view request) = 0;
    // Sends data as blocks of at most 256 bytes; the last one ends the upload when `lastPart` is set.
    virtual void sendBlocks(std::string_view data, bool lastPart) = 0;
    // Sends a request and returns the reply that comes back in data blocks.
    virtual std::string query(std::string_view request) = 0;
    // As `query`, but any first byte that is not part of the protocol is an error at once.
    virtual std::string queryStrict(std::string_view request) = 0;
    // Writes the bytes as they are and returns their number.
    virtual std::size_t writeRaw(std::string_view bytes) = 0;
    // With `waitMs` 0 a TCP link waits in 3-second steps and probes the printer, a serial link does not wait.
    // `passThrough` keeps a TCP link from taking 0x11 and 0x13 for flow control.
    virtual Byte readByte(bool passThrough, std::int64_t waitMs) = 0;
    // Reads up to `count` bytes until nothing more comes in time; without a marker it reads nothing.
    virtual std::int64_t readRaw(Byte* buffer, std::int64_t count, const void* marker);

    // Ends the waits of the calls that are inside, each when its present step is over and with the code of a
    // closed link. It lasts until the link is opened again.
    void interrupt() { isInterrupted = true; }
    // Interrupts, breaks the transport under a call that is blocked in the platform itself, and ends what is
    // being written where it stands. It lasts as long.
    virtual void cut() { isInterrupted = isCut = true; }

    // Held by each exchange: device objects that share a link share its lock.
    ExchangeLock exchangeLock;
    TransportLock transportLock;

    // Kept for the caller; no exchange reads it, which is meant.
    void setTimeout(std::int64_t milliseconds) { timeoutMs = milliseconds; }
    [[nodiscard]] std::int64_t timeout() const { return timeoutMs; }

protected:
    // Every wait without limit looks here before it goes on.
    [[nodiscard]] bool mustEnd() const { return isInterrupted.load(std::memory_order_relaxed); }
    [[nodiscard]] bool wasCut() const { return isCut.load(std::memory_order_relaxed); }
    void startAnew() { isInterrupted = isCut = false; }

    std::string portName;
    bool isOpen = false;

private:
    std::atomic<bool> isInterrupted = false;
    std::atomic<bool> isCut = false;
    std::atomic<std::int64_t> timeoutMs = 5000;
};

} // namespace telvofm
