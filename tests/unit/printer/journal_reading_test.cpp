// A reading of the journal piece by piece: the same documents as one that reads all at once, of few and of
// more than a page holds.
#include "tests/unit/printer/scripted_sale.h"
#include "virtual_printer/memory/journal_reading.h"

#include <gtest/gtest.h>

namespace virtual_printer {
namespace {

using test::momentOf;

class JournalReadings : public testing::Test
{
protected:
    // Receipts and drawer movements in turn, a second apart; the receipts have the numbers from 1.
    void keep(int documents)
    {
        Draft draft(State(), momentOf(0));
        for (int i = 0; i < documents; ++i) {
            ++kept;
            Document document;
            document.kind = kept % 2 == 1 ? Document::Kind::receipt : Document::Kind::drawer;
            document.number = (kept + 1) / 2;
            document.moment = momentOf(kept);
            draft.keep(document);
        }
        memory.commit(State(), draft);
    }

    static std::vector<std::int64_t> secondsOf(JournalReading& reading)
    {
        std::vector<std::int64_t> seconds;
        while (const auto document = reading.next()) {
            seconds.push_back((document->moment - momentOf(0)).count());
        }
        return seconds;
    }

    [[nodiscard]] std::vector<std::int64_t> secondsOf(const DocumentQuery& query) const
    {
        JournalReading reading(memory, query);
        return secondsOf(reading);
    }

    // From the first to the last, each `step` seconds.
    static std::vector<std::int64_t> each(std::int64_t first, std::int64_t last, std::int64_t step)
    {
        std::vector<std::int64_t> seconds;
        for (std::int64_t second = first; second <= last; second += step) {
            seconds.push_back(second);
        }
        return seconds;
    }

    static DocumentQuery receiptsBetween(int first, int last)
    {
        return {.kinds = {Document::Kind::receipt}, .moments = {{momentOf(first), momentOf(last)}}};
    }

    Memory memory;
    int kept = 0;
};

TEST_F(JournalReadings, OfNothingEndAtOnce)
{
    EXPECT_EQ(secondsOf(DocumentQuery()), each(1, 0, 1));
    EXPECT_EQ(secondsOf(receiptsBetween(0, 9)), each(1, 0, 1));
}

TEST_F(JournalReadings, OfAllHaveAll)
{
    keep(5);
    EXPECT_EQ(secondsOf(DocumentQuery()), each(1, 5, 1));
}

TEST_F(JournalReadings, OfFewHaveThoseThatAreWantedInTheirOrder)
{
    keep(20);
    EXPECT_EQ(secondsOf(receiptsBetween(4, 11)), each(5, 11, 2));
    EXPECT_EQ(secondsOf({.numbers = {{3, 4}}}), each(5, 8, 1));
    EXPECT_EQ(secondsOf({.kinds = {Document::Kind::drawer}, .numbers = {{3, 4}}}), each(6, 8, 2));
}

// A page has a thousand; at its edge nothing is lost and nothing comes twice.
TEST_F(JournalReadings, OfManyHaveThemPageByPage)
{
    keep(6010);
    for (const int last : {2002, 2004, 4002, 4004, 6000, 9000}) {
        EXPECT_EQ(secondsOf(receiptsBetween(3, last)), each(3, std::min(last, 6010), 2)) << last;
    }
    EXPECT_EQ(secondsOf({.numbers = {{2, 2500}}}), each(3, 5000, 1));
}

TEST_F(JournalReadings, HaveWhatThereWasAtTheirBeginning)
{
    keep(2000);
    JournalReading few(memory, receiptsBetween(1990, 9000));
    JournalReading many(memory, {.moments = {{momentOf(1), momentOf(9000)}}});
    keep(2000);
    EXPECT_EQ(secondsOf(few), each(1991, 1999, 2));
    EXPECT_EQ(secondsOf(many), each(1, 2000, 1));
}

} // namespace
} // namespace virtual_printer
