// A loader that loads, but cannot describe what it loaded: bit depth 0.
#include "graphics/bitmap.h"
#include "link/telvo06fm_exception.h"

#include <gtest/gtest.h>

namespace telvofm::graphics {

// In place of the platform's loader.
std::optional<PackedBitmap> loadBitmapFile(const std::string& /*fileName*/)
{
    return PackedBitmap{};
}

namespace {

TEST(BitmapDescription, ThatCannotBeReadIsAFailureAfterTheLoading)
{
    int code = 0;
    testing::internal::CaptureStdout();
    try {
        loadMonochrome("any.bmp");
    } catch (const Telvo06FMException& failure) {
        code = failure.code;
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Path: any.bmp\nOK\n");
    EXPECT_EQ(code, -10201);
}

} // namespace
} // namespace telvofm::graphics
