// The sweep on a real link: each case a session, the call with its fault and a call behind it, judged by all
// that can be known at the printer's end. The till's end of the wire cannot be seen here; the sweep in memory
// does that.
#pragma once

#include "tests/sweep/session_judge.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace telvofm::test::sweep {

class LinkSweep
{
public:
    // `portToOpen` gives the port's name, and brings back one that a fault has closed.
    LinkSweep(Link link, std::function<std::string()> portToOpen, PrinterOnLink& printer, std::string folder);

    [[nodiscard]] std::size_t size() const;
    void run(std::size_t number);

    [[nodiscard]] std::size_t cases() const { return done; }
    [[nodiscard]] const std::map<std::string, std::size_t>& verdicts() const { return counts; }
    [[nodiscard]] const std::vector<std::string>& violations() const { return wrong; }

private:
    // A call with its plan and its faults.
    struct Swept
    {
        SweptCall call;
        CallPlan plan;
        Extent extent;
        std::vector<Fault> faults;
    };

    [[nodiscard]] SimulatedPrinter freshPrinter() const;
    Swept rehearsed(const SweptCall& call);
    // Nothing when the machine was so busy that the till asked again, or the printer gave a request up.
    std::optional<Swept> rehearsedUndisturbed(const SweptCall& call);
    void open(const SweptCall& call, const Fault& fault);
    LinkCall performed(const SweptCall& call, const CallPlan& plan);
    void add(const std::string& whichCase, int call, const Judgement& judgement);

    Link link;
    std::function<std::string()> port;
    PrinterOnLink& printer;
    std::string own;
    std::vector<Swept> all;
    Swept behind;
    std::size_t done = 0;
    std::map<std::string, std::size_t> counts;
    std::vector<std::string> wrong;
};

} // namespace telvofm::test::sweep
