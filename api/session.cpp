#include "api/session.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"
#include "link/raw_log.h"
#include "link/serial_driver.h"
#include "link/tcp_driver.h"

#include <exception>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace telvofm {
namespace {

struct Session
{
    std::shared_ptr<LinkDriver> driver;
    std::shared_ptr<Device> device;
};

struct Sessions
{
    std::mutex lock;
    Session current;
    // A second open without a close neither closes nor frees the first connection: this is meant.
    std::vector<Session> replaced;
};

// Never destroyed: closing a port while the host program exits could block it.
Sessions& sessions()
{
    static Sessions& all = *new Sessions;
    return all;
}

// Makes a driver the current one and opens a new device on it. A failed open leaves both in place.
template <typename MakeDriver>
int openSession(MakeDriver makeDriver, bool convertText)
{
    try {
        std::shared_ptr<LinkDriver> driver = makeDriver();
        const auto device = std::make_shared<Device>(driver);
        {
            const std::scoped_lock lock(sessions().lock);
            if (sessions().current.device) {
                sessions().replaced.push_back(sessions().current);
            }
            sessions().current = {std::move(driver), device};
        }
        const std::scoped_lock exchange(device->lock);
        device->open(convertText);
        return succeeded;
    } catch (const std::exception&) {
        return -1;
    }
}

// Only the beginning decides, and its case counts: COMX is a serial port, com3 a host.
bool namesSerialPort(std::string_view name)
{
    return name.starts_with("COM") || name.starts_with(R"(\\.\COM)");
}

int openTcp(std::string_view name)
{
    return openSession(
        [&] {
            constexpr std::int64_t tcpTimeoutMs = 15000;
            auto driver = std::make_shared<TcpDriver>(std::string(name));
            driver->setTimeout(tcpTimeoutMs);
            return driver;
        },
        false);
}

constexpr std::uint32_t standardBaud = 57600;
constexpr std::uint32_t fastBaud = 115200;

int openSerial(std::string_view name, std::uint32_t baud, StopBits stopBits)
{
    return openSession([&] { return std::make_shared<SerialDriver>(name, baud, stopBits); }, true);
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
    logCall("openFM ", "port name ", portName);
    const std::string_view name = Text(portName);
    return namesSerialPort(name) ? openSerial(name, standardBaud, StopBits::one) : openTcp(name);
}

int openFMBaud(const char* portName, uint32_t baud)
{
    // It logs under the name of openFM and leaves the rate out: this is meant.
    logCall("openFM ", "port name ", portName);
    const std::string_view name = Text(portName);
    if (!namesSerialPort(name)) {
        return -1;
    }
    if (baud == standardBaud || baud == fastBaud) {
        return openSerial(name, baud, StopBits::one);
    }
    // Another rate makes no driver: a new session begins on the link that is held, whatever it is. This is
    // meant.
    auto held = currentDriver();
    return held ? openSession([&] { return held; }, true) : -1;
}

int openFMStopBit(const char* portName, uint32_t stopBits)
{
    logCall("openFMStopBit ", "port name ", portName, "stop bit ", stopBits);
    const std::string_view name = Text(portName);
    return namesSerialPort(name) ? openSerial(name, standardBaud, stopBitsOf(stopBits)) : -1;
}

void closeFM(void)
{
    logCall("closeFM ");
    Session closing;
    {
        const std::scoped_lock lock(sessions().lock);
        if (!sessions().current.device) {
            return;
        }
        closing = std::exchange(sessions().current, {});
    }
    // An exchange of another thread ends before its link closes.
    const std::scoped_lock exchange(closing.device->lock);
    closing.device->close();
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
        return driver->readRaw(buffer, count, marker);
    } catch (const Telvo06FMException&) {
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
        const std::string_view all(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
        return static_cast<int64_t>(driver->writeRaw(all));
    } catch (const Telvo06FMException&) {
        return -1;
    }
}

int sendUnspecifiedData(const char* data)
{
    logCall("sendUnspecifiedData ", "data ", data);
    return runCommand([&](Device& printer) { printer.sendUnspecified(Text(data)); });
}

void setRawLogginOn(const char* path)
{
    rawLog().switchOn(Text(path));
}

void seRawLogginOff(void)
{
    rawLog().switchOff();
}
