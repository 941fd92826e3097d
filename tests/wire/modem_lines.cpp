#include "tests/wire/modem_lines.h"

#include "tests/wire/loopback.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace wire {

void resetModemLines(const std::string& file)
{
    setEnvironment("MODEM_LINES", file);
    std::ofstream(file, std::ios::binary) << static_cast<char>(clearToSend | dataSetReady);
}

void setModemLines(char state)
{
    const char* file = std::getenv("MODEM_LINES");
    // In place: the library may look at any moment.
    std::fstream lines(file == nullptr ? "" : file, std::ios::binary | std::ios::in | std::ios::out);
    lines.put(state).flush();
    if (!lines) {
        throw std::runtime_error("the modem lines cannot be set");
    }
}

} // namespace wire
