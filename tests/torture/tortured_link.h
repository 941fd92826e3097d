// The library on a real link while one of its allocations or system calls fails, once: each call with a
// session of its own, judged by the printer's record, and a call behind it.
#pragma once

#include "tests/sweep/judge.h"
#include "tests/sweep/printer_on_link.h"
#include "tests/torture/left_behind.h"
#include "tests/torture/torment.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace telvofm::test::torture {

using sweep::Link;
using sweep::SweptCall;

struct TortureTotals
{
    std::size_t places = 0; // where something can fail
    std::size_t cases = 0;  // of which so many were tried
    std::map<std::string, std::size_t> outcomes;
    std::vector<std::string> violations;
};

// A call that is no command: what it may return, and what it returns when nothing fails.
struct FreeCall
{
    std::string name;
    bool opensItself;             // otherwise within a session
    std::function<void()> before; // undisturbed
    std::function<int()> call;
    std::set<int> results;
    int undisturbed;
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
    void torture(const FreeCall& call, Torment torment);
    [[nodiscard]] const TortureTotals& totals() const { return sums; }

private:
    // Where something can fail.
    struct Places
    {
        std::vector<TrappedCall> systemCalls;
        long allocations = 0;
    };
    struct Rehearsed
    {
        sweep::CallPlan plan;
        Places places;
    };
    struct Case
    {
        std::string what;
        std::string kind;
        TrappedCall failing;
        Torment torment;
        std::size_t index;
        bool isTriedAgain = false;
        bool hasLeftMemory = false;
    };

    Rehearsed rehearse(const SweptCall& call);
    Places rehearse(const FreeCall& call);
    std::vector<Case> casesOf(const std::string& name, const Places& places, Torment torment);
    static void tryEach(const std::vector<Case>& cases, const std::function<void(Case&)>& run);
    void run(const SweptCall& call, const Rehearsed& rehearsed, Case& one);
    void run(const FreeCall& call, Case& one);
    bool judgeCall(const SweptCall& call, const Rehearsed& rehearsed, Case& one, tools::CallContext& context);
    void open(bool withPictures);
    int resultOfTheNextCall(const Case& one, bool followsSuccess);
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
    std::optional<LeftBehind> leftBehind;
};

} // namespace telvofm::test::torture
