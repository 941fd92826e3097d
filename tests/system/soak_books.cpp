#include "tests/system/soak_books.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace telvofm::test {
namespace {

long residentBytesNow()
{
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

long handlesNow()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

} // namespace

void SoakBooks::noteProcess()
{
    handles = handlesNow();
    residentBytes = residentBytesNow();
}

void SoakBooks::take(const SoakPrinter& printer)
{
    residentGrowth = residentBytesNow() - residentBytes;
    handleGrowth = handlesNow() - handles;
    calls = printer.calls();
    refusals = printer.refusals();
    unknown = printer.unknownOutcomes();
    unknownDone = printer.unknownButDone();
    askedAgain = printer.questionsAgain();
    sessions = printer.sessions();
}

void SoakBooks::print() const
{
    std::printf(R"({"calls": %ld, "refused": %ld, "unknown": %ld, "unknownButDone": %ld, "askedAgain": %ld, )"
                R"("sessions": %ld, "receipts": %ld, "cancelled": %ld, "closures": %ld, "turnover": "%s", )"
                R"("drawer": "%s", "residentGrowth": %ld, "handleGrowth": %ld})"
                "\n",
                calls, refusals, unknown, unknownDone, askedAgain, sessions, receipts, cancelled, closures,
                amountOf(turnover).c_str(), amountOf(drawer).c_str(), residentGrowth, handleGrowth);
}

} // namespace telvofm::test
