// A printer that does whatever the fuzzer's input says, on scripted links of both kinds: right and damaged
// answers, noise, silence, connections and reads that break, modem lines that go off. No wait takes time, and
// a script that has ended is silence, so that every call ends.
#pragma once

#include "tests/fuzz/fuzzed_bytes.h"

#include <string>

namespace telvofm::fuzz {

// For one call; what an earlier one has left over is forgotten. Returns all bytes that the printer can say.
std::string letThePrinterSay(FuzzedBytes& input);

// A printer that accepts the next request and says nothing else.
void letThePrinterAccept();

} // namespace telvofm::fuzz
