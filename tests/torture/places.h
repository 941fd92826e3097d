// Where something can fail during a call, as a rehearsal has seen it.
#pragma once

#include "tests/torture/torment.h"

#include <string>
#include <vector>

namespace telvofm::test::torture {

struct Places
{
    std::vector<TrappedCall> systemCalls; // `allocationsBefore` counts those of the call
    std::size_t allocations = 0;
    int floatingPointFlags = 0; // that were raised around it

    explicit Places(const Watching& watched);

    [[nodiscard]] std::size_t count(Torment torment) const;
    // Whether the torment can hit this place at all.
    [[nodiscard]] bool canFail(Torment torment, std::size_t index) const;
    [[nodiscard]] std::string nameOfPlace(Torment torment, std::size_t index) const;
    // It may end with a lack of memory.
    [[nodiscard]] bool asksForMemory(Torment torment, std::size_t index) const;
    // Only a log wants it: its file is open, opened or closed.
    [[nodiscard]] bool isOfLog(Torment torment, std::size_t index) const;
    // It writes a line of the library's to the host's standard output.
    [[nodiscard]] bool isOfStandardOutput(Torment torment, std::size_t index) const;

private:
    // The first system call behind the place.
    [[nodiscard]] std::size_t firstBehind(Torment torment, std::size_t index) const;
};

} // namespace telvofm::test::torture
