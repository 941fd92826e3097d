// Every export that sends a command, called for real: the library against the virtual printer over TCP, in
// every situation. Each call has a printer of its own, so that none sees what another has changed.
#include "tests/system/printer_process.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/printer/sample_arguments.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <ostream>

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using telvofm::test::PrinterProcess;

void sellOne()
{
    ASSERT_EQ(paragonBegin(1, 0, 1, 0, 0, 1, 0), 0);
    ASSERT_EQ(itemSale(1, 0, "Chlieb", 10, 'A', 1, 10, "ks"), 0);
    ASSERT_EQ(payment(1, 0, 1, 10, 10, 0, "Hotovost"), 0);
    ASSERT_EQ(paragonEnd(1, 0, 0), 0);
}

void beginDay()
{
    ASSERT_EQ(sellingDayBegin(1, 0), 0);
    sellOne();
}

void openReceipt()
{
    beginDay();
    ASSERT_EQ(paragonBegin(1, 0, 1, 0, 0, 1, 0), 0);
    ASSERT_EQ(itemSale(1, 0, "Chlieb", 10, 'A', 1, 10, "ks"), 0);
}

void openReceiptAndPayPart()
{
    openReceipt();
    ASSERT_EQ(payment(1, 0, 1, 10, 4, 0, "Hotovost"), 0);
}

void defiscalize()
{
    ASSERT_EQ(defiscalizationFM(1, "9999"), 0);
}

// How a till brings a printer whose day has just been closed there, and when it calls then.
struct Way
{
    const char* name;
    std::size_t column; // of the answers
    void (*go)();
    const char* moment;
};

void PrintTo(const Way& way, std::ostream* out) // for the names of the tests
{
    *out << way.name;
}

constexpr const char* sameDay = "2026-01-31 12:30";

constexpr std::array ways = {
    Way{"noDay", 0, [] {}, sameDay},
    Way{"idle", 1, beginDay, sameDay},
    Way{"open", 2, openReceipt, sameDay},
    Way{"paying", 3, openReceiptAndPayPart, sameDay},
    Way{"overdue", 4, beginDay, "2026-02-01 12:30"},
    Way{"defiscalized", 5, defiscalize, sameDay},
};

// What the call returns. An accepted upload goes on: "data" is the picture of no layout (45). The one reply
// that is returned itself is the number of receipts of the open day.
std::string resultOf(const SampleCall& sample, std::size_t column)
{
    constexpr int noPicture = 45;
    const int answer = sample.answers.at(column);
    if (sample.name == "getVariableStr") {
        return column == 0 || column == 5 ? "0" : "1"; // no day is open in two of them
    }
    return std::to_string(sample.name == "printGraphic" && answer == 0 ? noPicture : answer);
}

class EveryExportOverTcp : public testing::TestWithParam<Way>
{
protected:
    EveryExportOverTcp() { setLogginOff(); }
    ~EveryExportOverTcp() override { closeFM(); }

    // A memory for each of the calls, as a till has left it behind.
    void makeMemories()
    {
        onThePrepared("2025-12-31 12:00", [] { // an archive of that year is asked for
            ASSERT_EQ(sellingDayBegin(1, 0), 0);
            ASSERT_EQ(depositeInDrawer(1, 0, "Vklad", 0, 50, 1), 0);
            ASSERT_EQ(printReport(1, 'Z', 0), 0);
        });
        onThePrepared("2026-01-31 12:00", [] {
            beginDay();
            ASSERT_EQ(printReport(1, 'Z', 0), 0);
            GetParam().go();
        });
        for (const SampleCall& sample : sampleCalls()) {
            std::filesystem::copy_file(folder.path / "printer.db",
                                       folder.path / (std::string(sample.name) + ".db"));
        }
    }

    void onThePrepared(const std::string& moment, void (*go)())
    {
        PrinterProcess printer(
            {"--listen", "127.0.0.1:0", "--data", folder.path.string(), "--clock", moment});
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        go();
        ASSERT_EQ(printer.end(SIGTERM), 0);
        closeFM();
    }

    [[nodiscard]] std::vector<std::string> printersOfTheirOwn() const
    {
        std::vector<std::string> options = {"--data", folder.path.string(), "--clock", GetParam().moment};
        for (const SampleCall& sample : sampleCalls()) {
            options.insert(options.end(), {"--printer", std::string(sample.name) + "=127.0.0.1:0"});
        }
        return options;
    }

    OwnFolder folder;
};

TEST_P(EveryExportOverTcp, ReturnsWhatThePrinterSays)
{
    makeMemories();
    ASSERT_FALSE(HasFailure());
    const PrinterProcess printers(printersOfTheirOwn());
    std::map<std::string_view, std::string> addresses;
    for (const SampleCall& sample : sampleCalls()) {
        addresses[sample.name] = printers.address(std::string(sample.name) + ": listening on ");
    }
    telvofm::tools::CallContext context;
    for (const SampleCall& sample : sampleCalls()) {
        SCOPED_TRACE(sample.name);
        ASSERT_EQ(openFM(addresses[sample.name].c_str()), 0);
        constexpr std::size_t enough = 1 << 20;
        const auto arguments = argumentsOf(sample, enough, folder.file("reply"));
        EXPECT_EQ(telvofm::tools::findExport(sample.name)->call(arguments, context),
                  resultOf(sample, GetParam().column));
        closeFM();
    }
}

INSTANTIATE_TEST_SUITE_P(Situations, EveryExportOverTcp, testing::ValuesIn(ways),
                         [](const auto& way) { return std::string(way.param.name); });

} // namespace
} // namespace virtual_printer
