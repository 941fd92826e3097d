// The library on a real link while one of its allocations or system calls fails, once: each call with a
// session of its own, judged by the printer's record, and a call behind it.
#pragma once

#include "tests/sweep/judge.h"
#include "tests/sweep/printer_on_link.h"
#include "tests/system/host_state.h"
#include "tests/torture/free_calls.h"
#include "tests/torture/left_behind.h"
#include "tests/torture/places.h"
#include "tests/torture/torment.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace telvofm::test::torture {

using sweep::Link;
using sweep::SweptCall;

struct TortureTotals
{
    std::size_t places = 0;            // where something can fail
    std::size_t cases = 0;             // of which so many were tried
    std::size_t callsWithoutPlace = 0; // in which nothing can
    std::size_t failedOutputs = 0;     // lines that standard output has refused
    std::map<std::string, std::size_t> outcomes;
    std::map<std::string, std::size_t> verdicts;
    std::vector<std::string> violations;
};

class TorturedLink
{
public:
    // `portName` as the open exports take it; the other end is the printer's. One of so many cases is tried.
    TorturedLink(Link kindOfLink, std::string portName, sweep::PrinterOnLink& printerOfLink,
                 std::string folder, std::size_t oneOfSoMany);

    [[nodiscard]] const std::vector<SweptCall>& calls() const { return all; }
    // Each place in turn, with both logs on or off.
    void torture(const SweptCall& call, Torment torment, bool withLogs);
    void torture(const FreeCall& call, Torment torment, bool withLogs);
    [[nodiscard]] const TortureTotals& totals() const { return sums; }

private:
    struct Rehearsed
    {
        sweep::CallPlan plan;
        Places places;
        bool isFirst; // of its session, which has made no room for a request yet
    };
    struct Case
    {
        std::string what;
        Torment torment;
        std::size_t index;
        const Places* places;
        std::string outcome;
        std::string verdict;
        std::string nextCall;
        bool isTriedAgain = false;
        bool hasLeftMemory = false;
    };

    Rehearsed rehearse(const SweptCall& call, bool isFirst);
    Places rehearse(const FreeCall& call);
    void tryEach(const std::string& name, const Places& places, Torment torment,
                 const std::function<void(Case&)>& run);
    void run(const SweptCall& call, const Rehearsed& rehearsed, Case& one);
    void run(const FreeCall& call, Case& one);
    bool judgeCall(const SweptCall& call, const Rehearsed& rehearsed, Case& one, tools::CallContext& context);
    void judgeFreeCall(const FreeCall& call, Case& one);
    std::size_t timesHeard(const FreeCall& call, std::size_t wanted);
    void judgeHost(const Case& one, const Tormenting& tormenting);
    void open(bool withPictures);
    void switchLogs(bool on) const;
    void judgeTheNextCall(Case& one, bool followsSuccess);
    // The printer forgets what it has heard.
    void renewPrinter();
    void expectNothingLeft(Case& one, long piecesBefore);
    void report(const Case& one, const std::string& why);

    Link link;
    std::string port;
    sweep::PrinterOnLink& printer;
    std::string own;
    std::size_t every;
    std::vector<SweptCall> all;
    SweptCall next;
    sweep::CallPlan planOfNext;
    TortureTotals sums;
    bool logsAreOn = false;
    long piecesOfReports = 0; // of memory, of the running case
    std::optional<LeftBehind> leftBehind;
    std::optional<HostState> host;
};

} // namespace telvofm::test::torture
