// The Win32 loader with recorders in place of the system's image functions: what it asks for, in which order,
// and that it gives every bitmap back.
#include "graphics/bitmap.h"

#include "link/telvo06fm_exception.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <windows.h>

namespace telvofm::graphics {
namespace {

// What the functions answer, and the calls that were made.
struct ScriptedImages
{
    bool loads = true;
    bool describes = true;
    BITMAP description{0, 12, 2, 4, 1, 1, nullptr};
    std::vector<std::uint8_t> bits = {0x80, 0x10, 0xEE, 0xEE, 0x01, 0x20, 0xEE, 0xEE};
    std::vector<std::string> calls;

    static HBITMAP bitmap() { return reinterpret_cast<HBITMAP>(std::uintptr_t{0x1234}); }

    void note(const std::string& call, HGDIOBJ object = bitmap())
    {
        calls.push_back(object == bitmap() ? call : call + " of another object");
    }
};

ScriptedImages images;

HANDLE WINAPI loadImage(HINSTANCE module, LPCSTR name, UINT type, int width, int height, UINT flags)
{
    EXPECT_EQ(module, nullptr);
    EXPECT_EQ(type, static_cast<UINT>(IMAGE_BITMAP));
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
    EXPECT_EQ(flags, static_cast<UINT>(LR_LOADFROMFILE)); // no DIB section among them
    images.note(std::string("load ") + name);
    return images.loads ? images.bitmap() : nullptr;
}

int WINAPI getObject(HANDLE object, int size, LPVOID description)
{
    images.note("describe", object);
    EXPECT_EQ(size, static_cast<int>(sizeof(BITMAP)));
    if (!images.describes) {
        return 0;
    }
    *static_cast<BITMAP*>(description) = images.description;
    return size;
}

LONG WINAPI getBitmapBits(HBITMAP bitmap, LONG size, LPVOID bits)
{
    images.note("read " + std::to_string(size), bitmap);
    const auto count = std::min(static_cast<std::size_t>(size), images.bits.size());
    std::copy_n(images.bits.begin(), count, static_cast<std::uint8_t*>(bits));
    return static_cast<LONG>(count);
}

BOOL WINAPI deleteObject(HGDIOBJ object)
{
    images.note("delete", object);
    return TRUE;
}

} // namespace
} // namespace telvofm::graphics

// The linker takes these instead of the import libraries' pointers.
extern "C" {
extern const decltype(&LoadImageA) __imp_LoadImageA = telvofm::graphics::loadImage;
extern const decltype(&GetObjectA) __imp_GetObjectA = telvofm::graphics::getObject;
extern const decltype(&GetBitmapBits) __imp_GetBitmapBits = telvofm::graphics::getBitmapBits;
extern const decltype(&DeleteObject) __imp_DeleteObject = telvofm::graphics::deleteObject;
}

namespace telvofm::graphics {
namespace {

using Calls = std::vector<std::string>;

class BitmapLoaderCalls : public testing::Test
{
protected:
    void SetUp() override { images = {}; }

    static int codeOfLoading()
    {
        try {
            loadMonochrome("logo.bmp");
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0;
    }
};

TEST_F(BitmapLoaderCalls, AMonochromeBitmapIsReadByItsOwnBytesPerRowAndGivenBack)
{
    const Bitmap bitmap = loadMonochrome("logo.bmp");
    EXPECT_EQ(images.calls, (Calls{"load logo.bmp", "describe", "read 8", "delete"}));
    EXPECT_EQ(bitmap.width, 12U);
    EXPECT_EQ(bitmap.height, 2U);
    const std::vector<std::uint8_t> pixels = {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1,  // 80 1.
                                              0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0}; // 01 2.
    EXPECT_EQ(bitmap.pixels, pixels);
}

TEST_F(BitmapLoaderCalls, ABitmapInColoursIsGivenBackUnread)
{
    images.description.bmBitsPixel = 32;
    EXPECT_EQ(codeOfLoading(), code::bitmapNotMonochrome);
    EXPECT_EQ(images.calls, (Calls{"load logo.bmp", "describe", "delete"}));
}

TEST_F(BitmapLoaderCalls, ABitmapThatCannotBeDescribedIsGivenBackToo)
{
    images.describes = false;
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
    EXPECT_EQ(images.calls, (Calls{"load logo.bmp", "describe", "delete"}));
}

TEST_F(BitmapLoaderCalls, ABitmapWithoutAllItsBitsFailsInsteadOfPrintingBlack)
{
    images.bits.pop_back();
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
    EXPECT_EQ(images.calls, (Calls{"load logo.bmp", "describe", "read 8", "delete"}));
}

TEST_F(BitmapLoaderCalls, NothingIsGivenBackWhereNothingWasLoaded)
{
    images.loads = false;
    EXPECT_EQ(codeOfLoading(), code::transportFailure);
    EXPECT_EQ(images.calls, (Calls{"load logo.bmp"}));
}

} // namespace
} // namespace telvofm::graphics
