// What a host program may have set for itself, each with the name by which HostState tells that it has
// changed.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace telvofm::test {

struct HostChange
{
    std::string_view name;
    void (*make)();
    void (*undo)();
};

std::vector<HostChange> everyHostChange();
// Those that only this platform has.
std::span<const HostChange> hostChangesOfThePlatform();

} // namespace telvofm::test
