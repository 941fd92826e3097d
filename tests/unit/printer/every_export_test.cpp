// Every export that sends a command in every situation: nothing is accepted by oversight.
#include "tests/unit/printer/captured_requests.h"
#include "tests/unit/printer/situations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace virtual_printer {
namespace {

constexpr std::size_t commandExports = 182;

bool isSame(const State& a, const State& b)
{
    return *a.standing == *b.standing && *a.settings == *b.settings && a.receipt == b.receipt &&
           *a.pictures == *b.pictures && *a.hardware == *b.hardware && *a.upload == *b.upload;
}

// Objects of its own, that nobody else holds.
State copyOf(const State& state)
{
    State copy;
    copy.standing = std::make_shared<const Standing>(*state.standing);
    copy.settings = std::make_shared<const Settings>(*state.settings);
    copy.receipt = state.receipt;
    copy.pictures = std::make_shared<const Pictures>(*state.pictures);
    copy.hardware = std::make_shared<const Hardware>(*state.hardware);
    copy.upload = std::make_shared<const Upload>(*state.upload);
    return copy;
}

// A till that is told "not here" by the situation alone.
bool isOfTheSituation(Refusal refusal)
{
    static const std::set<Refusal> reasons = {
        Refusal::dayIsOpen,  Refusal::noSellingDay,    Refusal::receiptIsOpen,      Refusal::noReceipt,
        Refusal::dayTooLong, Refusal::onlyBetweenDays, Refusal::receiptIsBeingPaid, Refusal::defiscalized};
    return reasons.contains(refusal);
}

TEST(EveryExport, HasASampleCallOrSendsNothing)
{
    std::set<std::string_view> covered(otherExports().begin(), otherExports().end());
    EXPECT_EQ(covered.size(), 20U);
    for (const SampleCall& sample : sampleCalls()) {
        EXPECT_TRUE(covered.insert(sample.name).second) << sample.name << " stands there twice";
    }
    std::set<std::string_view> exports;
    for (const auto& entry : telvofm::tools::exportTable()) {
        exports.insert(entry.name);
    }
    EXPECT_EQ(covered, exports);
    EXPECT_EQ(sampleCalls().size(), commandExports);
}

void expectAnswers(const SampleCall& sample, const Request& request, const CommandRule& rule)
{
    for (std::size_t i = 0; i < situations.size(); ++i) {
        const auto [situation, name] = situations.at(i);
        SCOPED_TRACE(name);
        const DecidingPrinter printer = printerIn(situation);
        ASSERT_EQ(situationOf(printer.state, printer.now), situation);
        const State before = copyOf(printer.state);
        const Refusal refusal = decide(printer.state, request, printer.now).refusal;
        EXPECT_EQ(static_cast<int>(refusal), sample.answers.at(i)) << textOf(refusal).name;
        // Of the reports, only the daily closure is accepted from a day that is too long: its letter tells.
        const bool isOtherReport = sample.name == "printReport_str" && situation == Situation::overdue;
        EXPECT_EQ(isOfTheSituation(refusal), !rule.legal.contain(situation) || isOtherReport);
        EXPECT_TRUE(isSame(printer.state, before));
    }
}

// Training makes nothing legal or illegal.
void expectTheSameInTraining(const Request& request, const CommandRule& rule)
{
    for (const Situation situation : {Situation::noDay, Situation::idle, Situation::open}) {
        DecidingPrinter printer = printerIn(situation);
        printer.changeLife(Life::training);
        const Refusal refusal = decide(printer.state, request, printer.now).refusal;
        EXPECT_EQ(isOfTheSituation(refusal), !rule.legal.contain(situation)) << textOf(refusal).name;
    }
}

Refusal refusalWithout(Situation situation, bool paperIsOut, bool coverIsOpen, const Request& request)
{
    DecidingPrinter printer = printerIn(situation);
    printer.setHardware(paperIsOut, coverIsOpen);
    return decide(printer.state, request, printer.now).refusal;
}

// Without paper, whatever would be printed outside an open receipt is refused; the rest goes on.
void expectPaperToMatterOnlyToPrinting(const SampleCall& sample, const Request& request)
{
    static const std::set<std::string_view> printing = {"paragonBegin",
                                                        "repeatParagon",
                                                        "depositeInDrawer",
                                                        "depositeInDrawer_int",
                                                        "depositeInDrawer_str",
                                                        "printIssuedParagon",
                                                        "freeID",
                                                        "inspectionE1",
                                                        "testTelvoFM",
                                                        "printAnnouncement",
                                                        "printAnnouncementNF",
                                                        "printBC",
                                                        "printQRCode",
                                                        "printUnsentSFSpackets",
                                                        "getLastTransactionPackets",
                                                        "printReport",
                                                        "printReport_str",
                                                        "printJournal",
                                                        "printJournal_str",
                                                        "printJournalStructD",
                                                        "printJournalStructD_str",
                                                        "printJournalStructD1",
                                                        "printJournalStructZ",
                                                        "printJournalStructZ1",
                                                        "printJournalStructU",
                                                        "printYearlyClosure",
                                                        "printIntervalFPD",
                                                        "printIntervalFPC",
                                                        "printIntervalFPDArchive",
                                                        "printJournalStructUArchive",
                                                        "printJournalStructDArchive",
                                                        "loadGHMMC",
                                                        "loadGHMMC1",
                                                        "loadGHNV",
                                                        "loadGHNV2",
                                                        "loadRAMBitMap",
                                                        "printGraphic"};
    constexpr std::size_t idle = 1;
    constexpr std::size_t open = 2;
    const Refusal usual{static_cast<unsigned char>(sample.answers.at(idle))};
    const bool needsPaper = printing.contains(sample.name);
    EXPECT_EQ(refusalWithout(Situation::idle, true, false, request),
              needsPaper ? Refusal::outOfPaper : usual);
    EXPECT_EQ(refusalWithout(Situation::idle, false, true, request),
              needsPaper ? Refusal::coverIsOpen : usual);
    EXPECT_EQ(static_cast<int>(refusalWithout(Situation::open, true, true, request)),
              sample.answers.at(open));
}

TEST(EveryExport, IsAcceptedWhereItIsLegalAndRefusedWithItsReasonElsewhere)
{
    CapturedRequests library;
    std::size_t cases = 0;
    std::set<const CommandRule*> seen;
    for (const SampleCall& sample : sampleCalls()) {
        SCOPED_TRACE(sample.name);
        const auto request = library.requestOf(sample);
        ASSERT_TRUE(request.has_value());
        const CommandRule* rule = findRule(request->command, request->fields.size());
        ASSERT_NE(rule, nullptr);
        seen.insert(rule);
        expectAnswers(sample, *request, *rule);
        expectTheSameInTraining(*request, *rule);
        expectPaperToMatterOnlyToPrinting(sample, *request);
        cases += situations.size();
    }
    EXPECT_EQ(cases, commandExports * 6);
    for (const CommandRule& rule : commandRules()) {
        EXPECT_TRUE(seen.contains(&rule)) << rule.name << " is not called by any export";
    }
}

} // namespace
} // namespace virtual_printer
