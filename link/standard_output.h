// The few lines that the library writes to the standard output of its host. The stream is the host's: a
// reader that has gone away raises no signal in it. On POSIX systems a full pipe does not block the call, and
// one that may take a page only gets no more, the host's pending bytes included; the line then waits in the
// stream's buffer for the host's next write, and is lost when there is no room in it either. On Windows a
// full pipe blocks the call until somebody reads. There is one implementation per platform.
#pragma once

#include <string_view>

namespace telvofm {

void writeLine(std::string_view line);

} // namespace telvofm
