// Every system call of this thread, also those inside the system's own libraries, passes through here and
// can be made to fail: the kernel turns each into a signal, whose handler carries it out or not. Calls that
// only tidy up (unmapping, ending, returning from signals, locks between threads) go by, and so does the mask
// of signals, which the system cannot refuse to change.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::test::torture {

struct TrappedCall
{
    long number;
    int descriptor;         // that it is about, or -1
    bool isLog;             // it opens, writes or closes a file whose name ends with ".log"
    bool blocks;            // a signal can interrupt it: it waits for a link
    long allocationsBefore; // that this thread has ever made
};

enum class Way
{
    error,      // the call fails as it may
    interrupted // by a signal; a connect goes on by itself then
};

// From now on, for the thread that asks and all that it starts; false where the kernel does not let us.
bool trapSystemCalls();

// Counts the calls of this thread from now on and lets the one behind `before` others fail, once.
void failSystemCall(std::size_t before, Way way);
// Counts only.
void watchSystemCalls();
// Those since then; afterwards everything goes by. Throws when there were too many to keep: none is left out.
std::vector<TrappedCall> endOfSystemCalls();
// Whether the call that should fail has come.
bool hasFailed();

std::string nameOf(const TrappedCall& call);

} // namespace telvofm::test::torture
