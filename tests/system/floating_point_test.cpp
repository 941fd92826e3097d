// Host programs that unmask floating-point exceptions, round another way or take the smallest numbers for
// zero: every export with an amount sends and logs there what it does elsewhere, and leaves the environment
// as it was.
#include "telvofm.h"
#include "tests/system/recording_printer.h"
#include "tests/unit/hostile_floating_point.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <limits>
#include <type_traits>

namespace telvofm::test {
namespace {

struct Values
{
    double number;
    int whole;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr Values tried[] = {
    {-0.0, 0},
    {12.345, 1250},
    {-20.9, -1},
    {3e9, INT_MAX},
    {DBL_MAX, INT_MIN},
    {std::numeric_limits<double>::denorm_min(), 83333},
    {-std::numeric_limits<double>::denorm_min(), 7},
    {-infinity, 260950},
    {infinity, 1},
    {notANumber, 2050},
    {std::numeric_limits<double>::signaling_NaN(), 15},
};

template <typename Parameter>
Parameter argument(const Values& values)
{
    if constexpr (std::is_same_v<Parameter, double>) {
        return values.number;
    } else if constexpr (std::is_same_v<Parameter, int>) {
        return values.whole;
    } else {
        return Parameter{};
    }
}

using Call = void (*)(const Values&);

struct Export
{
    std::string_view name;
    bool takesAmounts;
    Call call;
};

template <auto function>
struct Caller;

template <typename Result, typename... Parameters, Result (*function)(Parameters...)>
struct Caller<function>
{
    static constexpr bool takesDouble = (std::is_same_v<Parameters, double> || ...);
    static void call(const Values& values) { static_cast<void>(function(argument<Parameters>(values)...)); }
};

constexpr bool takesHundredths(std::string_view name)
{
    return name.ends_with("_int");
}

constexpr Export exports[] = {
#define TELVOFM_ENTRY(name, parameters)                                                                      \
    {#name, Caller<&(name)>::takesDouble || takesHundredths(#name), &Caller<&(name)>::call},
#include "tools/export_table_entries.inc"
#undef TELVOFM_ENTRY
};

class FloatingPointOfTheHost : public ::testing::TestWithParam<unsigned>
{
protected:
    void SetUp() override { ASSERT_EQ(openFM(printer.address().c_str()), 0); }
    void TearDown() override
    {
        closeFM();
        setLogginOff();
    }

    struct Transcript
    {
        std::vector<std::string> requests;
        std::string log;
    };

    // What the calls of an export send and log, each made by `make`.
    template <typename Make>
    Transcript transcriptOf(const Export& called, Make make)
    {
        std::filesystem::remove(log);
        setLogginOn(log.c_str());
        Transcript transcript;
        for (const Values& values : tried) {
            make(called, values);
            const auto received = printer.takeReceived();
            EXPECT_FALSE(received.empty());
            // The last one: on a busy machine the printer may answer so late that the library asks again.
            transcript.requests.push_back(received.empty() ? std::string() : received.back());
        }
        setLogginOff();
        transcript.log = contentOf(log);
        return transcript;
    }

    OwnFolder folder;
    const std::string log = folder.file("calls.log");
    RecordingPrinter printer;
};

INSTANTIATE_TEST_SUITE_P(Environments, FloatingPointOfTheHost, ::testing::ValuesIn(environment::all));

TEST_P(FloatingPointOfTheHost, ChangesNothingAndStaysAsItIs)
{
    int withAmounts = 0;
    for (const Export& called : exports) {
        if (!called.takesAmounts) {
            continue;
        }
        ++withAmounts;
        SCOPED_TRACE(called.name);
        const Transcript usual =
            transcriptOf(called, [](const Export& usually, const Values& values) { usually.call(values); });
        int touched = 0;
        const Transcript hostile =
            transcriptOf(called, [&touched](const Export& there, const Values& values) {
                const HostileFloatingPoint environment(GetParam());
                there.call(values);
                touched += environment.isUntouched() ? 0 : 1;
            });
        EXPECT_EQ(hostile.requests, usual.requests);
        EXPECT_EQ(hostile.log, usual.log);
        EXPECT_EQ(touched, 0);
    }
    EXPECT_EQ(withAmounts, 38);
}

} // namespace
} // namespace telvofm::test
