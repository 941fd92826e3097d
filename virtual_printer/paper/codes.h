// Bar codes and QR codes as dots, and whether a text can be one.
#pragma once

#include "virtual_printer/fiscal/settings.h"

#include <optional>
#include <string_view>

namespace virtual_printer {

// `kind` as docs/virtual-printer.md numbers the bar codes. Nothing when the text cannot be such a code: a
// wrong length, character or check digit.
std::optional<Picture> drawBarCode(int kind, std::string_view text, const CodeForm& form);
// Nothing when the text is too long for the form.
std::optional<Picture> drawQrCode(std::string_view text, const QrForm& form);

} // namespace virtual_printer
