// A system on which a terminal can be opened once at a time, as serial ports on Windows can: the program that
// links this has such an `open`. What other programs do stays as it is.
#pragma once

namespace telvofm::test {

// The next purge of a terminal's queues fails, once.
void failTheNextPurge();

} // namespace telvofm::test
