// The doctor's look at a serial port on Linux.
#include "link/serial_path_posix.h"
#include "tools/doctor.h"
#include "tools/port_holders_posix.h"
#include "tools/port_rights_posix.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::tools {
namespace {

std::string pathOfPort(const std::string& name)
{
    return serialPath(name.starts_with("COM") ? R"(\\.\)" + name : name);
}

Finding noSerialPort(const std::string& path)
{
    return {"port", Health::bad, path + " is no serial port.", "Name a port such as COM/dev/ttyUSB0."};
}

Finding examinePresence(const std::string& path)
{
    struct stat status
    {
    };
    if (::stat(path.c_str(), &status) != 0) {
        const auto ports = serialPorts();
        return {"port", Health::bad, "There is no port " + path + ".",
                ports.empty() ? "Plug its adapter in."
                              : "Plug its adapter in, or name " + ports.front() + "."};
    }
    if (!S_ISCHR(status.st_mode)) {
        return noSerialPort(path);
    }
    return {"port", Health::good, "The port " + path + " is there.", {}};
}

// Opened once for all that is asked of it, because that moves the lines of a port that nobody holds.
class OpenPort
{
public:
    explicit OpenPort(const std::string& path)
        : number(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)),
          error(number == -1 ? errno : 0)
    {
    }
    OpenPort(const OpenPort&) = delete;
    OpenPort& operator=(const OpenPort&) = delete;
    ~OpenPort()
    {
        if (error == 0) {
            ::close(number);
        }
    }

    // As far as one that cannot be opened tells.
    [[nodiscard]] bool isTerminal() const { return error != 0 || ::isatty(number) == 1; }

    const int number;
    const int error; // 0, or why it is not open
};

Finding line(const std::string& about, const std::string& name, bool isOn, const std::string& whenOff)
{
    if (isOn) {
        return {about, Health::good, name + " is on.", {}};
    }
    return {about, Health::bad, name + " is off: " + whenOff,
            "Check that the printer is on and ready, and that its cable has all the handshake lines."};
}

Findings examineLines(const std::string& path, const OpenPort& port)
{
    if (port.error != 0) {
        return {{"port", Health::bad, path + " cannot be opened: " + std::strerror(port.error) + ".",
                 port.error == EBUSY ? "End the program that holds it." : "Plug its adapter in again."}};
    }
    unsigned int lines = 0;
    if (::ioctl(port.number, TIOCMGET, &lines) != 0) {
        return {{"lines", Health::bad,
                 path + " has no modem lines, and the library cannot write without them.",
                 "Use a real serial port, or scripts/with-modem-lines for tests on a pseudo-terminal."}};
    }
    return {line("cts", "CTS", (lines & TIOCM_CTS) != 0, "a call returns -10103 at once and writes nothing."),
            line("dsr", "DSR", (lines & TIOCM_DSR) != 0, "a call waits for it without limit.")};
}

} // namespace

Findings examineSerialPort(const std::string& name)
{
    const std::string path = pathOfPort(name);
    if (path.empty()) {
        return {{"port", Health::bad, name + " names no port here.",
                 "Write COM and a number from 1 on, or COM and a path, as COM/dev/ttyUSB0."}};
    }
    Findings findings = {examinePresence(path)};
    if (isHealthy(findings)) {
        findings.push_back(examineRights(path));
    }
    if (isHealthy(findings)) {
        const OpenPort port(path);
        if (!port.isTerminal()) {
            return {noSerialPort(path)};
        }
        findings.push_back(examineHolders(path));
        const Findings lines = examineLines(path, port);
        findings.insert(findings.end(), lines.begin(), lines.end());
    }
    return findings;
}

// The machine's own ports are there whether something is behind them or not: only pluggable ones are named.
std::vector<std::string> serialPorts()
{
    std::vector<std::string> ports;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/dev", ignored)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("ttyUSB") || name.starts_with("ttyACM")) {
            ports.push_back("COM" + entry.path().string());
        }
    }
    std::sort(ports.begin(), ports.end());
    return ports;
}

} // namespace telvofm::tools
