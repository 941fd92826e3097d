// A picture as an entry of a document: the dots go with it, so that it is printed again as it was.
#pragma once

#include "virtual_printer/fiscal/document.h"
#include "virtual_printer/fiscal/settings.h"

namespace virtual_printer {

// `number` is that of the picture kept, or 0. The line's text is an upload in the layout of columns.
Line pictureLine(int number, const Picture& picture);

} // namespace virtual_printer
