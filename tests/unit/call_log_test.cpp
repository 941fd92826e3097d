// The call log as a host program meets it: its file, its switches, and the lines of several threads.
#include "telvofm.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <sstream>
#include <thread>
#include <vector>

namespace telvofm::test {
namespace {

class CallLogTest : public ::testing::Test
{
protected:
    void SetUp() override { std::filesystem::current_path(folder.path); }
    void TearDown() override
    {
        std::filesystem::current_path(before);
        setLogginOff();
    }

    static std::string linesOf(const std::filesystem::path& path)
    {
        std::string content = contentOf(path);
        std::erase(content, '\r');
        return content;
    }

    const std::filesystem::path before = std::filesystem::current_path();
    OwnFolder folder;
};

// First in this file: in a run of the whole program the library is freshly loaded here only.
TEST_F(CallLogTest, OfAFreshlyLoadedLibraryIsInTheCurrentFolder)
{
    EXPECT_EQ(printJobCancel(1), -1);
    EXPECT_EQ(linesOf("fmlog.txt"), "printJobCancel device 1\n");
}

TEST_F(CallLogTest, AppendsALineForEachCall)
{
    setLogginOn("till.txt");
    printJobCancel(257);
    repeatParagon(-1);
    EXPECT_EQ(linesOf("till.txt"), "printJobCancel device 257\nrepeatParagondevice -1\n");
    EXPECT_EQ(contentOf("fmlog.txt"), "(no file)");
}

TEST_F(CallLogTest, KeepsWhatTheFileHolds)
{
    std::ofstream("till.txt") << "yesterday\n";
    setLogginOn("till.txt");
    repeatParagon(1);
    EXPECT_EQ(linesOf("till.txt"), "yesterday\nrepeatParagondevice 1\n");
}

TEST_F(CallLogTest, SwitchedOffTouchesNoFile)
{
    setLogginOn("till.txt");
    setLogginOff();
    repeatParagon(1);
    EXPECT_EQ(contentOf("till.txt"), "(no file)");
    EXPECT_EQ(contentOf("fmlog.txt"), "(no file)");
}

TEST_F(CallLogTest, SwitchingOnDoesNotOpenTheFile)
{
    setLogginOn("till.txt");
    EXPECT_EQ(contentOf("till.txt"), "(no file)");
}

TEST_F(CallLogTest, APathThatCannotBeWrittenChangesNoResult)
{
    for (const std::string& path : {std::string(), folder.file("missing/till.txt"), folder.path.string()}) {
        setLogginOn(path.c_str());
        EXPECT_EQ(repeatParagon(1), -1) << path;
    }
    setLogginOn(nullptr);
    EXPECT_EQ(repeatParagon(1), -1);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path));
}

TEST_F(CallLogTest, AVanishedFolderLosesTheLineAndNothingElse)
{
    std::filesystem::create_directory(folder.path / "logs");
    setLogginOn("logs/till.txt");
    repeatParagon(1);
    std::filesystem::remove_all(folder.path / "logs");
    EXPECT_EQ(repeatParagon(2), -1);
    std::filesystem::create_directory(folder.path / "logs");
    EXPECT_EQ(repeatParagon(3), -1);
    EXPECT_EQ(linesOf("logs/till.txt"), "repeatParagondevice 3\n");
}

TEST_F(CallLogTest, KeepsLinesOfAnyLength)
{
    for (std::size_t length = 0; length < 600; ++length) {
        const std::string log = folder.file(std::to_string(length));
        const std::string description(length, 'x');
        setLogginOn(log.c_str());
        destroyParagon(INT_MIN, INT_MIN, description.c_str());
        std::string expected = "destroyParagondevice -2147483648, row -2147483648, description ";
        expected += description;
        expected += '\n';
        EXPECT_EQ(linesOf(log), expected);
    }
}

TEST_F(CallLogTest, KeepsTheLongestNumbersInLinesOfAnyLength)
{
    for (std::size_t length = 0; length < 300; ++length) {
        const std::string log = folder.file(std::to_string(length));
        const std::string name(length, 'x');
        setLogginOn(log.c_str());
        itemSale(INT_MIN, INT_MIN, name.c_str(), -DBL_MIN, 'A', -DBL_MIN, -DBL_MIN, "");
        std::string expected = "itemSale Device -2147483648, row -2147483648, commodityName ";
        expected += name;
        expected +=
            ", total price -2.22507e-308, vat A, amount -2.22507e-308, unit price -2.22507e-308, unit \n";
        EXPECT_EQ(linesOf(log), expected);
    }
}

TEST_F(CallLogTest, LinesOfThreadsNeverMix)
{
    constexpr int threads = 4;
    constexpr int calls = 100;
    setLogginOn("till.txt");
    const std::string description(500, 'x');
    std::vector<std::thread> running;
    running.reserve(threads);
    for (int thread = 0; thread < threads; ++thread) {
        running.emplace_back([&, thread] {
            for (int call = 0; call < calls; ++call) {
                destroyParagon(thread, call, description.c_str());
            }
        });
    }
    std::vector<std::string> expected;
    for (int thread = 0; thread < threads; ++thread) {
        running[static_cast<std::size_t>(thread)].join();
        for (int call = 0; call < calls; ++call) {
            expected.push_back("destroyParagondevice " + std::to_string(thread) + ", row " +
                               std::to_string(call) + ", description " + description);
        }
    }
    std::vector<std::string> written;
    std::istringstream lines(linesOf("till.txt"));
    for (std::string line; std::getline(lines, line);) {
        written.push_back(line);
    }
    std::sort(expected.begin(), expected.end());
    std::sort(written.begin(), written.end());
    EXPECT_EQ(written, expected);
}

} // namespace
} // namespace telvofm::test
