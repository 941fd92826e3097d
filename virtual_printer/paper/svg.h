// A document of the journal as a drawing that any browser and any editor of vector graphics opens.
#pragma once

#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/fiscal/settings.h"

#include <string>
#include <string_view>

namespace virtual_printer {

// Under the cut of everything that is drawn, so that nobody takes it for a receipt of a shop.
inline constexpr std::string_view noFiscalDocument = "VIRTUAL PRINTER, NO FISCAL DOCUMENT";

std::string svgOf(const Document& document, const Settings& settings, std::string_view title);

} // namespace virtual_printer
