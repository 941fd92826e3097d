#include "api/session.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"
#include "link/endless_wait.h"
#include "link/raw_log.h"
#include "link/serial_driver.h"
#include "link/tcp_driver.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>
#include <utility>
#include <vector>

namespace telvofm {
namespace {

struct Session
{
    std::shared_ptr<LinkDriver> driver;
    std::shared_ptr<Device> device;
    std::optional<std::string> port; // what identifies it; on serial links only
};

struct Sessions
{
    std::mutex lock;
    Session current;
    // A second open without a close neither closes nor frees the first connection: this is meant.
    std::vector<Session> replaced;
    // No call finds them any more, and their links are about to be closed.
    std::vector<Session> ending;
    std::condition_variable hasEnded;
};

// Never destroyed: closing a port while the host program exits could block it.
Sessions& sessions()
{
    static Sessions& all = *new Sessions;
    return all;
}

Session currentSession()
{
    const std::scoped_lock lock(sessions().lock);
    return sessions().current;
}

Session takeCurrentSession()
{
    const std::scoped_lock lock(sessions().lock);
    Session taken = std::exchange(sessions().current, {});
    if (taken.device) {
        sessions().ending.push_back(taken); // room was made when it was opened
    }
    return taken;
}

// Closes the link. Running calls end with the step that they wait in; one that is blocked in the platform
// itself is cut off.
void end(const Session& session)
{
    constexpr std::chrono::seconds step{3};
    session.driver->interrupt();
    std::unique_lock exchange(session.device->lock, std::defer_lock);
    while (!exchange.try_lock_for(step)) {
        session.driver->cut();
    }
    session.device->close();
    {
        const std::scoped_lock lock(sessions().lock);
        std::erase_if(sessions().ending, [&](const Session& one) { return one.device == session.device; });
    }
    sessions().hasEnded.notify_all();
}

// Those that are meant, the current one or replaced ones.
template <typename IsMeant>
void endSessions(IsMeant isMeant)
{
    std::vector<Session> ending;
    {
        const std::scoped_lock lock(sessions().lock);
        auto& replaced = sessions().replaced;
        auto& current = sessions().current;
        const auto first = std::partition(replaced.begin(), replaced.end(),
                                          [&](const Session& session) { return !isMeant(session); });
        ending.assign(first, replaced.end());
        if (current.device && isMeant(current)) {
            ending.push_back(current);
            current = {};
        }
        replaced.erase(first, replaced.end());
        sessions().ending.insert(sessions().ending.end(), ending.begin(), ending.end());
    }
    std::for_each(ending.begin(), ending.end(), end);
}

// A closing of another thread has the port until it returns.
void waitForEndingSessions(const std::string& port)
{
    std::unique_lock lock(sessions().lock);
    const auto isFree = [&] {
        const auto& ending = sessions().ending;
        return std::none_of(ending.begin(), ending.end(),
                            [&](const Session& session) { return session.port == port; });
    };
    waitUntil(isFree, sessions().hasEnded, lock);
}

// Makes the session the current one and opens its link. A failed open leaves both in place.
int openSession(Session session, bool convertText)
{
    const auto device = session.device;
    // From before it can be found: who closes it meanwhile has to find it open, or nobody would close it.
    const std::scoped_lock exchange(device->lock);
    {
        const std::scoped_lock lock(sessions().lock);
        sessions().ending.reserve(sessions().ending.size() + sessions().replaced.size() + 2);
        if (sessions().current.device) {
            sessions().replaced.push_back(sessions().current);
        }
        sessions().current = std::move(session);
    }
    device->open(convertText);
    return succeeded;
}

// Only the beginning decides, and its case counts: COMX is a serial port, com3 a host.
bool namesSerialPort(std::string_view name)
{
    return name.starts_with("COM") || name.starts_with(R"(\\.\COM)");
}

int openTcp(std::string_view name)
{
    constexpr std::int64_t tcpTimeoutMs = 15000;
    const auto driver = std::make_shared<TcpDriver>(std::string(name));
    driver->setTimeout(tcpTimeoutMs);
    return openSession({driver, std::make_shared<Device>(driver), std::nullopt}, false);
}

constexpr std::uint32_t standardBaud = 57600;
constexpr std::uint32_t fastBaud = 115200;

int openSerial(std::string_view name, std::uint32_t baud, StopBits stopBits)
{
    const std::string port = SerialDriver::portIdentity(name);
    const auto driver = std::make_shared<SerialDriver>(name, baud, stopBits);
    const auto device = std::make_shared<Device>(driver);
    // A serial port can be opened once: whatever session holds it, also one that was replaced, has to let it
    // go, or the port would be lost until the host program ends.
    endSessions([&](const Session& session) { return session.port == port; });
    waitForEndingSessions(port);
    return openSession({driver, device, port}, true);
}

// A new session on the link that is held, whatever it is; -1 without one. The link is closed first: it has no
// room for a second connection.
int openHeldLink()
{
    const Session held = currentSession();
    if (!held.driver) {
        return -1;
    }
    const auto device = std::make_shared<Device>(held.driver);
    endSessions([&](const Session& session) { return session.driver == held.driver; });
    return openSession({held.driver, device, held.port}, true);
}

// 15 stands for one and a half; any number that is not listed means one.
StopBits stopBitsOf(std::uint32_t argument)
{
    constexpr std::uint32_t oneAndHalf = 15;
    if (argument == 2) {
        return StopBits::two;
    }
    return argument == oneAndHalf ? StopBits::oneAndHalf : StopBits::one;
}

// The open exports are -1 whatever goes wrong, the copy of the name and the line of the log included.
template <typename Open>
int openNamed(const char* portName, Open open)
{
    try {
        return open(Text(portName));
    } catch (const std::exception&) {
        return -1;
    }
}

} // namespace

std::shared_ptr<Device> openDevice()
{
    const std::scoped_lock lock(sessions().lock);
    return sessions().current.device;
}

std::shared_ptr<LinkDriver> currentDriver()
{
    const std::scoped_lock lock(sessions().lock);
    return sessions().current.driver;
}

} // namespace telvofm

