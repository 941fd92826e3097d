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

void SoakBooks::print(const SoakPrinter& printer) const
{
    const long residentGrowth = residentBytesNow() - residentBytes;
    const long handleGrowth = handlesNow() - handles;
    std::printf(R"({"calls": %ld, "refused": %ld, "unknown": %ld, "unknownButDone": %ld, "askedAgain": %ld, )"
                R"("sessions": %ld, "receipts": %ld, "cancelled": %ld, "closures": %ld, "turnover": "%s", )"
                R"("drawer": "%s", "residentGrowth": %ld, "handleGrowth": %ld})"
                "\n",
                printer.calls(), printer.refusals(), printer.unknownOutcomes(), printer.unknownButDone(),
                printer.questionsAgain(), printer.sessions(), receipts, cancelled, closures,
                amountOf(turnover).c_str(), amountOf(drawer).c_str(), residentGrowth, handleGrowth);
}

} // namespace telvofm::test
