// What stands around a tortured call: it lets one thing fail, or only counts what can.
#pragma once

#include "tests/sweep/swept_call.h"
#include "tests/torture/trapped_system_calls.h"

#include <cstddef>
#include <vector>

namespace telvofm::test::torture {

enum class Torment
{
    allocation,
    error,
    interrupted
};

class Tormenting final : public sweep::Around
{
public:
    Tormenting(Torment one, std::size_t before) : torment(one), index(before) {}

    void begin() override;
    void end() override;
    // Whether it has come to that.
    [[nodiscard]] bool hasStruck() const { return struck; }

    int floatingPointFlags = 0; // that were raised meanwhile

private:
    Torment torment;
    std::size_t index;
    bool struck = false;
};

class Watching final : public sweep::Around
{
public:
    void begin() override;
    void end() override;

    std::vector<TrappedCall> systemCalls;
    long allocations = 0;
    long allocationsBefore = 0; // that this thread has ever made
    int floatingPointFlags = 0;
};

} // namespace telvofm::test::torture
