// The state in the memory: every part comes back as it was, and only what has changed is written.
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/scripted_sale.h"
#include "tests/unit/printer/simulated_disk.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using test::haveSameParts;
using test::momentOf;
using test::SimulatedDisk;

Line fullLine()
{
    Line line;
    line.kind = Line::Kind::picture;
    line.text = std::string("\x00\xFF\x80 dots", 8); // bytes that are no UTF-8
    line.right = "\xC5\xBD";
    line.unit = "ks";
    line.vat = 'H';
    line.number = -7;
    line.quantity = 1'500;
    line.unitPrice = std::numeric_limits<std::int64_t>::max();
    line.sum = std::numeric_limits<std::int64_t>::min();
    line.base = -1;
    line.foreign = 1;
    line.isVoided = true;
    return line;
}

Document fullDocument()
{
    Document document;
    document.kind = Document::Kind::cancelledReceipt;
    document.number = 17;
    document.closure = 3;
    document.isTraining = true;
    document.moment = momentOf(5);
    document.lines = {fullLine(), Line(), fullLine()};
    document.total = -250;
    document.byVat = {{'A', 1}, {'B', -2}};
    document.byPayment = {{1, 100}, {20, -5}};
    document.invoice = "2026/1";
    document.transaction = "T-1";
    return document;
}

Sums fullSums()
{
    Sums sums;
    sums.byVat = {{'C', 5}};
    sums.byPayment = {{2, 6}};
    sums.receipts = 1;
    sums.cancelled = 2;
    sums.discounts = 3;
    sums.returns = 4;
    sums.drawerMovements = 5;
    return sums;
}

Standing fullStanding()
{
    Standing standing;
    standing.life = Life::defiscalized;
    standing.dkp = "88812345678900001";
    standing.dayIsOpen = true;
    standing.dayBegan = momentOf(1);
    standing.lastDocument = momentOf(2);
    standing.saleMode = 1;
    standing.day = fullSums();
    standing.ever = fullSums();
    standing.ever.receipts = 9;
    standing.drawer = {{1, 20'000}};
    standing.receipts = 10;
    standing.closures = 11;
    standing.documents = 12;
    standing.clockOffset = std::chrono::seconds(-3600);
    return standing;
}

Settings fullSettings()
{
    Settings settings;
    settings.password = "1234";
    settings.servicePassword = "4321";
    settings.vat[0] = VatRate{.percent = 23, .reverseConstant = 18.699186991869919};
    settings.vat[7] = VatRate{.percent = 0, .reverseConstant = std::nullopt};
    settings.payments[5] = {.name = "Cudzia mena", .minimum = 5, .mayOverPay = true};
    settings.euroExchangeRate = 301'260;
    settings.header = {{1, "one"}, {10, "ten"}};
    settings.additionalHeader = "additional header";
    settings.additionalFooter = "additional footer";
    settings.superFooter = "super footer";
    settings.prelines = {"a", ""};
    settings.postlines = {"b"};
    settings.parameters = {{1, 2}};
    settings.printerParameters = {{3, 4}};
    settings.others = {{"email", "a@b.sk"}};
    settings.barCode = {.textPosition = 1, .textFont = 2, .height = 3, .width = 4};
    settings.qrCode = {
        .model = 1, .moduleWidth = 3, .errorCorrectionLevel = 4, .leftMargin = 5, .viewMode = 6};
    settings.columns = 48;
    settings.printsLogo = true;
    return settings;
}

State fullState()
{
    State state;
    state.standing = std::make_shared<const Standing>(fullStanding());
    state.settings = std::make_shared<const Settings>(fullSettings());
    Receipt receipt;
    receipt.document = fullDocument();
    receipt.isBeingPaid = true;
    receipt.paid = 99;
    receipt.lastItem = 2;
    state.receipt = std::make_shared<const Receipt>(receipt);
    Picture picture = {
        .width = 3, .height = 3, .dots = {true, false, true, true, false, true, false, true, true}};
    state.pictures = std::make_shared<const Pictures>(Pictures{{1, picture}, {9, Picture()}});
    return state;
}

Draft draftTo(const State& next)
{
    Draft draft(State(), momentOf(0));
    draft.next = next;
    return draft;
}

class MemoryState : public testing::Test
{
protected:
    [[nodiscard]] State loaded() const { return Memory(path).load().value_or(State()); }

    OwnFolder folder;
    std::string path = folder.file("printer.db");
};

TEST_F(MemoryState, HasNoStateWhenItIsNew)
{
    EXPECT_FALSE(Memory(path).load());
    EXPECT_FALSE(Memory(path).load()) << "opened again";
    EXPECT_FALSE(Memory().load());
}

TEST_F(MemoryState, ComesBackWithEveryMemberOfEveryPart)
{
    Memory(path).commit(State(), draftTo(fullState()));
    EXPECT_TRUE(haveSameParts(loaded(), fullState()));
    EXPECT_EQ(loaded().receipt->document, fullDocument());
    EXPECT_EQ(*loaded().standing, fullStanding());
    EXPECT_EQ(*loaded().settings, fullSettings());
}

TEST_F(MemoryState, KeepsAllPartsAtTheFirstCommitThoughOnlyOneHasChanged)
{
    const State whenNew = test::stateWhenNew();
    Draft draft(whenNew, momentOf(0));
    draft.standing().dayIsOpen = true;
    Memory(path).commit(whenNew, draft);
    EXPECT_TRUE(haveSameParts(loaded(), draft.next));
}

TEST_F(MemoryState, KeepsEachPartThatChanges)
{
    const State before = fullState();
    Memory(path).commit(State(), draftTo(before));
    Draft draft(before, momentOf(0));
    draft.standing().drawer.clear();
    Memory(path).commit(before, draft);
    EXPECT_TRUE(haveSameParts(loaded(), draft.next));

    Draft next(draft.next, momentOf(0));
    next.settings().header.erase(10);
    next.pictures().erase(1);
    Memory(path).commit(draft.next, next);
    EXPECT_TRUE(haveSameParts(loaded(), next.next));
}

// Lines are added mostly, but a void changes an earlier one, and nothing forbids that one goes.
TEST_F(MemoryState, FollowsTheOpenReceiptLineByLine)
{
    Memory memory(path);
    State state = fullState();
    memory.commit(State(), draftTo(state));
    const auto change = [&](auto changing) {
        Draft draft(state, momentOf(0));
        changing(draft);
        memory.commit(state, draft);
        state = draft.next;
        return haveSameParts(memory.load().value(), state);
    };
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().document.lines.emplace_back(); }));
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().document.lines[0].isVoided = false; }));
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().document.lines.resize(1); }));
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().document.lines.clear(); }));
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().paid = 0; }));
    EXPECT_TRUE(change([](Draft& draft) { draft.receipt().document.lines.assign(500, fullLine()); }));
    EXPECT_TRUE(change([](Draft& draft) { draft.endReceipt(); }));
    EXPECT_TRUE(change([](Draft& draft) { draft.beginReceipt(Receipt()); }));
}

