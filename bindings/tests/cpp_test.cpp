// telvofm.hpp where the demo receipt does not come: characters, amounts, failures, what is refused
// beforehand, and recovery.
#include "cpp_session.h"

#include "tests/unit/own_folder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace telvofm {
namespace {

using namespace telvofm::literals;
using test::CppSession;

TEST(CppText, EveryByteComesBack)
{
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every += static_cast<char>(byte);
    }
    EXPECT_EQ(encode(decode(every)).value_or(""), every);
    EXPECT_EQ(decode("\x81\x83"), "\xC2\x81\xC2\x83"); // two of the bytes that Windows leaves open
}

TEST(CppText, IsWindows1250)
{
    EXPECT_EQ(encode("šč žťľ€").value_or(""), "\x9A\xE8 \x9E\x9D\xBE\x80");
}

TEST(CppText, NamesTheCharacterThatItRefuses)
{
    const auto refused = encode("Žiña");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind, Kind::textError);
    EXPECT_NE(refused.error().text().find("\"ñ\" (U+00F1) at position 2 of \"Žiña\""), std::string::npos)
        << refused.error().text();
    EXPECT_NE(encode("\xF0\x9F\x98\x80").error().text().find("U+1F600"), std::string::npos);
}

TEST(CppText, RefusesANul)
{
    const auto refused = encode(std::string_view("Chlieb\0tajny", 12));
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().text().find("a NUL at position 6"), std::string::npos)
        << refused.error().text();
}

TEST(CppText, RefusesWhatIsNoUtf8)
{
    // Windows-1250 as it is, a character cut off, one written too long, half a surrogate pair.
    for (const char* wrong : {"\x9A", "\xC5", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
        const auto refused = encode(wrong);
        ASSERT_FALSE(refused) << wrong;
        EXPECT_NE(refused.error().text().find("no UTF-8 at position 0"), std::string::npos)
            << refused.error().text();
    }
}

TEST(CppDecimal, IsWrittenWithItsDecimals)
{
    EXPECT_EQ((12.5_d).text(2).value_or(""), "12.50");
    EXPECT_EQ((0.125_d).text(3).value_or(""), "0.125");
    EXPECT_EQ((-0.05_d).text(2).value_or(""), "-0.05");
    EXPECT_EQ(Decimal(-3).text(2).value_or(""), "-3.00");
    EXPECT_EQ((99999999999999_d).text(2).value_or(""), "99999999999999.00");
    EXPECT_EQ(12.495_d - 0.005_d, 12.49_d);
}

TEST(CppDecimal, IsNeverRounded)
{
    const auto money = (-1.005_d).text(2);
    ASSERT_FALSE(money);
    EXPECT_EQ(money.error().kind, Kind::amountError);
    EXPECT_EQ(money.error().text(), "-1.005 has more than 2 decimals; round it first");
    const auto quantity = (0.1255_d).text(3);
    ASSERT_FALSE(quantity);
    EXPECT_EQ(quantity.error().text(), "0.1255 has more than 3 decimals; round it first");
}

TEST(CppDecimal, ParsesNothingElse)
{
    for (const char* wrong :
         {"", "-", ".5", "5.", "1,5", "1e3", "+1", "1.23456", "1.2.3", " 1", "123456789012345"}) {
        EXPECT_EQ(Decimal::parse(wrong), std::nullopt) << wrong;
    }
    EXPECT_EQ(Decimal::parse("-7.49"), -7.49_d);
}

TEST(CppFailure, SaysWhatWasCarriedOut)
{
    const Failure refused = failureOf("itemSale_str", 26, 0.01);
    EXPECT_EQ(refused.kind, Kind::refused);
    EXPECT_EQ(refused.text().find("itemSale_str: code 26 (refused): "), 0U) << refused.text();
    EXPECT_NE(refused.text().find(" It was not carried out. "), std::string::npos);
    EXPECT_EQ(failureOf("payment_str", 32, 3.1).kind, Kind::outcomeUnknown); // it may have been sent again
    for (const int code : {-10201, -10202, -10002, 64, -77}) {
        EXPECT_EQ(failureOf("paragonEnd", code, 0).kind, Kind::outcomeUnknown) << code;
    }
    EXPECT_EQ(failureOf("openFM", -1, 0).kind, Kind::notExecuted);
}

TEST_F(CppSession, IsTheOnlyOne)
{
    const auto second = Session::open(address_);
    ASSERT_FALSE(second);
    EXPECT_NE(second.error().text().find("one at a time"), std::string::npos);
    EXPECT_EQ(session_->variable("STATE").value_or(""), "closed"); // the first one goes on
}

TEST_F(CppSession, DayThatIsOpenIsNoFailure)
{
    EXPECT_EQ(session_->beginDay().value_or(true), false);
}

TEST(CppDay, OfWhichNobodyKnowsIsAFailure)
{
    const test::OwnFolder folder;
    const std::string scenario = folder.file("silent.json");
    std::ofstream(scenario) << R"({"trouble": "As after silence on a serial line.", "seed": 1, "faults": [
        {"kind": "refuse", "command": "sellingDayBegin", "code": 64}]})";
    const test::PrinterProcess printer({"--listen", "127.0.0.1:0", "--scenario", scenario});
    auto session = Session::open(printer.address());
    ASSERT_TRUE(session) << session.error().text();
    const auto begun = session->beginDay();
    ASSERT_FALSE(begun);
    EXPECT_EQ(begun.error().kind, Kind::outcomeUnknown);
}

