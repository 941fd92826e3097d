#include "device/floating_point.h"
#include "graphics/bitmap.h"

#include <memory>
#include <type_traits>
#include <windows.h>

namespace telvofm::graphics {
namespace {

struct DeleteBitmap
{
    void operator()(HBITMAP bitmap) const { ::DeleteObject(bitmap); }
};
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;

} // namespace

std::optional<PackedBitmap> loadBitmapFile(const std::string& fileName)
{
    const DefaultFloatingPoint whileTheSystemComputes; // with doubles, whatever the host has unmasked
    const BitmapHandle handle(
        static_cast<HBITMAP>(::LoadImageA(nullptr, fileName.c_str(), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE)));
    if (!handle) {
        return std::nullopt;
    }
    PackedBitmap packed;
    BITMAP description{};
    if (::GetObjectA(handle.get(), sizeof description, &description) == 0) {
        return packed;
    }
    packed.width = static_cast<std::size_t>(description.bmWidth);
    packed.height = static_cast<std::size_t>(description.bmHeight);
    packed.stride = static_cast<std::size_t>(description.bmWidthBytes);
    packed.bitsPerPixel = description.bmBitsPixel;
    if (packed.bitsPerPixel == 1) {
        packed.bits.resize(packed.stride * packed.height);
        const auto size = static_cast<LONG>(packed.bits.size());
        if (::GetBitmapBits(handle.get(), size, packed.bits.data()) != size) {
            packed.bitsPerPixel = 0; // what is missing would print black
        }
    }
    return packed;
}

} // namespace telvofm::graphics
