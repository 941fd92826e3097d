#include "virtual_printer/paper/picture.h"

namespace virtual_printer {

// The one library that writes them is not packaged for this platform, and they show what the paper shows too.
const bool canWritePng = false;

bool writePictureAsPng(const Picture& /*picture*/, const std::string& /*fileName*/)
{
    return false;
}

} // namespace virtual_printer