TEST_F(MemoryState, WritesNothingWhenNothingThatIsKeptHasChanged)
{
    const SimulatedDisk disk;
    Memory memory(path);
    const State before = fullState();
    memory.commit(State(), draftTo(before));
    const std::size_t operations = disk.operations.size();
    Draft draft(before, momentOf(0));
    draft.hardware().display = "Dakujeme";
    draft.upload().received = "half a picture";
    draft.standing(); // another object of the same value
    draft.receipt();
    memory.commit(before, draft);
    EXPECT_EQ(disk.operations.size(), operations);
}

TEST_F(MemoryState, WritesOneLineForAnItemHoweverLongTheReceiptIs)
{
    const SimulatedDisk disk;
    Memory memory(path);
    State before = fullState();
    Receipt receipt = *before.receipt;
    receipt.document.lines.assign(499, fullLine());
    before.receipt = std::make_shared<const Receipt>(receipt);
    memory.commit(State(), draftTo(before));
    const std::size_t operations = disk.operations.size();
    Draft draft(before, momentOf(0));
    draft.receipt().document.lines.push_back(fullLine());
    memory.commit(before, draft);
    EXPECT_LE(disk.operations.size() - operations, 6U)
        << "three pages at most, each with its head in the log";
}

TEST_F(MemoryState, BacksUpSettingsAndPicturesAtEachClosure)
{
    Memory memory(path);
    const State before = fullState();
    memory.commit(State(), draftTo(before));
    EXPECT_FALSE(memory.backup());

    Draft closing(before, momentOf(0));
    closing.settings().columns = 32; // as of the closure, what it changes included
    closing.keep(Closure());
    memory.commit(before, closing);
    Draft later(closing.next, momentOf(0));
    later.settings().columns = 40;
    later.pictures().clear();
    memory.commit(closing.next, later);

    const auto backup = memory.backup();
    ASSERT_TRUE(backup);
    Settings withoutPasswords = *closing.next.settings;
    withoutPasswords.password.clear();
    withoutPasswords.servicePassword.clear();
    EXPECT_EQ(*backup->settings, withoutPasswords);
    EXPECT_EQ(*backup->pictures, *before.pictures);

    Draft clearing(later.next, momentOf(0));
    clearing.service = Draft::Service::clearClosures;
    memory.commit(later.next, clearing);
    EXPECT_FALSE(memory.backup());
}

TEST_F(MemoryState, IsKeptWithoutAFileForAsLongAsTheObjectLives)
{
    Memory memory;
    memory.commit(State(), draftTo(fullState()));
    Memory moved = std::move(memory);
    EXPECT_TRUE(haveSameParts(moved.load().value(), fullState()));
}

} // namespace
} // namespace virtual_printer
