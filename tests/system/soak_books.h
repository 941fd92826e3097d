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
    // With what the calls came to, and how the process has grown since.
    void print(const SoakPrinter& printer) const;

private:
    long residentBytes = 0;
    long handles = 0;
};

} // namespace telvofm::test
