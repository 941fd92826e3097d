#include "virtual_printer/paper/picture.h"

namespace virtual_printer {

// Nothing here writes PNG files.
bool writePictureAsPng(const Picture& /*picture*/, const std::string& /*fileName*/)
{
    return false;
}

} // namespace virtual_printer
