// The modem lines that the printer drives on a pseudo-terminal. tests/modem_lines.c answers for them out of
// the file that MODEM_LINES names.
#pragma once

#include <string>

namespace wire {

// The bits of the state.
inline constexpr char clearToSend = 1;
inline constexpr char dataSetReady = 2;

// Lets the file keep the lines from now on and turns both on.
void resetModemLines(const std::string& file);
// Throws where no file keeps the lines.
void setModemLines(char state);

} // namespace wire
