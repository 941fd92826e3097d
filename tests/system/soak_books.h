// What a till says that it has sold, in cents, and how its process has fared.
#pragma once

#include "tests/system/soak_printer.h"

namespace telvofm::test {

struct SoakBooks
{
    long receipts = 0;
    long cancelled = 0;
    long closures = 0;
    long turnover = 0;
    long drawer = 0;

    // Of the process, when it is warm.
    void noteProcess();
    // What the calls came to, and the process at the end.
    void take(const SoakPrinter& printer);
    void print() const;

private:
    long calls = 0;
    long refusals = 0;
    long unknown = 0;
    long unknownDone = 0;
    long askedAgain = 0;
    long sessions = 0;
    long residentBytes = 0;
    long handles = 0;
    long residentGrowth = 0;
    long handleGrowth = 0;
};

} // namespace telvofm::test
