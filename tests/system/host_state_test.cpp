// The host program's own state around every export: signals, locale, streams, floating point, folder and
// handlers are after the call what they were before it.
#include "tests/system/every_export_fixture.h"
#include "tests/system/host_changes.h"
#include "tests/system/host_state.h"
#include "tests/unit/hostile_floating_point.h"

#include <cfenv>
#include <cstdio>

namespace telvofm::test {
namespace {

// Streams that have not been used have no buffers yet.
void useStreams()
{
    for (std::FILE* const stream : {stdout, stderr}) {
        std::fputc('\n', stream);
        std::fflush(stream);
    }
}

TEST(StateOfAHost, IsSeenToChange)
{
    useStreams();
    for (const HostChange& change : everyHostChange()) {
        std::feclearexcept(FE_ALL_EXCEPT);
        const HostState before;
        change.make();
        const std::string difference = HostState().differenceFrom(before);
        change.undo();
        EXPECT_EQ(difference, change.name);
        EXPECT_EQ(HostState().differenceFrom(before), "") << change.name;
    }
}

// Has set all that it can, so that going back to the usual would be seen.
class StateOfTheHost : public EveryExport
{
protected:
    StateOfTheHost()
    {
        useStreams();
        for (const HostChange& change : everyHostChange()) {
            change.make();
        }
    }
    ~StateOfTheHost() override
    {
        for (const HostChange& change : everyHostChange()) {
            change.undo();
        }
    }
};

TEST_F(StateOfTheHost, IsAfterEveryExportAsItWasBefore)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    const HostState before; // the first call
    for (const ExportedCall& called : everyExport) {
        inASessionOfItsOwn(called, [&](auto call) {
            std::feclearexcept(FE_ALL_EXCEPT);
            call();
            EXPECT_EQ(HostState().differenceFrom(before), "") << called.name;
        });
    }
}

TEST_F(StateOfTheHost, IsSoWhereFloatingPointExceptionsAreUnmasked)
{
    for (const ExportedCall& called : everyExport) {
        inASessionOfItsOwn(called, [&](auto call) {
            std::feclearexcept(FE_ALL_EXCEPT); // what is noted would be raised
            const std::string difference = [&] {
                const HostileFloatingPoint environment(environment::roundUpUnmasked);
                const HostState before;
                call();
                return HostState().differenceFrom(before);
            }();
            EXPECT_EQ(difference, "") << called.name;
        });
    }
}

} // namespace
} // namespace telvofm::test
