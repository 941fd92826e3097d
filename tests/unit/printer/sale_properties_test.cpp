// Whatever a till sends: totals, VAT sums, payments, drawer, day and documents agree after every request, a
// refused request changes nothing, and deciding depends on nothing but what it is given.
#include "tests/unit/printer/bookkeeper.h"
#include "tests/unit/printer/deciding_printer.h"
#include "tests/unit/printer/random_till.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <optional>

namespace virtual_printer {
namespace {

// A state's parts as values.
struct Parts
{
    explicit Parts(const State& state)
        : standing(*state.standing), settings(*state.settings), pictures(*state.pictures),
          hardware(*state.hardware), upload(*state.upload)
    {
        if (state.receipt) {
            receipt = *state.receipt;
        }
    }
    bool operator==(const Parts&) const = default;

    Standing standing;
    Settings settings;
    std::optional<Receipt> receipt;
    Pictures pictures;
    Hardware hardware;
    Upload upload;
};

bool areSameObjects(const State& one, const State& other)
{
    return one.standing == other.standing && one.settings == other.settings && one.receipt == other.receipt &&
           one.pictures == other.pictures && one.hardware == other.hardware && one.upload == other.upload;
}

bool areAlike(const Shown& one, const Shown& other)
{
    if (one.index() != other.index()) {
        return false;
    }
    if (const auto* printed = std::get_if<Printed>(&one)) {
        return printed->line == std::get<Printed>(other).line;
    }
    const auto* text = std::get_if<DisplayShows>(&one);
    return text == nullptr || text->text == std::get<DisplayShows>(other).text;
}

bool areAlike(const Decision& one, const Decision& other)
{
    return one.refusal == other.refusal && one.rule == other.rule &&
           Parts(one.draft.next) == Parts(other.draft.next) && one.draft.documents == other.draft.documents &&
           one.draft.closures == other.draft.closures && one.draft.service == other.draft.service &&
           std::equal(one.draft.shown.begin(), one.draft.shown.end(), other.draft.shown.begin(),
                      other.draft.shown.end(),
                      [](const Shown& shown, const Shown& twin) { return areAlike(shown, twin); });
}

// Sends what the random till chooses and lets the bookkeeper look at every answer.
class WatchedSale
{
public:
    void send(std::uint32_t number)
    {
        constexpr std::uint32_t longestPause = 900; // seconds: a day gets too long now and then
        printer.now += std::chrono::seconds(number % longestPause);
        const Request request = RandomTill::next(printer.state, printer.now, number);
        const State before = printer.state;
        const Parts partsBefore(before);
        Decision decision = decide(printer.state, request, printer.now);
        require(areAlike(decision, decide(printer.state, request, printer.now)), "it is decided by chance");
        require(areSameObjects(printer.state, before) && Parts(before) == partsBefore,
                "deciding changes the state that is");
        if (decision.refusal != Refusal::none) {
            ++refused[decision.refusal];
            return;
        }
        ++accepted[decision.rule->command];
        carryOut(decision.draft);
    }

    std::map<Refusal, int> refused;
    std::map<Command, int> accepted;
    std::size_t longestReceipt = 0;

private:
    void carryOut(const Draft& draft)
    {
        const bool wasInReceipt = printer.state.receipt && draft.next.receipt;
        require(!wasInReceipt || printer.state.standing == draft.next.standing,
                "a line of an open receipt touches more than the receipt");
        printer.state = draft.next;
        for (const Closure& closure : draft.closures) {
            books.enter(closure);
        }
        for (const Document& document : draft.documents) {
            books.enter(document);
            longestReceipt = std::max(longestReceipt, document.lines.size());
        }
        books.checkStanding(printer.standing());
        if (printer.state.receipt) {
            Bookkeeper::checkLines(printer.receipt());
            Bookkeeper::checkPayments(printer.receipt(), printer.state.receipt->paid);
            require(printer.state.receipt->isBeingPaid || printer.receipt().byPayment.empty(),
                    "a payment does not begin the payment");
        }
    }

    DecidingPrinter printer;
    Bookkeeper books{printer.state};
};

RC_GTEST_PROP(PrinterSaleProperty, NothingDisagreesWhateverATillSends, ())
{
    constexpr int longest = 600;
    const auto numbers = *rc::gen::resize(longest, rc::gen::arbitrary<std::vector<std::uint32_t>>());
    WatchedSale sale;
    for (const std::uint32_t number : numbers) {
        sale.send(number);
    }
}

// That the property is not about refusals and empty receipts only.
TEST(PrinterSaleProperty, RunsAreDeep)
{
    constexpr int runs = 20;
    constexpr int requests = 1000;
    std::mt19937 numbers(1); // always the same ones
    std::map<Refusal, int> refused;
    std::map<Command, int> accepted;
    std::size_t longestReceipt = 0;
    for (int run = 0; run < runs; ++run) {
        WatchedSale sale;
        for (int request = 0; request < requests; ++request) {
            sale.send(static_cast<std::uint32_t>(numbers()));
        }
        for (const auto& [refusal, count] : sale.refused) {
            refused[refusal] += count;
        }
        for (const auto& [command, count] : sale.accepted) {
            accepted[command] += count;
        }
        longestReceipt = std::max(longestReceipt, sale.longestReceipt);
    }
    EXPECT_GT(accepted[Command::paragonEnd], runs * 20);
    EXPECT_GT(longestReceipt, 30U);
    for (const Command command :
         {Command::printReport, Command::depositeInDrawer, Command::destroyParagon, Command::itemVoid,
          Command::itemReturn, Command::itemNegative, Command::itemDiscount, Command::itemDiscount2,
          Command::subTotalDiscount, Command::subTotalDiscount2, Command::redeemVoucher,
          Command::deductDownPayment, Command::payment, Command::payment2}) {
        EXPECT_GT(accepted[command], runs) << static_cast<int>(command);
    }
    for (const Refusal refusal :
         {Refusal::nothingToVoid, Refusal::paidTooLittle, Refusal::nothingToDiscount, Refusal::wrongTotal,
          Refusal::wrongSign, Refusal::vatBelowZero, Refusal::discountTooLarge, Refusal::unknownPayment,
          Refusal::overPayment, Refusal::alreadyPaid, Refusal::paymentWrongTotal, Refusal::drawerTooEmpty,
          Refusal::totalWouldBeNegative}) {
        EXPECT_GT(refused[refusal], 0) << textOf(refusal).name;
    }
}

} // namespace
} // namespace virtual_printer
