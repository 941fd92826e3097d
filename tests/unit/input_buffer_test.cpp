#include "link/input_buffer.h"

#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

namespace telvofm::test {
namespace {

class InputBufferTest : public ::testing::Test
{
protected:
    // As a receive that gets these bytes.
    static auto bringing(std::string_view bytes)
    {
        return [bytes](std::span<char> room) {
            std::copy(bytes.begin(), bytes.end(), room.begin());
            return bytes.size();
        };
    }

    std::string take(std::size_t atMost)
    {
        std::string target(atMost, '-');
        target.resize(input.take(target));
        return target;
    }

    // Whether a wait that began when `seen` was noted would receive.
    bool receivesSince(std::uint64_t seen)
    {
        bool receives = false;
        input.fillOnceSince(seen, [&](std::span<char> room) {
            receives = true;
            return bringing("new")(room);
        });
        return receives;
    }

    InputBuffer input;
};

TEST_F(InputBufferTest, IsEmptyToBeginWith)
{
    EXPECT_EQ(take(1), "");
    EXPECT_EQ(input.fillings(), 0U);
}

TEST_F(InputBufferTest, GivesTheBytesInOrderAndEachOnce)
{
    input.fillOnceSince(0, bringing("abcde"));
    EXPECT_EQ(take(2), "ab");
    EXPECT_EQ(take(0), "");
    EXPECT_EQ(take(9), "cde");
    EXPECT_EQ(take(9), "");
}

TEST_F(InputBufferTest, Holds256Bytes)
{
    input.fillOnceSince(0, [](std::span<char> room) {
        EXPECT_EQ(room.size(), 256U);
        std::fill(room.begin(), room.end(), 'x');
        return room.size();
    });
    EXPECT_EQ(take(300), std::string(256, 'x'));
}

TEST_F(InputBufferTest, GivesEachOfThemByItself)
{
    std::string all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    input.fillOnceSince(0, bringing(all));
    for (const char byte : all) {
        EXPECT_EQ(take(1), std::string{byte});
    }
}

TEST_F(InputBufferTest, ForgetsWhatIsDiscarded)
{
    input.fillOnceSince(0, bringing("late"));
    input.discard();
    EXPECT_EQ(take(4), "");
    EXPECT_TRUE(receivesSince(input.fillings()));
    EXPECT_EQ(take(4), "new");
}

TEST_F(InputBufferTest, IsNotFilledByAWaitThatAnotherThreadWasQuickerThan)
{
    const auto seen = input.fillings();
    input.fillOnceSince(seen, bringing("a"));
    EXPECT_EQ(take(1), "a");
    EXPECT_FALSE(receivesSince(seen));
    EXPECT_TRUE(receivesSince(input.fillings()));
}

// One thread found nothing to take, another one received, and only then the first one begins to wait.
TEST_F(InputBufferTest, IsNotFilledWhileBytesAreLeft)
{
    input.fillOnceSince(0, bringing("ab"));
    EXPECT_EQ(take(1), "a");
    EXPECT_FALSE(receivesSince(input.fillings()));
    EXPECT_EQ(take(2), "b");
}

TEST_F(InputBufferTest, AReceiveThatFailsLeavesItAsItWas)
{
    const auto seen = input.fillings();
    EXPECT_THROW(
        input.fillOnceSince(seen, [](std::span<char>) -> std::size_t { throw std::runtime_error("gone"); }),
        std::runtime_error);
    EXPECT_EQ(take(1), "");
    EXPECT_TRUE(receivesSince(seen));
}

// Both wait and take in turn, as a command and raw access do; each byte reaches exactly one of them.
TEST_F(InputBufferTest, TwoThreadsShareIt)
{
    constexpr std::size_t all = 200000;
    std::size_t received = 0; // guarded by the buffer: nobody receives at the same time
    const auto receive = [&received](std::span<char> room) {
        const std::size_t count = std::min<std::size_t>(room.size(), all - received);
        std::fill_n(room.begin(), count, 'x');
        received += count;
        return count;
    };
    const auto read = [&](std::size_t atMost, std::size_t& taken) {
        std::string target(atMost, '-');
        for (int vain = 0; vain < 3;) {
            const std::size_t count = input.take(target);
            EXPECT_EQ(target.substr(0, count), std::string(count, 'x'));
            target.assign(atMost, '-');
            taken += count;
            vain = count == 0 ? vain + 1 : 0;
            if (count == 0) {
                input.fillOnceSince(input.fillings(), receive);
            }
        }
    };
    std::size_t first = 0;
    std::size_t second = 0;
    std::thread other(read, 1, std::ref(first));
    read(7, second);
    other.join();
    EXPECT_EQ(first + second, all);
}

} // namespace
} // namespace telvofm::test
