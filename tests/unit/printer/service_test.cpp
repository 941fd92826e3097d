// The printer's life, its clock and its service.
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

class PrinterService : public testing::Test, protected DecidingPrinter
{
protected:
    PrinterService() : DecidingPrinter(printerIn(Situation::noDay)) {}

    // What becomes of the memories, without doing it.
    Decision decisionOn(Command command, std::vector<std::string> fields)
    {
        return decide(state, {1, static_cast<unsigned char>(command), std::move(fields)}, now);
    }
    Refusal fiscalizeAs(const std::string& dkp) { return send(Command::fiscalization, {"0000", dkp}); }
};

TEST_F(PrinterService, GoesThroughItsLife)
{
    EXPECT_EQ(send(Command::initFM, {"9999"}), Refusal::alreadyFiscalized);
    EXPECT_EQ(fiscalizeAs("88812345678900001"), Refusal::alreadyFiscalized);
    ASSERT_EQ(send(Command::defiscalizationFM, {"9999"}), Refusal::none);
    EXPECT_EQ(standing().life, Life::defiscalized);
    EXPECT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::defiscalized);
    EXPECT_EQ(send(Command::defiscalizationFM, {"9999"}), Refusal::defiscalized);
    ASSERT_EQ(send(Command::initFM, {"9999"}), Refusal::none);
    EXPECT_EQ(standing().life, Life::training);
    EXPECT_EQ(send(Command::defiscalizationFM, {"9999"}), Refusal::notFiscalized);
    ASSERT_EQ(fiscalizeAs("12345678901234567"), Refusal::none);
    EXPECT_EQ(standing().life, Life::fiscal);
    EXPECT_EQ(standing().dkp, "12345678901234567");
}

TEST_F(PrinterService, IsFactoryNewWhenTheFiscalMemoryIsInitialized)
{
    ASSERT_EQ(send(Command::setHeader, {"0000", "1", "Potraviny"}), Refusal::none);
    ASSERT_EQ(send(Command::defiscalizationFM, {"9999"}), Refusal::none);
    EXPECT_EQ(decisionOn(Command::initFM, {"9999"}).draft.service, Draft::Service::clearClosures);
    ASSERT_EQ(send(Command::initFM, {"9999"}), Refusal::none);
    EXPECT_EQ(standing().closures, 0);
    EXPECT_EQ(standing().ever, Sums());
    EXPECT_TRUE(standing().drawer.empty());
    EXPECT_EQ(standing().dkp, "");
    EXPECT_EQ(*state.settings, factorySettings());
    EXPECT_EQ(standing().receipts, 1) << "the journal has it still";
}

TEST_F(PrinterService, ForgetsTheTrainingWhenItIsFiscalized)
{
    changeLife(Life::training);
    const Decision decision = decisionOn(Command::fiscalization, {"0000", "12345678901234567"});
    EXPECT_EQ(decision.draft.service, Draft::Service::clearJournal);
    ASSERT_EQ(fiscalizeAs("12345678901234567"), Refusal::none);
    EXPECT_EQ(standing().receipts, 0);
    EXPECT_EQ(standing().ever, Sums());
    EXPECT_TRUE(standing().drawer.empty());
    EXPECT_EQ(standing().documents, 1) << "that of the fiscalization";
    EXPECT_EQ(documents.back().kind, Document::Kind::report);
    EXPECT_EQ(documents.back().lines.front().text, "FISCALIZATION");
}

TEST_F(PrinterService, IsFiscalizedWithSeventeenDigits)
{
    changeLife(Life::training);
    for (const std::string dkp :
         {"", "8881234567890000", "888123456789000011", "8881234567890000A", "8881234567890000 1"}) {
        EXPECT_EQ(fiscalizeAs(dkp), Refusal::badText) << dkp;
    }
    EXPECT_EQ(send(Command::fiscalization, {"9999", "12345678901234567"}), Refusal::wrongPassword);
}

TEST_F(PrinterService, GivesTheFactorysSettingsBack)
{
    ASSERT_EQ(send(Command::setHeader, {"0000", "1", "Potraviny"}), Refusal::none);
    ASSERT_EQ(send(Command::initFP, {"9999"}), Refusal::none);
    EXPECT_EQ(*state.settings, factorySettings());
    EXPECT_EQ(standing().life, Life::fiscal);
    EXPECT_EQ(standing().closures, 1);
}

