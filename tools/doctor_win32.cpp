// The doctor's look at a serial port on Windows.
#include "tools/doctor.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <windows.h>

namespace telvofm::tools {
namespace {

struct Closer
{
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Port = std::unique_ptr<void, Closer>;

std::string shortName(const std::string& name)
{
    constexpr std::string_view prefix = R"(\\.\)";
    return name.starts_with(prefix) ? name.substr(prefix.size()) : name;
}

Finding whyClosed(const std::string& name, DWORD error)
{
    if (error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION) {
        return {"holder", Health::bad, "Another program holds " + name + ".",
                "End it; Windows does not say which it is, and as a rule it is a till or a service tool."};
    }
    const auto ports = serialPorts();
    const std::string others = ports.empty() ? "" : ", or name " + ports.front();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
        return {"port", Health::bad, "There is no port " + name + ".", "Plug its adapter in" + others + "."};
    }
    return {"port", Health::bad, name + " cannot be opened: error " + std::to_string(error) + ".",
            "Plug its adapter in again" + others + "."};
}

Finding line(const std::string& about, const std::string& name, bool isOn, const std::string& whenOff)
{
    if (isOn) {
        return {about, Health::good, name + " is on.", {}};
    }
    return {about, Health::bad, name + " is off: " + whenOff,
            "Check that the printer is on and ready, and that its cable has all the handshake lines."};
}

// All of the system's, each with its NUL.
std::string namesOfDevices()
{
    std::string names(32768, '\0');
    for (;;) {
        const DWORD size = ::QueryDosDeviceA(nullptr, names.data(), static_cast<DWORD>(names.size()));
        if (size != 0 || ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
            names.resize(size);
            return names;
        }
        names.resize(2 * names.size());
    }
}

bool isPortName(std::string_view device)
{
    return device.starts_with("COM") && device.size() > 3 &&
           device.find_first_not_of("0123456789", 3) == std::string_view::npos;
}

} // namespace

Findings examineSerialPort(const std::string& name)
{
    const std::string own = shortName(name);
    const HANDLE opened = ::CreateFileA((R"(\\.\)" + own).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return {whyClosed(own, ::GetLastError())};
    }
    const Port port(opened);
    Findings findings = {{"port", Health::good, "The port " + own + " is there, and you may open it.", {}},
                         {"holder", Health::good, "No other program holds it.", {}}};
    DWORD lines = 0;
    if (::GetCommModemStatus(port.get(), &lines) == FALSE) {
        findings.push_back({"lines", Health::bad,
                            own + " has no modem lines, and the library cannot write without.",
                            "Use a serial port with all the handshake lines."});
        return findings;
    }
    findings.push_back(
        line("cts", "CTS", (lines & MS_CTS_ON) != 0, "a call returns -10103 at once and writes nothing."));
    findings.push_back(line("dsr", "DSR", (lines & MS_DSR_ON) != 0, "a call waits for it without limit."));
    return findings;
}

std::vector<std::string> serialPorts()
{
    const std::string names = namesOfDevices();
    std::vector<std::string> ports;
    for (std::size_t start = 0; start < names.size();) {
        const std::string device = names.c_str() + start;
        if (isPortName(device)) {
            ports.push_back(device);
        }
        start += device.size() + 1;
    }
    std::sort(ports.begin(), ports.end(), [](const std::string& one, const std::string& other) {
        return std::pair(one.size(), one) < std::pair(other.size(), other); // COM9 before COM10
    });
    return ports;
}

} // namespace telvofm::tools
