// Documents are searched by what is on them; tills are served meanwhile.
#include "tests/unit/control/controlled_till.h"
#include "virtual_printer/memory/text_search.h"

namespace virtual_printer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SearchUnderControl : public ControlledTill
{
protected:
    static std::vector<std::string> totalsOf(const Json& page)
    {
        std::vector<std::string> totals;
        for (const Json& document : page["documents"]) {
            totals.push_back(document["total"]);
        }
        return totals;
    }
    std::vector<std::string> find(const std::string& query)
    {
        return totalsOf(get(at("documents?" + query)));
    }
};

TEST_F(SearchUnderControl, KnowsItemsSumsNumbersAndPayments)
{
    beginDay();
    sell("12.50");
    beginReceipt();
    ASSERT_EQ(tillSays(telvofm::test::request(
                  0x24, {"0", "\xC8u\xE8oriedky", "3.20", "A", "1.000", "3.20", "ks "})), // in Windows-1250
              "\x06");
    ASSERT_EQ(tillSays(telvofm::test::request(0x30, {"0", "1", "3.20", "3.20", "0", "Hotovos\x9D"})), "\x06");
    ASSERT_EQ(tillSays(telvofm::test::request(0x22, {"0", "0"})), "\x06");
    EXPECT_THAT(find("text=CHLIEB"), ElementsAre("12.50"));
    EXPECT_THAT(find("text=%C4%8Cu%C4%8DO"), ElementsAre("3.20")); // ČučO
    EXPECT_THAT(find("text=12,50"), ElementsAre("12.50"));
    EXPECT_THAT(find("text=12.50"), ElementsAre("12.50"));
    EXPECT_THAT(find("text=hotovos%C5%A4%203,20"), ElementsAre("3.20")); // hotovosŤ 3,20
    EXPECT_THAT(find("text=receipt%202"), ElementsAre("3.20"));
    EXPECT_THAT(find("text=chlieb&number=2"), IsEmpty());
    EXPECT_THAT(find("text=chlieb&number=1&kind=receipt"), ElementsAre("12.50"));
}

TEST_F(SearchUnderControl, OfALongJournalIsMadeInStepsBetweenWhichTillsAreServed)
{
    int wishes = 0; // to be looked at again
    control.notify([&wishes] { ++wishes; });
    beginDay();
    sell("7.00");
    Memory longer = printer.snapshot();
    Draft draft(*longer.load(), {});
    for (int receipt = 0; receipt < TextSearch::documentsOfAStep * 2; ++receipt) {
        Document document;
        document.lines = {{.kind = Line::Kind::item, .text = "Chlieb", .sum = 100}};
        draft.keep(document);
    }
    longer.commit(*longer.load(), draft);
    printer.takeOver(longer);
    wishes = 0;
    auto outcome = control.answer(requestFor("GET", at("documents?text=chlieb+7,00&order=newest"), ""));
    ASSERT_TRUE(std::holds_alternative<Later>(outcome));
    EXPECT_EQ(wishes, 1);
    sell("7.00"); // the till does not wait for the rest
    wishes = 0;
    const Later& later = std::get<Later>(outcome);
    EXPECT_EQ(later.look(false), std::nullopt);
    EXPECT_EQ(wishes, 1);
    const auto answer = later.look(false);
    ASSERT_TRUE(answer);
    EXPECT_EQ(wishes, 1) << "it is over";
    EXPECT_THAT(totalsOf(Json::parse(answer->body)), ElementsAre("7.00")) << "of those that there were";
    EXPECT_EQ(Json::parse(answer->body)["documents"][0]["position"], 1);

    // A page that is full needs no further step.
    EXPECT_EQ(get(at("documents?text=chlieb&order=newest&limit=2"))["next"], 2);
}

} // namespace
} // namespace virtual_printer
