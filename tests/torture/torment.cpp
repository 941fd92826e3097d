#include "tests/torture/torment.h"

#include "tests/unit/limited_memory.h"

#include <cfenv>

namespace telvofm::test::torture {

void Tormenting::begin()
{
    std::feclearexcept(FE_ALL_EXCEPT);
    if (torment == Torment::allocation) {
        memoryLimit().allocationsBeforeFailure = static_cast<int>(index);
    } else {
        failSystemCall(index, torment == Torment::error ? Way::error : Way::interrupted);
    }
}

void Tormenting::end()
{
    floatingPointFlags = std::fetestexcept(FE_ALL_EXCEPT);
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
    std::feclearexcept(FE_ALL_EXCEPT);
    allocationsBefore = allocationsMade();
    watchSystemCalls();
}

void Watching::end()
{
    floatingPointFlags = std::fetestexcept(FE_ALL_EXCEPT);
    allocations = allocationsMade() - allocationsBefore;
    systemCalls = endOfSystemCalls();
}

} // namespace telvofm::test::torture
