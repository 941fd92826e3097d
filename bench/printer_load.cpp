// What the virtual printer carries: fifty printers in one process, each with a till that sells receipts of
// eight commands, with memories on disk.
//
//     printer_load PRINTER-PROGRAM FOLDER      once a receipt a second, once as fast as it goes
//
// It prints the share of a core that the process takes, commands that were accepted and synchronised receipts
// a second, and apart from them the exchanges that were not accepted; then, with new printers, the same
// beside a test that asks the control interface one thing after the other, and how long these calls take;
// then what the same tills sell at printers that only answer.
#include "bench/answering_printers.h"
#include "bench/control_calls.h"
#include "bench/load_tills.h"
#include "bench/printer_process.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace {

constexpr int printers = 50;
constexpr std::chrono::seconds measured{10};

void printSold(const char* title, const bench::Totals& totals, double seconds)
{
    std::printf("%-22s %9.0f commands/s %7.0f receipts/s", title,
                static_cast<double>(totals.commands) / seconds,
                static_cast<double>(totals.receipts) / seconds);
}

void sellAt(const bench::PrinterProcess& process, const char* title,
            std::chrono::milliseconds betweenReceipts, bool isControlled)
{
    bench::LoadTills tills(process.addresses, betweenReceipts);
    const double processorBefore = process.processorTime();
    std::optional<bench::ControlCalls> control;
    if (isControlled) {
        control.emplace(process.control);
    }
    const double seconds = tills.sellFor(measured);
    const double processor = process.processorTime() - processorBefore;
    printSold(title, tills.totals, seconds);
    std::printf(" %6.1f %% of a core %6.1f MB, %ld not accepted\n", 100 * processor / seconds,
                process.residentMegabytes(), tills.totals.notAccepted);
    if (control) {
        control->print();
    }
    tills.endReceipts();
}

void sellAtPrintersThatOnlyAnswer()
{
    const bench::AnsweringPrinters answering(printers);
    bench::LoadTills tills(answering.addresses, std::chrono::milliseconds(0));
    const double seconds = tills.sellFor(measured);
    printSold("only answered", tills.totals, seconds);
    std::printf("\n");
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("printer_load: usage: printer_load PRINTER-PROGRAM FOLDER\n", stderr);
        return 2;
    }
    try {
        std::vector<std::string> names;
        names.reserve(printers);
        for (int number = 0; number < printers; ++number) {
            names.push_back("p" + std::to_string(number));
        }
        for (const bool isControlled : {false, true}) {
            const std::filesystem::path folder =
                std::filesystem::path(arguments[2]) / (isControlled ? "controlled" : "alone");
            std::filesystem::create_directories(folder);
            const bench::PrinterProcess process(arguments[1], folder, names);
            sellAt(process, "50 x 1 receipt/s", std::chrono::seconds(1), isControlled);
            sellAt(process, "as fast as it goes", std::chrono::milliseconds(0), isControlled);
        }
        sellAtPrintersThatOnlyAnswer();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "printer_load: %s\n", failure.what());
        return 1;
    }
    return 0;
}