TEST_F(PrinterService, InitializesTheJournalAlone)
{
    ASSERT_GT(standing().documents, 0);
    EXPECT_EQ(decisionOn(Command::initELJ, {"9999"}).draft.service, Draft::Service::clearJournal);
    ASSERT_EQ(send(Command::initELJ, {"9999"}), Refusal::none);
    EXPECT_EQ(standing().documents, 0);
    EXPECT_EQ(standing().closures, 1);
    EXPECT_EQ(standing().receipts, 1);
}

// A clock that runs: the offset is what it has been moved by.
TEST_F(PrinterService, SetsItsClockButNotBehindTheLastDocument)
{
    const Moment lastDocument = standing().lastDocument;
    EXPECT_EQ(send(Command::setDateTime, {toText(lastDocument - std::chrono::seconds(1))}),
              Refusal::clockWouldGoBack);
    EXPECT_EQ(send(Command::setDateTime, {"31.01.2026"}), Refusal::clockWouldGoBack) << "midnight";
    EXPECT_EQ(send(Command::setDateTime, {""}), Refusal::badDate);
    EXPECT_EQ(send(Command::setDateTime, {"2026-02-30"}), Refusal::badDate);
    EXPECT_EQ(send(Command::setDateTime, {toText(lastDocument)}), Refusal::none);
    EXPECT_EQ(standing().clockOffset, std::chrono::seconds(0));
    now += std::chrono::hours(1);
    EXPECT_EQ(send(Command::setDateTime, {"2026-01-31 12:30"}), Refusal::none);
    EXPECT_EQ(standing().clockOffset, -std::chrono::minutes(30));
    now -= std::chrono::minutes(30);
    EXPECT_EQ(send(Command::setDateTime, {"2026-01-31 13:30:00"}), Refusal::none);
    EXPECT_EQ(standing().clockOffset, std::chrono::minutes(30));
    ASSERT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::none);
    EXPECT_EQ(send(Command::setDateTime, {"2027-01-01"}), Refusal::onlyBetweenDays);
}