using namespace telvofm;

int getVersion(void)
{
    return 106;
}

int openFM(const char* portName)
{
    return openNamed(portName, [](const Text& name) {
        logCall("openFM ", "port name ", name);
        return namesSerialPort(name) ? openSerial(name, standardBaud, StopBits::one) : openTcp(name);
    });
}

int openFMBaud(const char* portName, uint32_t baud)
{
    return openNamed(portName, [&](const Text& name) {
        // It logs under the name of openFM and leaves the rate out: this is meant.
        logCall("openFM ", "port name ", name);
        if (!namesSerialPort(name)) {
            return -1;
        }
        if (baud == standardBaud || baud == fastBaud) {
            return openSerial(name, baud, StopBits::one);
        }
        // Another rate makes no driver: a new session begins on the link that is held, whatever it is. This
        // is meant.
        return openHeldLink();
    });
}

int openFMStopBit(const char* portName, uint32_t stopBits)
{
    return openNamed(portName, [&](const Text& name) {
        logCall("openFMStopBit ", "port name ", name, "stop bit ", stopBits);
        return namesSerialPort(name) ? openSerial(name, standardBaud, stopBitsOf(stopBits)) : -1;
    });
}

void closeFM(void)
{
    logCall("closeFM ");
    const Session closing = takeCurrentSession();
    if (closing.device) {
        end(closing);
    }
}

void setTcpTimeout(int64_t timeoutMs)
{
    if (const auto driver = currentDriver()) {
        driver->setTimeout(timeoutMs);
    }
}

int64_t rawRead(unsigned char* buffer, int64_t count, const void* marker)
{
    const auto driver = currentDriver();
    if (!driver || buffer == nullptr) {
        return -1;
    }
    try {
        const std::shared_lock transport(driver->transportLock);
        return driver->readRaw(buffer, count, marker);
    } catch (const std::exception&) {
        return -1;
    }
}

int64_t rawWrite(const unsigned char* bytes, int64_t count)
{
    const auto driver = currentDriver();
    if (!driver || bytes == nullptr || count < 0) {
        return -1;
    }
    try {
        // A copy: the caller may change its own while the printer holds up the write.
        const std::string copy(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
        const std::shared_lock transport(driver->transportLock);
        return static_cast<int64_t>(driver->writeRaw(copy));
    } catch (const std::exception&) {
        return -1;
    }
}

int sendUnspecifiedData(const char* data)
{
    const Text ownData(data);
    logCall("sendUnspecifiedData ", "data ", ownData);
    return runCommand([&](Device& printer) { printer.sendUnspecified(ownData); });
}

void setRawLogginOn(const char* path)
{
    rawLog().switchOn(Text(path));
}

void seRawLogginOff(void)
{
    rawLog().switchOff();
}