TEST_F(CppSession, ReadsAndCallsAnyFunction)
{
    EXPECT_TRUE(session_->call("setHeader", setHeader, 1, "0000", 1, "Šťastný"));
    Receipt receipt = begun();
    EXPECT_TRUE(receipt.pay(1, 4, "") && receipt.end());
    EXPECT_NE(session_->lastReceipt().value_or("").find("Med"), std::string::npos);
    EXPECT_NE(session_->journal().value_or("").find("Šťastný"), std::string::npos);
    EXPECT_FALSE(session_->read("getJournalStructU_ResultObject", getJournalStructU_ResultObject, 1, "ñ"));
}

// A session's call() does not compile with these.
static_assert(inside::fillsABuffer(&getJournal) && inside::fillsABuffer(&getParagonIDs) &&
              inside::fillsABuffer(&getJournal_str_count) && inside::fillsABuffer(&getBCKP));
static_assert(!inside::fillsABuffer(&getJournal_ResultObject) && !inside::fillsABuffer(&setHeader));

// Nor with these.
static_assert(
    inside::narrowsAny<int, int, const char*, double, const char*, int, int, const char*>(&itemSale_int));
static_assert(
    inside::narrowsAny<int, int, const char*, long long, const char*, int, int, const char*>(&itemSale_int));
static_assert(inside::narrowsAny<int, int, int>(&printReport)); // a letter in the middle
static_assert(!inside::narrowsAny<int, char, int>(&printReport) &&
              !inside::narrowsAny<int, int, const char*>(&freeID));
static_assert(!inside::narrowsAny<int, short, const char*, float, char, int, double, const char*>(&itemSale));

TEST_F(CppSession, SellsAtOneRate)
{
    Receipt receipt = begun();
    for (const char* rate : {"AB", ""}) {
        EXPECT_FALSE(receipt.sell("Syr", 3, rate, 1, 3, "ks"));
        EXPECT_EQ(receipt.failure()->kind, Kind::textError);
        EXPECT_FALSE(receipt.takeBack("Med", 4, rate, 1, 4, "ks"));
        EXPECT_FALSE(receipt.discount("Zľava", 1, rate));
        EXPECT_NE(receipt.failure()->text().find("a VAT rate is one letter"), std::string::npos);
    }
    EXPECT_EQ(session_->variable("TOTAL").value_or(""), "4.00");
}