TEST_F(PrinterService, InspectsAndPrintsWhatItFinds)
{
    EXPECT_EQ(send(Command::inspectionEnabled, {"0000"}), Refusal::wrongPassword);
    ASSERT_EQ(send(Command::inspectionEnabled, {"9999"}), Refusal::none);
    EXPECT_EQ(state.settings->others.at("Inspection"), "enabled 2026-01-31 12:00:00");
    ASSERT_EQ(send(Command::inspectionE1, {"9999", "-5"}), Refusal::none);
    EXPECT_EQ(documents.back().lines.front().text, "INSPECTION");
    EXPECT_EQ(state.settings->others.at("Delta"), "-5");
    EXPECT_EQ(send(Command::inspectionE1, {"9999", "10000"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::inspectionE1, {"9999", "-10000"}), Refusal::valueOutOfRange);
    EXPECT_EQ(send(Command::inspectionE1, {"9999", "-9999"}), Refusal::none);
}

TEST_F(PrinterService, VerifiesTheJournalOfClosuresThatThereAre)
{
    EXPECT_EQ(send(Command::verifyCRCELJ, {"0"}), Refusal::noSuchReceipt);
    EXPECT_EQ(send(Command::verifyCRCELJ, {"1"}), Refusal::none);
    EXPECT_EQ(send(Command::verifyCRCELJ, {"2"}), Refusal::noSuchReceipt);
    EXPECT_EQ(decisionOn(Command::verifyCRCELJ, {"1"}).rule->wants, Wants::verdict);
}

TEST_F(PrinterService, RestoresWhatAClosureHasBackedUp)
{
    EXPECT_EQ(decisionOn(Command::restoreBCKP, {"0000"}).draft.service, Draft::Service::restore);
    DecidingPrinter withoutClosure;
    withoutClosure.changeLife(Life::training);
    ASSERT_EQ(withoutClosure.drawer("0", "1.00"), Refusal::none);
    ASSERT_EQ(withoutClosure.send(Command::printReport, {"Z", "0"}), Refusal::none);
    EXPECT_EQ(withoutClosure.send(Command::restoreBCKP, {"0000"}), Refusal::nothingToRestore);
}

TEST_F(PrinterService, TestsPrinterDisplayAndDrawer)
{
    const auto test = [&](const std::string& target) { return send(Command::testTelvoFM, {"0000", target}); };
    ASSERT_EQ(test("0"), Refusal::none);
    EXPECT_TRUE(std::holds_alternative<Printed>(shown.front()));
    ASSERT_EQ(test("1"), Refusal::none);
    EXPECT_TRUE(std::holds_alternative<DisplayShows>(shown.front()));
    ASSERT_EQ(test("2"), Refusal::none);
    EXPECT_TRUE(std::holds_alternative<DrawerOpens>(shown.front()));
    EXPECT_EQ(test("3"), Refusal::valueOutOfRange);
    EXPECT_EQ(test("-1"), Refusal::valueOutOfRange);
}

TEST_F(PrinterService, ResetsDisplaysAndUploadsAndLeavesTheOpenReceipt)
{
    DecidingPrinter printer = printerIn(Situation::open);
    ASSERT_EQ(printer.send(Command::printDisplay, {"0", "", "Chlieb"}), Refusal::none);
    ASSERT_EQ(printer.send(Command::printQRCode, {}), Refusal::none);
    const Receipt before = *printer.state.receipt;
    EXPECT_EQ(printer.send(Command::swReset, {"9999"}), Refusal::wrongPassword);
    ASSERT_EQ(printer.send(Command::swReset, {"0000"}), Refusal::none);
    EXPECT_EQ(printer.state.hardware->display, "");
    EXPECT_EQ(printer.state.hardware->operatorDisplay, "");
    EXPECT_EQ(*printer.state.upload, Upload());
    EXPECT_EQ(*printer.state.receipt, before);
}

TEST_F(PrinterService, CannotTakeAwayWhatAPersonHasTo)
{
    setHardware(true, true);
    EXPECT_EQ(send(Command::clearErrorStates, {}), Refusal::none);
    EXPECT_TRUE(state.hardware->paperIsOut);
    EXPECT_TRUE(state.hardware->coverIsOpen);
}

TEST_F(PrinterService, ClosesTheJournalCard)
{
    ASSERT_EQ(send(Command::closeELJcard, {}), Refusal::none);
    EXPECT_EQ(state.settings->others.at("Journal card"), "closed 2026-01-31 12:00:00");
}

// The journal has room for a million documents, and a closure always finds room.
TEST_F(PrinterService, RefusesDocumentsThatTheJournalHasNoRoomFor)
{
    ASSERT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::none);
    ASSERT_EQ(drawer("0", "1.00"), Refusal::none);
    Standing full = standing();
    full.documents = 1'000'000;
    state.standing = std::make_shared<const Standing>(std::move(full));
    EXPECT_EQ(begin(), Refusal::journalFull);
    EXPECT_EQ(drawer("0", "1.00"), Refusal::journalFull);
    EXPECT_EQ(send(Command::printReport, {"X", "0"}), Refusal::journalFull);
    EXPECT_EQ(send(Command::inspectionE1, {"9999", "0"}), Refusal::journalFull);
    EXPECT_FALSE(state.settings->others.contains("Delta"));
    EXPECT_EQ(send(Command::printReport, {"Z", "0"}), Refusal::none);
    EXPECT_EQ(standing().documents, 1'000'001);
    EXPECT_EQ(send(Command::inspectionE1, {"9999", "0"}), Refusal::journalFull);
    EXPECT_EQ(send(Command::defiscalizationFM, {"9999"}), Refusal::journalFull);
    EXPECT_EQ(standing().life, Life::fiscal);
    EXPECT_EQ(send(Command::initELJ, {"9999"}), Refusal::none);
    EXPECT_EQ(send(Command::sellingDayBegin, {"0"}), Refusal::none);
    EXPECT_EQ(begin(), Refusal::none);
}

// The journal of the training is cleared before the document of the fiscalization is kept in it.
TEST_F(PrinterService, IsFiscalizedWithAFullJournal)
{
    changeLife(Life::training);
    Standing full = standing();
    full.documents = 1'000'000;
    state.standing = std::make_shared<const Standing>(std::move(full));
    EXPECT_EQ(fiscalizeAs("12345678901234567"), Refusal::none);
    EXPECT_EQ(standing().documents, 1);
}

TEST_F(PrinterService, LosesItsPicturesWhenItIsInitialized)
{
    const Pictures picture = {{1, {.width = 1, .height = 1, .dots = {true}}}};
    state.pictures = std::make_shared<const Pictures>(picture);
    ASSERT_EQ(send(Command::initELJ, {"9999"}), Refusal::none);
    EXPECT_EQ(*state.pictures, picture);
    ASSERT_EQ(send(Command::initFP, {"9999"}), Refusal::none);
    EXPECT_TRUE(state.pictures->empty());
    state.pictures = std::make_shared<const Pictures>(picture);
    changeLife(Life::training);
    ASSERT_EQ(send(Command::initFM, {"9999"}), Refusal::none);
    EXPECT_TRUE(state.pictures->empty());
}

} // namespace
} // namespace virtual_printer
