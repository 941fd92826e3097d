#include "link/serial_path_posix.h"
#include "link/serial_port.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace telvofm {
namespace {

int descriptor(std::intptr_t handle)
{
    return static_cast<int>(handle);
}

// Waits for an event of the descriptor; a signal does not prolong the wait. 0 after a time-out.
int waitFor(int port, short event, std::chrono::milliseconds limit)
{
    const auto deadline = CSerial::now() + limit;
    pollfd waiting = {.fd = port, .events = event, .revents = 0};
    int ready = ::poll(&waiting, 1, static_cast<int>(limit.count()));
    while (ready == -1 && errno == EINTR) {
        const auto left = std::max(deadline - CSerial::now(), std::chrono::milliseconds(0));
        ready = ::poll(&waiting, 1, static_cast<int>(left.count()));
    }
    return ready;
}

// Bytes that trickle in would each wake us. As long as more are wanted than the line carries in two
// milliseconds at the highest rate, a rest of one delays nobody.
void letBytesGather(std::size_t wanted)
{
    constexpr std::size_t twoMilliseconds = 24;
    if (wanted >= twoMilliseconds) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

template <typename Change>
bool changeSettings(int port, Change change)
{
    termios settings{};
    if (::tcgetattr(port, &settings) != 0) {
        return false;
    }
    change(settings);
    return ::tcsetattr(port, TCSANOW, &settings) == 0;
}

} // namespace

bool CSerial::openPort(const std::string& name, std::uint32_t /*queueSize*/)
{
    // The kernel sizes its queues itself.
    handle = ::open(serialPath(name).c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    return outcome(handle != closed);
}

void CSerial::closePort()
{
    if (handle != closed) {
        ::close(descriptor(handle));
        handle = closed;
    }
}

bool CSerial::setLine(std::uint32_t baud, StopBits stopBits)
{
    return outcome(changeSettings(descriptor(handle), [&](termios& settings) {
        ::cfmakeraw(&settings); // 8 data bits, no parity, every byte as it is
        settings.c_cflag |= CREAD | CLOCAL;
        // There is no one and a half here: two are what a receiver of one and a half takes as well.
        if (stopBits == StopBits::one) {
            settings.c_cflag &= ~tcflag_t{CSTOPB};
        } else {
            settings.c_cflag |= CSTOPB;
        }
        constexpr std::uint32_t fast = 115200;
        ::cfsetspeed(&settings, baud == fast ? B115200 : B57600);
    }));
}

bool CSerial::setBlockingReads()
{
    return outcome(changeSettings(descriptor(handle), [](termios& settings) {
        settings.c_cc[VMIN] = 1; // so that a read of 0 bytes means that the line has hung up
        settings.c_cc[VTIME] = 0;
    }));
}

bool CSerial::setHardwareHandshake()
{
    return outcome(changeSettings(descriptor(handle), [](termios& settings) {
        settings.c_cflag |= CRTSCTS;
        settings.c_iflag &= ~tcflag_t{IXON | IXOFF | IXANY};
    }));
}

bool CSerial::setSpecialCharacters(char event, char endOfFile)
{
    return outcome(changeSettings(descriptor(handle), [&](termios& settings) {
        settings.c_cc[VEOL] = static_cast<cc_t>(event);
        settings.c_cc[VEOF] = static_cast<cc_t>(endOfFile);
    }));
}

bool CSerial::setEventMask()
{
    return true; // poll reports every event there is
}

// What has been written counts as sent, also when it is still on its way: the last byte of an exchange must
// not be lost because the next one begins. Only output that the printer holds back is stale.
bool CSerial::purge()
{
    ModemStatus status{};
    const bool outputFlows = modemStatus(status) && status.clearToSend;
    return outcome(::tcflush(descriptor(handle), outputFlows ? TCIFLUSH : TCIOFLUSH) == 0);
}

bool CSerial::raiseDataTerminalReady()
{
    const int line = TIOCM_DTR;
    return outcome(::ioctl(descriptor(handle), TIOCMBIS, &line) == 0);
}

bool CSerial::modemStatus(ModemStatus& status)
{
    unsigned int lines = 0;
    if (!outcome(::ioctl(descriptor(handle), TIOCMGET, &lines) == 0)) {
        return false;
    }
    status.clearToSend = (lines & TIOCM_CTS) != 0;
    status.dataSetReady = (lines & TIOCM_DSR) != 0;
    return true;
}

bool CSerial::writePort(char byte, std::chrono::milliseconds limit)
{
    const auto deadline = now() + limit;
    for (auto left = limit; left.count() > 0; left = deadline - now()) {
        const int ready = waitFor(descriptor(handle), POLLOUT, left);
        if (ready == 0) {
            break;
        }
        if (ready == 1 && ::write(descriptor(handle), &byte, 1) == 1) {
            return true;
        }
        // Raw bytes of another thread can take the room in between.
        if (ready != 1 || (errno != EAGAIN && errno != EINTR)) {
            return outcome(false);
        }
    }
    error = ETIMEDOUT;
    return false;
}

bool CSerial::readPort(std::span<char> buffer, std::chrono::milliseconds limit, std::size_t& count)
{
    count = 0;
    const int ready = waitFor(descriptor(handle), POLLIN, limit);
    if (ready <= 0) {
        return outcome(ready == 0);
    }
    auto received = ::read(descriptor(handle), buffer.data(), buffer.size());
    while (received < 0 && errno == EINTR) { // raw access takes what is there without another wait
        received = ::read(descriptor(handle), buffer.data(), buffer.size());
    }
    if (received == 0) {
        error = EIO; // hung up: a port that is there has bytes when it says so
        return false;
    }
    if (received < 0 && errno == EAGAIN) {
        return true;
    }
    count = static_cast<std::size_t>(std::max<ssize_t>(received, 0));
    if (received > 0) {
        letBytesGather(buffer.size() - count);
    }
    return outcome(received > 0);
}

std::string CSerial::identity(const std::string& name)
{
    const std::string path = serialPath(name);
    std::error_code noSuchFile;
    const auto resolved = std::filesystem::canonical(path, noSuchFile); // a link leads to the same port
    return noSuchFile ? path : resolved.string();
}

std::chrono::milliseconds CSerial::now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

void CSerial::pause(std::chrono::milliseconds time)
{
    std::this_thread::sleep_for(time);
}

bool CSerial::outcome(bool succeeded)
{
    if (!succeeded) {
        error = static_cast<std::uint32_t>(errno);
    }
    return succeeded;
}

} // namespace telvofm
