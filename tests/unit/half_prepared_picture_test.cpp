// A picture is prepared whole or not at all, wherever memory ends on the way.
#include "graphics/logos.h"

#include "tests/unit/bitmap_file.h"
#include "tests/unit/limited_memory.h"
#include "tests/unit/own_folder.h"
#include "tests/unit/scripted_link.h"

#include <new>

namespace telvofm::graphics {
namespace {

struct Tables
{
    std::map<int, std::string> raster;
    std::map<int, std::string> bands;
    std::map<int, std::string> columns;
    std::map<int, std::string> secondColumns;

    bool operator==(const Tables&) const = default;
};

Tables tablesOf(const Device& printer)
{
    return {printer.rasterImages, printer.bandImages, printer.columnImages, printer.secondColumnImages};
}

class HalfPreparedPicture : public testing::Test
{
protected:
    void SetUp() override
    {
        const auto bytes = BitmapFile{}.bytes();
        std::ofstream file(name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    // Prepares with one allocation more each time, until it succeeds; how often memory ended before.
    int endMemoryEverywhere(int imageIndex)
    {
        for (int allocations = 0;; ++allocations) {
            const Tables before = tablesOf(printer);
            try {
                test::withAllocations(allocations, [&] { prepare(printer, imageIndex, name, false); });
                return allocations;
            } catch (const std::exception&) {
                EXPECT_TRUE(tablesOf(printer) == before) << "after " << allocations << " allocations";
            }
        }
    }

    test::OwnFolder folder;
    std::string name = folder.file("logo.bmp");
    Device printer{std::make_shared<test::ScriptedLink>(tcpRules, std::vector<std::string>())};
};

TEST_F(HalfPreparedPicture, IsInNoTable)
{
    printer.bandImages[3] = "another picture";
    constexpr int tables = 4; // each takes an allocation at least
    EXPECT_GT(endMemoryEverywhere(1), tables);
    EXPECT_EQ(printer.rasterImages.count(1), 1U);
    EXPECT_EQ(printer.bandImages.count(1), 1U);
    EXPECT_EQ(printer.columnImages.count(1), 1U);
    EXPECT_EQ(printer.secondColumnImages.count(1), 1U);
    EXPECT_EQ(printer.columnImages[1], printer.secondColumnImages[1]);
    EXPECT_EQ(printer.bandImages[3], "another picture");
}

TEST_F(HalfPreparedPicture, ChangesNoTableThatHasTheIndexAlready)
{
    printer.secondColumnImages[9] = "";
    printer.bandImages[9] = "first";
    endMemoryEverywhere(9);
    EXPECT_EQ(printer.secondColumnImages[9], "");
    EXPECT_EQ(printer.bandImages[9], "first");
    EXPECT_GT(printer.rasterImages[9].size(), 4U);
    EXPECT_GT(printer.columnImages[9].size(), 4U);
}

} // namespace
} // namespace telvofm::graphics
