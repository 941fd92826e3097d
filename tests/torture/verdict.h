// What a call has come to while one thing failed: a verdict by name, and why when it is none of those that
// may be.
#pragma once

#include "tests/sweep/judge.h"
#include "tests/sweep/printer_on_link.h"

#include <string>

namespace telvofm::test::torture {

// What is known of such a call once it has ended.
struct TorturedRecord
{
    const sweep::SweptCall& call;
    const sweep::CallPlan& plan;
    const sweep::Outcome& outcome;
    sweep::Link link;
    const sweep::CallAtPrinter& atPrinter;
    bool lacksMemory = false; // what failed has asked for memory
    bool mustSucceed = false; // it has to go as if nothing had failed
};

struct Verdict
{
    std::string name;
    std::string violation; // why it is one
};

Verdict verdictOf(const TorturedRecord& record);

} // namespace telvofm::test::torture
