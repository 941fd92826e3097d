// What is sent goes into whatever receipt the printer has open: telvofm.hpp sends nothing for one that is
// not.
#include "cpp_session.h"

#include "tests/unit/own_folder.h"

#include <filesystem>

namespace telvofm {
namespace {

class CppOpenReceipt : public test::CppSession
{
protected:
    // Nothing goes into it, and nothing is sent.
    static void takesNothing(Receipt& receipt)
    {
        const test::OwnFolder folder;
        const std::string log = folder.file("raw.log");
        setRawLogginOn(log.c_str());
        for (const Outcome& outcome :
             {receipt.sell("Syr", 3, "A", 1, 3, "ks"), receipt.takeBack("Med", 4, "A", 1, 4, "ks"),
              receipt.discount("Zľava", 1, "A"), receipt.pay(1, 4, ""), receipt.end()}) {
            ASSERT_FALSE(outcome);
            EXPECT_EQ(outcome.error().kind, Kind::notExecuted);
            EXPECT_NE(outcome.error().text().find("This receipt is not open"), std::string::npos)
                << outcome.error().text();
        }
        seRawLogginOff();
        EXPECT_EQ(std::filesystem::file_size(log), 0U);
    }
};

TEST_F(CppOpenReceipt, IsNoneBeforeBegin)
{
    Receipt receipt = session_->receipt();
    takesNothing(receipt);
}

TEST_F(CppOpenReceipt, IsNoneWhenBeginWasRefused)
{
    Receipt receipt = begun();
    EXPECT_TRUE(receipt.pay(1, 4, "") && receipt.end());
    EXPECT_TRUE(session_->call("printReport", printReport, 1, 'Z', 1));
    EXPECT_FALSE(receipt.begin()); // no day is open
    takesNothing(receipt);
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
}

TEST_F(CppOpenReceipt, IsTheOtherWhenBeginWasRefused)
{
    Receipt open = begun();
    Receipt receipt = session_->receipt();
    EXPECT_FALSE(receipt.begin());
    takesNothing(receipt);
    EXPECT_TRUE(open.pay(1, 4, "") && open.end());
    EXPECT_EQ(session_->variable("LAST_TOTAL").value_or(""), "4.00");
}

TEST_F(CppOpenReceipt, IsNoneBehindCancelOrEndOrRecovery)
{
    Receipt receipt = begun();
    EXPECT_TRUE(receipt.cancel());
    takesNothing(receipt);
    EXPECT_TRUE(receipt.begin() && receipt.sell("Med", 4, "A", 1, 4, "ks") && receipt.pay(1, 4, "") &&
                receipt.end());
    takesNothing(receipt);
    EXPECT_TRUE(receipt.begin());
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
    takesNothing(receipt);
}

TEST_F(CppOpenReceipt, GoesOnWhenItIsBegunAgain)
{
    Receipt receipt = begun();
    EXPECT_FALSE(receipt.begin());
    EXPECT_NE(receipt.failure()->text().find("This receipt is open already"), std::string::npos);
    EXPECT_TRUE(receipt.pay(1, 4, "") && receipt.end());
}

TEST_F(CppOpenReceipt, IsTheOneThatWasBegunLast)
{
    Receipt receipt = begun();
    EXPECT_TRUE(session_->call("destroyParagon", destroyParagon, 1, 0, "")); // past the object
    Receipt next = begun();
    takesNothing(receipt);
    EXPECT_FALSE(receipt.cancel());
    EXPECT_EQ(receipt.failure()->kind, Kind::notExecuted);
    EXPECT_EQ(receipt.recover().text().find("ask a person: another receipt was begun since"), 0U);
    EXPECT_TRUE(next.pay(1, 4, "") && next.end());
}

TEST_F(CppOpenReceipt, MayBeAnotherWhenThePrinterCannotBeAsked)
{
    {
        const Result<Session> closed = std::move(session_);
    }
    auto blind = Session::open(address_, 1, Questions{.canBeAsked = false});
    ASSERT_TRUE(blind);
    Receipt open = blind->receipt();
    EXPECT_TRUE(open.begin() && open.sell("Med", 4, "A", 1, 4, "ks"));
    Receipt receipt = blind->receipt();
    EXPECT_FALSE(receipt.begin());
    takesNothing(receipt);
    EXPECT_FALSE(receipt.cancel());
    EXPECT_EQ(receipt.failure()->kind, Kind::notExecuted);
    EXPECT_TRUE(open.pay(1, 4, ""));
    EXPECT_FALSE(open.pay(1, 4, "")); // nothing is left to pay
    EXPECT_EQ(open.failure()->kind, Kind::amountError);
    EXPECT_TRUE(open.end());
    takesNothing(open);
    EXPECT_FALSE(open.cancel());
    EXPECT_EQ(open.failure()->kind, Kind::notExecuted);
}

TEST_F(CppOpenReceipt, IsKnownByAllNamesOrNone)
{
    {
        const Result<Session> closed = std::move(session_);
    }
    const auto refused = Session::open(address_, 1, Questions{.due = ""});
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().text().find("give all of them"), std::string::npos);
}

} // namespace
} // namespace telvofm
