#include "tests/torture/torment.h"

#include "tests/unit/limited_memory.h"

namespace telvofm::test::torture {

void Tormenting::begin()
{
    if (torment == Torment::allocation) {
        memoryLimit().allocationsBeforeFailure = static_cast<int>(index);
    } else {
        failSystemCall(index, torment == Torment::error ? Way::error : Way::interrupted);
    }
}

void Tormenting::end()
{
    if (torment == Torment::allocation) {
        struck = memoryLimit().allocationsBeforeFailure == MemoryLimit::anyNumber;
        memoryLimit() = {};
        return;
    }
    endOfSystemCalls();
    struck = hasFailed();
}

void Watching::begin()
{
    madeBefore = allocationsMade();
    watchSystemCalls();
}

void Watching::end()
{
    allocations = allocationsMade() - madeBefore;
    systemCalls = endOfSystemCalls();
}

} // namespace telvofm::test::torture
