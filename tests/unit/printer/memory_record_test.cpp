// The bytes that values are kept as: everything comes back, older records can be read, damaged ones cannot.
#include "virtual_printer/memory/record.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace virtual_printer {

// A structure as one version of the program knew it, and the next one with a member more.
struct Older
{
    int number = 0;
    std::string text;
};
struct Newer
{
    int number = 0;
    std::string text;
    std::string added = "its default";
};
static auto members(const Older& value)
{
    return std::tie(value.number, value.text);
}
static auto members(Newer& value)
{
    return std::tie(value.number, value.text, value.added);
}

namespace {

template <typename Value>
Value thereAndBack(const Value& value)
{
    return fromBytes<Value>(toBytes(value));
}

RC_GTEST_PROP(MemoryRecord, BringsEveryNumberBack, (std::int64_t value))
{
    RC_ASSERT(thereAndBack(value) == value);
}

RC_GTEST_PROP(MemoryRecord, BringsContainersBack,
              (const std::vector<std::string>& texts, const std::map<int, std::int64_t>& numbers,
               const std::vector<bool>& dots))
{
    RC_ASSERT(thereAndBack(texts) == texts);
    RC_ASSERT(thereAndBack(numbers) == numbers);
    RC_ASSERT(thereAndBack(dots) == dots);
}

RC_GTEST_PROP(MemoryRecord, EndsOrSaysThatItIsDamagedWhateverTheBytes, (const std::string& bytes))
{
    try {
        (void)fromBytes<std::map<std::string, std::vector<std::optional<double>>>>(bytes);
        (void)fromBytes<std::vector<bool>>(bytes);
    } catch (const DamagedRecord&) {
        RC_TAG("damaged");
    }
}

TEST(MemoryRecord, BringsTheOutermostNumbersBack)
{
    for (const std::int64_t value : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                     std::int64_t{0}, std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(thereAndBack(value), value);
    }
    EXPECT_EQ(thereAndBack(0.1), 0.1);
}

TEST(MemoryRecord, TakesOneByteForASmallNumber)
{
    EXPECT_EQ(toBytes(-64).size(), 1U);
    EXPECT_EQ(toBytes(63).size(), 1U);
    EXPECT_EQ(toBytes(64).size(), 2U);
}

TEST(MemoryRecord, GivesNewMembersTheirDefaultsInOlderRecords)
{
    const auto read = fromBytes<std::vector<Newer>>(toBytes(std::vector<Older>{{1, "one"}, {2, "two"}}));
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[1].number, 2);
    EXPECT_EQ(read[1].text, "two");
    EXPECT_EQ(read[1].added, "its default");
}

TEST(MemoryRecord, IsDamagedWhereItIsCutShort)
{
    const std::string whole = toBytes(std::vector<std::string>{"one", "two"});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_THROW((void)fromBytes<std::vector<std::string>>(whole.substr(0, size)), DamagedRecord) << size;
    }
}

} // namespace
} // namespace virtual_printer
