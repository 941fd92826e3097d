#include "tests/system/serial_printer.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <stdexcept>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace telvofm::test {
namespace {

constexpr char ctsBit = 1;
constexpr char dsrBit = 2;
constexpr char dtrBit = 1;

} // namespace

SerialPrinter::SerialPrinter(std::string stateFile)
    : state(std::move(stateFile)), connection(wire::openPseudoTerminal(path))
{
    if (!connection.isOpen()) {
        throw std::runtime_error("no pseudo-terminal could be opened");
    }
    const std::string linesOnAndNothingDriven{ctsBit | dsrBit, 0};
    std::ofstream(state, std::ios::binary) << linesOnAndNothingDriven;
    ::setenv("MODEM_LINES", state.c_str(), 1);
}

void SerialPrinter::setLines(bool clearToSend, bool dataSetReady) const
{
    // In place: the other end may look at any moment.
    std::fstream file(state, std::ios::binary | std::ios::in | std::ios::out);
    file.put(static_cast<char>((clearToSend ? ctsBit : 0) | (dataSetReady ? dsrBit : 0)));
}

void SerialPrinter::waitUntilDelivered(int count) const
{
    const int terminal = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    for (int delivered = 0; delivered < count; std::this_thread::yield()) {
        if (::ioctl(terminal, FIONREAD, &delivered) != 0) {
            break;
        }
    }
    ::close(terminal);
}

bool SerialPrinter::dataTerminalReady() const
{
    std::ifstream file(state, std::ios::binary);
    file.seekg(1);
    return (file.get() & dtrBit) != 0;
}

} // namespace telvofm::test
