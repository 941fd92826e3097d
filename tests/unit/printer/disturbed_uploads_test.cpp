// Faults that hit the blocks of an upload, on both kinds of link, and blocks that come again.
#include "tests/unit/printer/tried_printer.h"

#include <gmock/gmock.h>

namespace virtual_printer {
namespace {

using namespace std::string_literals;

// 240 dots across, four bands of eight, all black: 964 bytes, of which the second and the third 256 are the
// same.
const std::string blackPicture = "\xF0\0\x04\0"s + std::string(960, '\xFF');

std::vector<std::string> blocksOf(const std::string& data)
{
    constexpr std::size_t largest = 256;
    std::vector<std::string> blocks;
    for (std::size_t place = 0; place < data.size(); place += largest) {
        blocks.push_back(telvofm::test::blockOf(data.substr(place, largest),
                                                place + largest < data.size() ? '\x17' : '\x03'));
    }
    return blocks;
}

class DisturbedUpload : public testing::TestWithParam<CodePage>
{
protected:
    DisturbedUpload()
    {
        TriedPrinter fresh(GetParam());
        fresh.heard(announced);
        for (const std::string& block : blocks) {
            EXPECT_EQ(fresh.heard(block), accepted);
        }
        whole = fresh.station.printer.state().pictures;
        paper = fresh.takePaper();
    }

    // Sends each until it is accepted, as the link does; says how many times it sent.
    int upload()
    {
        int sent = 0;
        EXPECT_EQ(tried.heard(announced), accepted);
        for (const std::string& block : blocks) {
            std::string answer;
            for (int attempt = 0; attempt < 3 && answer != accepted; ++attempt, ++sent) {
                answer = bytesOf(tried.send(block, std::chrono::seconds(3)));
            }
            EXPECT_EQ(answer, accepted);
        }
        return sent;
    }

    const std::string announced = request(0xD2, {"1", "0"}); // loadGHMMC1
    const std::vector<std::string> blocks = blocksOf(blackPicture);
    std::shared_ptr<const Pictures> whole;
    std::vector<std::string> paper;
    TriedPrinter tried{GetParam()};
};

TEST_P(DisturbedUpload, KeepsThePictureOnceWhicheverAcknowledgeIsLost)
{
    for (const char* from : {"2", "3", "4", "5"}) { // the first request announces it
        SCOPED_TRACE(from);
        tried.arm(R"({"kind":"acknowledgeLost","command":"loadGHMMC1","fromRequest":)" + std::string(from) +
                  "}");
        EXPECT_EQ(upload(), 5);
        EXPECT_EQ(*tried.station.printer.state().pictures, *whole);
        EXPECT_EQ(tried.takePaper(), paper);
    }
    const Exchanged& again = tried.last();
    EXPECT_EQ(again.repeatOf, again.number - 1);
    EXPECT_TRUE(!again.isExecuted && again.isAcknowledged);
    EXPECT_TRUE(tried.station.trace.find(again.repeatOf)->isExecuted);
}

TEST_P(DisturbedUpload, TakesABlockAgainThatWasRefusedOrLost)
{
    for (const char* fault : {R"({"kind":"refuse","code":49,"command":"block","fromCall":2})",
                              R"({"kind":"requestLost","command":"D2","fromRequest":4})",
                              R"({"kind":"diskFull","command":"block","fromCall":4})",
                              R"({"kind":"cut","byte":0,"command":"loadGHMMC1","fromRequest":3})"}) {
        SCOPED_TRACE(fault);
        tried.arm(fault);
        EXPECT_EQ(upload(), 5);
        EXPECT_EQ(*tried.station.printer.state().pictures, *whole);
        EXPECT_EQ(tried.station.faults.list().back().requestsHit, 1);
        tried.takePaper();
    }
}

TEST_P(DisturbedUpload, IsOneCallWithAllItsBlocks)
{
    tried.arm(R"({"kind":"extraBytes","bytes":"AA","command":"loadGHMMC1","calls":1})");
    EXPECT_EQ(tried.heard(announced), "\x06\xAA");
    for (const std::string& block : blocks) {
        EXPECT_EQ(tried.heard(block), "\x06\xAA");
    }
    EXPECT_EQ(tried.heard(announced), accepted);
    EXPECT_EQ(tried.station.faults.list().front().callsHit, 1);
    EXPECT_EQ(tried.station.faults.list().front().requestsHit, 5);
}

TEST_P(DisturbedUpload, LosesWhatIsAcceptedAndNotCarriedOut)
{
    tried.arm(R"({"kind":"acknowledgedNotExecuted","command":"block","fromCall":2})");
    tried.heard(announced);
    for (std::size_t index = 0; index + 1 < blocks.size(); ++index) {
        EXPECT_EQ(tried.heard(blocks[index]), accepted);
    }
    EXPECT_EQ(tried.heard(blocks.back()), refused(Refusal::badPicture)); // 256 bytes are missing
}

// The answer was lost on its way, of which the printer knows nothing.
TEST_P(DisturbedUpload, AcceptsTheLastBlockAgainUntilTheNextRequest)
{
    upload();
    tried.takePaper();
    EXPECT_EQ(tried.heard(blocks.back()), accepted);
    EXPECT_EQ(tried.last().repeatOf, tried.last().number - 1);
    EXPECT_FALSE(tried.last().isExecuted);
    EXPECT_TRUE(tried.takePaper().empty());
    EXPECT_EQ(tried.heard(blocks.front()), "");
    EXPECT_EQ(tried.heard(blocks.back().substr(0, 9) + request(0xE0)), accepted);
    EXPECT_EQ(tried.heard(blocks.back()), "");
}

INSTANTIATE_TEST_SUITE_P(OnBothLinks, DisturbedUpload,
                         testing::Values(CodePage::windows1250, CodePage::cp852),
                         [](const testing::TestParamInfo<CodePage>& link) {
                             return link.param == CodePage::cp852 ? "Serial" : "Tcp";
                         });

} // namespace
} // namespace virtual_printer