TEST_F(CppSession, TakesATruthForOneByte)
{
    for (const bool truth : {true, false}) {
        EXPECT_TRUE(session_->call("freeID", freeID, 1, truth, "ščžťľ"));
        setAutoTwoLineItem(truth);
        EXPECT_EQ(isAutoTwoLineItem(), truth);
    }
}

TEST_F(CppSession, ThatHasEndedLeavesTheNextOneAlone)
{
    Receipt receipt = begun();
    {
        const Session ended = std::move(*session_);
        EXPECT_TRUE(ended.isOpen());
        EXPECT_FALSE(session_->isOpen()); // NOLINT(bugprone-use-after-move): it is closed, and says so
        EXPECT_TRUE(receipt.sell("Syr", 3, "A", 1, 3, "ks"));
    }
    EXPECT_EQ(receipt.recover().verdict, Verdict::askAPerson);
    auto another = Session::open(address_);
    ASSERT_TRUE(another) << another.error().text();
    setAutoTwoLineItem(true); // is forgotten when a connection is opened
    const Outcome reopened = session_->reopen();
    ASSERT_FALSE(reopened);
    EXPECT_EQ(reopened.error().text().find("openFM: code -1 (notOpen): This session is closed."), 0U);
    EXPECT_EQ(reopened.error().kind, Kind::notExecuted);
    EXPECT_FALSE(session_->beginDay());
    EXPECT_FALSE(receipt.cancel());
    const Recovery recovery = receipt.recover();
    EXPECT_EQ(recovery.text().find("ask a person: the session of this receipt is closed"), 0U);
    EXPECT_TRUE(isAutoTwoLineItem());
    EXPECT_EQ(another->variable("STATE").value_or(""), "open");
    EXPECT_EQ(
        another->interruptedReceipt(receipt.numberBefore().value_or(""), receipt.total()).recover().verdict,
        Verdict::notSold);
}

TEST_F(CppSession, NamesOfFilesAreTheSystemsMatter)
{
    const std::filesystem::path file = "žurnál.txt";
    EXPECT_TRUE(session_->call("getJournal_str_tofile", getJournal_str_tofile, 1, file));
    EXPECT_TRUE(std::filesystem::remove(file));
}

TEST_F(CppSession, ReceiptThatWasOpenBeforeIsLeftAlone)
{
    begun(); // another one, which is open
    Receipt receipt = session_->receipt();
    EXPECT_FALSE(receipt.begin());
    EXPECT_EQ(receipt.failure()->kind, Kind::notExecuted);
    EXPECT_EQ(receipt.recover().verdict, Verdict::askAPerson);
    EXPECT_FALSE(receipt.cancel());
    EXPECT_EQ(receipt.failure()->kind, Kind::notExecuted);
    EXPECT_FALSE(session_->receipt().cancel()); // one that was not begun
    EXPECT_EQ(session_->variable("STATE").value_or(""), "open");
}

TEST_F(CppSession, ReceiptThatIsNotOpenIsNotCancelled)
{
    Receipt receipt = begun();
    EXPECT_TRUE(receipt.pay(1, 4, "") && receipt.end());
    begun(); // another one, which is open
    EXPECT_FALSE(receipt.cancel());
    EXPECT_EQ(receipt.failure()->text(),
              "destroyParagon: code -1 (notOpen): This receipt was not begun, is over, or another one may be "
              "open. It was not carried out. To cancel another one call destroyParagon through the session.");
    EXPECT_EQ(session_->variable("STATE").value_or(""), "open");
}

