// The core that a thread runs on. There is one implementation per platform.
#pragma once

namespace bench {

// Binds the calling thread to one core; false where the machine has no such core.
bool pinToCore(unsigned int core);

} // namespace bench
