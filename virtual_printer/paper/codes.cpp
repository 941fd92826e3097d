#include "virtual_printer/paper/codes.h"

#include <array>
#include <memory>
#include <zint.h>

namespace virtual_printer {
namespace {

using Symbol = std::unique_ptr<zint_symbol, decltype(&::ZBarcode_Delete)>;

// A kind of bar code, and the lengths of its texts; the second symbology has the check digit in its text.
struct BarCodeKind
{
    int symbology;
    int withCheckDigit;
    std::array<std::size_t, 2> lengths; // without the check digit; 0: any
    std::array<std::size_t, 2> checkedLengths;
};

constexpr std::array barCodeKinds = {
    BarCodeKind{BARCODE_EANX, BARCODE_EANX_CHK, {7, 12}, {8, 13}},
    BarCodeKind{BARCODE_UPCA, BARCODE_UPCA_CHK, {11, 11}, {12, 12}},
    BarCodeKind{BARCODE_CODE39, 0, {0, 0}, {0, 0}},
    BarCodeKind{BARCODE_CODE128, 0, {0, 0}, {0, 0}},
    BarCodeKind{BARCODE_C25INTER, 0, {0, 0}, {0, 0}},
    BarCodeKind{BARCODE_CODABAR, 0, {0, 0}, {0, 0}},
    BarCodeKind{BARCODE_CODE93, 0, {0, 0}, {0, 0}},
};

bool contains(const std::array<std::size_t, 2>& lengths, std::size_t length)
{
    return lengths[0] == length || lengths[1] == length;
}

// 0 when the kind takes no text of this length.
int symbologyFor(const BarCodeKind& kind, std::size_t length)
{
    constexpr std::size_t longest = 80;
    if (kind.lengths[0] == 0) {
        return length <= longest ? kind.symbology : 0;
    }
    if (contains(kind.checkedLengths, length)) {
        return kind.withCheckDigit;
    }
    return contains(kind.lengths, length) ? kind.symbology : 0;
}

bool encode(zint_symbol& symbol, std::string_view text)
{
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    return !text.empty() && ::ZBarcode_Encode(&symbol, bytes, static_cast<int>(text.size())) < ZINT_ERROR;
}

bool isDark(const zint_symbol& symbol, int row, int column)
{
    constexpr int bits = 8;
    return (static_cast<unsigned>(symbol.encoded_data[row][column / bits]) >>
                static_cast<unsigned>(column % bits) &
            1U) != 0;
}

// Each module `width` by `height` dots, with a margin of light modules around.
Picture drawn(const zint_symbol& symbol, int width, int height, int margin)
{
    Picture picture;
    picture.width = (symbol.width + 2 * margin) * width;
    picture.height = (symbol.rows + (symbol.rows > 1 ? 2 * margin : 0)) * height;
    const int top = symbol.rows > 1 ? margin : 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int row = y / height - top;
            const int column = x / width - margin;
            const bool isInside = row >= 0 && row < symbol.rows && column >= 0 && column < symbol.width;
            picture.dots.push_back(isInside && isDark(symbol, row, column));
        }
    }
    return picture;
}

} // namespace

std::optional<Picture> drawBarCode(int kind, std::string_view text, const CodeForm& form)
{
    constexpr int margin = 10;
    if (kind < 0 || static_cast<std::size_t>(kind) >= barCodeKinds.size()) {
        return std::nullopt;
    }
    const Symbol symbol(::ZBarcode_Create(), &::ZBarcode_Delete);
    symbol->symbology = symbologyFor(barCodeKinds[static_cast<std::size_t>(kind)], text.size());
    if (symbol->symbology == 0 || !encode(*symbol, text)) {
        return std::nullopt;
    }
    return drawn(*symbol, form.width, form.height, margin);
}

std::optional<Picture> drawQrCode(std::string_view text, const QrForm& form)
{
    constexpr int margin = 4;
    const Symbol symbol(::ZBarcode_Create(), &::ZBarcode_Delete);
    symbol->symbology = BARCODE_QRCODE;
    symbol->input_mode = UNICODE_MODE;
    symbol->option_1 = form.errorCorrectionLevel + 1; // 1 to 4: L, M, Q, H
    symbol->eci = 26;                                 // the text is UTF-8
    if (!encode(*symbol, text)) {
        return std::nullopt;
    }
    return drawn(*symbol, form.moduleWidth, form.moduleWidth, margin);
}

} // namespace virtual_printer