TEST_F(CppSession, ReceiptGoesOnAfterARefusal)
{
    Receipt receipt = begun();
    EXPECT_FALSE(receipt.sell("Syr", 3, "H", 1, 3, "ks"));
    EXPECT_EQ(receipt.failure()->kind, Kind::refused);
    struct Item
    {
        Decimal total, quantity, unitPrice;
    };
    for (const Item& item : {Item{1.005_d, 1, 3}, Item{3, 0.1255_d, 3}, Item{3, 1, 8.333_d}}) {
        EXPECT_FALSE(receipt.sell("Syr", item.total, "A", item.quantity, item.unitPrice, "ks"));
        EXPECT_EQ(receipt.failure()->kind, Kind::amountError);
    }
    EXPECT_TRUE(receipt.pay(1, 4, "") && receipt.end());
    EXPECT_EQ(receipt.number(), "1");
}

TEST_F(CppSession, TotalThatIsNotThePrintersIsDoubt)
{
    Receipt receipt = begun();
    receipt.total() += 1;
    EXPECT_FALSE(receipt.pay(1, 5, ""));
    EXPECT_NE(receipt.failure()->text().find("the total is \"4.00\", for the till 5.00"), std::string::npos);
    EXPECT_FALSE(receipt.sell("Syr", 3, "A", 1, 3, "ks")); // it takes nothing more
    EXPECT_FALSE(receipt.begin()); // nor another one, as long as it may have been sold
    EXPECT_EQ(receipt.failure()->kind, Kind::outcomeUnknown);
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
    EXPECT_EQ(session_->variable("STATE").value_or(""), "closed");
}

TEST_F(CppSession, ReceiptOfTheSameObjectBeginsAfresh)
{
    Receipt receipt = begun();
    EXPECT_TRUE(receipt.pay(1, 1, ""));
    receipt.total() += 1;
    EXPECT_FALSE(receipt.pay(1, 4, ""));
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
    EXPECT_TRUE(receipt.begin() && receipt.sell("Med", 4, "A", 1, 4, "ks") && receipt.pay(1, 4, "") &&
                receipt.end());
    EXPECT_EQ(receipt.number(), "1");
    EXPECT_TRUE(receipt.begin());
    EXPECT_EQ(receipt.total(), Decimal());
    EXPECT_EQ(receipt.paid(), Decimal());
    EXPECT_EQ(receipt.number(), "");
}

TEST_F(CppSession, EmptyReceiptIsCancelled)
{
    Receipt receipt = session_->receipt();
    EXPECT_TRUE(receipt.begin());
    EXPECT_EQ(session_->interruptedReceipt("0", 0).recover().verdict, Verdict::notSold);
    EXPECT_TRUE(receipt.begin());
    EXPECT_FALSE(receipt.end());
    EXPECT_EQ(receipt.failure()->kind, Kind::refused);
    EXPECT_EQ(receipt.recover().verdict, Verdict::notSold);
}

TEST_F(CppSession, TillThatWasSwitchedOffBeforeTheEnd)
{
    {
        Receipt receipt = begun();
        EXPECT_TRUE(receipt.pay(1, 4, ""));
    }
    const Recovery recovery = session_->interruptedReceipt("0", 4).recover();
    EXPECT_EQ(recovery.text(), "sold: receipt 1, total 4.00");
}

TEST_F(CppSession, PrinterThatCannotBeAskedWantsAPerson)
{
    {
        const Result<Session> closed = std::move(session_);
    }
    auto blind = Session::open(address_, 1, Questions{.canBeAsked = false});
    ASSERT_TRUE(blind);
    Receipt receipt = blind->receipt();
    EXPECT_TRUE(receipt.begin() && receipt.sell("Med", 4, "A", 1, 4, "ks") && receipt.pay(1, 4, "") &&
                receipt.end());
    EXPECT_EQ(receipt.recover().verdict, Verdict::askAPerson);
    EXPECT_TRUE(receipt.begin());
    EXPECT_EQ(blind->interruptedReceipt("1", 4).recover().verdict, Verdict::askAPerson);
    EXPECT_EQ(*blind->variable("STATE"), "open"); // it is left alone
}

} // namespace
} // namespace telvofm
