#include "tests/torture/places.h"

#include <algorithm>
#include <sys/syscall.h>
#include <unistd.h>

namespace telvofm::test::torture {
namespace {

bool asksSystemForMemory(const TrappedCall& call)
{
    return call.number == SYS_mmap || call.number == SYS_brk || call.number == SYS_mremap;
}

} // namespace

Places::Places(const Watching& watched)
    : systemCalls(watched.systemCalls), allocations(static_cast<std::size_t>(watched.allocations)),
      floatingPointFlags(watched.floatingPointFlags)
{
    for (TrappedCall& call : systemCalls) {
        call.allocationsBefore -= watched.allocationsBefore;
    }
}

std::size_t Places::count(Torment torment) const
{
    return torment == Torment::allocation ? allocations : systemCalls.size();
}

bool Places::canFail(Torment torment, std::size_t index) const
{
    return torment != Torment::interrupted || systemCalls[index].blocks;
}

std::string Places::nameOfPlace(Torment torment, std::size_t index) const
{
    return torment == Torment::allocation ? "allocation" : nameOf(systemCalls[index]);
}

bool Places::asksForMemory(Torment torment, std::size_t index) const
{
    return torment == Torment::allocation || asksSystemForMemory(systemCalls[index]);
}

std::size_t Places::firstBehind(Torment torment, std::size_t index) const
{
    if (torment != Torment::allocation) {
        return index + 1;
    }
    const auto first = std::find_if(systemCalls.begin(), systemCalls.end(), [&](const TrappedCall& call) {
        return call.allocationsBefore > static_cast<long>(index);
    });
    return static_cast<std::size_t>(first - systemCalls.begin());
}

bool Places::isOfLog(Torment torment, std::size_t index) const
{
    if (!asksForMemory(torment, index)) {
        return systemCalls[index].isLog;
    }
    // Memory is the log's when it is asked for between the opening of its file and the closing.
    const auto behind = systemCalls.rend() - static_cast<std::ptrdiff_t>(firstBehind(torment, index));
    const auto last = std::find_if(behind, systemCalls.rend(),
                                   [](const TrappedCall& call) { return !asksSystemForMemory(call); });
    return last != systemCalls.rend() && last->isLog && last->number != SYS_close;
}

bool Places::isOfStandardOutput(Torment torment, std::size_t index) const
{
    return torment != Torment::allocation && systemCalls[index].number == SYS_write &&
           systemCalls[index].descriptor == STDOUT_FILENO;
}

} // namespace telvofm::test::torture
