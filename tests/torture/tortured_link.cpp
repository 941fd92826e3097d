#include "tests/torture/tortured_link.h"

#include "tests/torture/time_limit.h"
#include "tests/torture/verdict.h"
#include "tests/unit/limited_memory.h"

#include <cfenv>
#include <cstdio>
#include <stdexcept>

namespace telvofm::test::torture {
namespace {

constexpr int acceptingAddress = 3;

} // namespace

TorturedLink::TorturedLink(Link kindOfLink, std::string portName, sweep::PrinterOnLink& printerOfLink,
                           std::string folder, std::size_t oneOfSoMany)
    : link(kindOfLink), port(std::move(portName)), printer(printerOfLink), own(std::move(folder)),
      every(oneOfSoMany), all(sweep::everyCall(own + "/reply")),
      next(sweep::callOf("sellingDayBegin", own + "/reply_behind", acceptingAddress))
{
    TimeLimit::install();
    std::puts("The stream has been used."); // before that it has no buffer
    std::fflush(stdout);
    std::feclearexcept(FE_ALL_EXCEPT);
    host.emplace();
    sweep::writePicture(own + "/picture.bmp");
    switchLogs(true); // one export writes its failures also while the log is off
    switchLogs(false);
    planOfNext = rehearse(next, false).plan;
    leftBehind.emplace();
}

void TorturedLink::report(const Case& one, const std::string& why)
{
    // What the list takes is nobody's leak.
    piecesOfReports += printer.whileStill([&] {
        const long before = piecesHeld();
        sums.violations.push_back(one.what + ": " + why);
        return piecesHeld() - before;
    });
}

void TorturedLink::renewPrinter()
{
    sweep::SimulatedPrinter habit;
    habit.setProbes(link == Link::tcp ? sweep::SimulatedPrinter::Probes::whenIdle
                                      : sweep::SimulatedPrinter::Probes::unknown);
    printer.begin({}, habit);
}

void TorturedLink::switchLogs(bool on) const
{
    if (on) {
        setLogginOn((own + "/calls.log").c_str());
        setRawLogginOn((own + "/raw.log").c_str());
    } else {
        setLogginOff();
        seRawLogginOff();
    }
}

void TorturedLink::open(bool withPictures)
{
    if (openFM(port.c_str()) != 0) {
        throw std::runtime_error("the link does not open");
    }
    if (withPictures) {
        sweep::preparePictures(own + "/picture.bmp");
    }
}

// What the library leaves it leaves each time; a buffer of the printer grows once.
void TorturedLink::tryEach(const std::string& name, const Places& places, Torment torment,
                           const std::function<void(Case&)>& run)
{
    bool canFail = false;
    for (std::size_t index = 0; index < places.count(torment); ++index) {
        canFail = canFail || places.canFail(torment, index);
        if (!places.canFail(torment, index) || sums.places++ % every != 0) {
            continue;
        }
        const std::string place = places.nameOfPlace(torment, index);
        const std::string called =
            std::string(name).append(", ").append(place).append(" ").append(std::to_string(index));
        const Case one{called, torment, index, &places, {}, {}, {}};
        Case tried = one;
        piecesOfReports = 0;
        run(tried);
        if (tried.hasLeftMemory) {
            tried = one;
            tried.isTriedAgain = true;
            piecesOfReports = 0;
            run(tried);
        }
        ++sums.cases;
        ++sums.verdicts[tried.verdict];
        ++sums.outcomes[std::string(place)
                            .append(torment == Torment::interrupted ? " interrupted: " : " failed: ")
                            .append(tried.outcome)];
        if (!tried.nextCall.empty()) {
            ++sums.outcomes["the next call: " + tried.nextCall];
        }
    }
    sums.callsWithoutPlace += canFail ? 0 : 1;
}

void TorturedLink::judgeHost(const Case& one, const Tormenting& tormenting)
{
    if (!tormenting.hasStruck()) {
        report(one, "nothing failed");
    }
    std::feclearexcept(FE_ALL_EXCEPT); // judged below, as the table's own numbers raise some
    std::string changed = HostState().differenceFrom(*host);
    if (changed == "streams of C" && one.places->isOfStandardOutput(one.torment, one.index)) {
        ++sums.failedOutputs; // the stream notes it, as it does for a line of the host's
        std::clearerr(stdout);
        changed = HostState().differenceFrom(*host);
    }
    if (!changed.empty()) {
        report(one, "the host finds this changed: " + changed);
    }
    if ((tormenting.floatingPointFlags & ~one.places->floatingPointFlags) != 0) {
        report(one, "it has noted floating-point exceptions");
    }
}

void TorturedLink::judgeTheNextCall(Case& one, bool followsSuccess)
{
    const TimeLimit limit(one.what + ": the next call");
    tools::CallContext context;
    printer.beginCall();
    const auto outcome = sweep::perform(next, context);
    if (!followsSuccess) {
        printer.settle(); // it may have been served with an answer of before
    }
    const auto atPrinter = printer.endCall();
    const Verdict verdict = verdictOf({next, planOfNext, outcome, link, atPrinter});
    one.nextCall = verdict.name + ", " + std::to_string(outcome.result);
    if (!verdict.violation.empty()) {
        report(one, "the next call: " + verdict.violation);
    }
}

void TorturedLink::expectNothingLeft(Case& one, long piecesBefore)
{
    const LeftBehind::Found found =
        leftBehind->look(piecesBefore + piecesOfReports, [this] { renewPrinter(); });
    if (found.isMemory && !one.isTriedAgain) {
        one.hasLeftMemory = true;
        return;
    }
    for (const std::string& left : found.left) {
        report(one, left);
    }
}

} // namespace telvofm::test::torture
