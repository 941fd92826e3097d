// A prepare under an index that is taken: it changes nothing, but loads the file like any other.
#include "graphics/logos.h"

#include "tests/unit/bitmap_loader_fixture.h"
#include "tests/unit/scripted_link.h"

namespace telvofm::graphics {
namespace {

class TakenIndex : public BitmapLoaderFixture
{
protected:
    void SetUp() override
    {
        write(BitmapFile{}.bytes());
        prepare(printer, 3, name, false);
    }

    // What a prepare under the same index writes to standard output; `codeOfPreparing` is what it fails with.
    std::string outputOfPreparing(const std::string& fileName, bool inverse)
    {
        codeOfPreparing = 0;
        testing::internal::CaptureStdout();
        try {
            prepare(printer, 3, fileName, inverse);
        } catch (const Telvo06FMException& failure) {
            codeOfPreparing = failure.code;
        }
        return testing::internal::GetCapturedStdout();
    }

    Device printer{std::make_shared<test::ScriptedLink>(tcpRules, std::vector<std::string>())};
    int codeOfPreparing = 0;
};

TEST_F(TakenIndex, KeepsItsPictureAndSaysThatTheOtherIsLoaded)
{
    const std::string first = printer.rasterImages.at(3);
    EXPECT_EQ(outputOfPreparing(name, true), "Path: " + name + "\nOK\n");
    EXPECT_EQ(codeOfPreparing, 0);
    EXPECT_EQ(printer.rasterImages.at(3), first);
}

TEST_F(TakenIndex, FailsWithoutAFileAllTheSame)
{
    EXPECT_EQ(outputOfPreparing("missing.bmp", false), "Path: missing.bmp\n");
    EXPECT_EQ(codeOfPreparing, code::transportFailure);
}

TEST_F(TakenIndex, FailsWithABitmapInColoursAllTheSame)
{
    write(BitmapFile{.bitsPerPixel = 24}.bytes());
    EXPECT_EQ(outputOfPreparing(name, false), "Path: " + name + "\nOK\n");
    EXPECT_EQ(codeOfPreparing, code::bitmapNotMonochrome);
}

} // namespace
} // namespace telvofm::graphics
