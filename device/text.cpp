#include "device/text.h"

#include <algorithm>

namespace telvofm {

Text::Text(const char* text)
{
    const std::string_view callers(text == nullptr ? "" : text);
    if (callers.size() <= usualLength) {
        std::copy(callers.begin(), callers.end(), usual.begin());
        view = {usual.data(), callers.size()};
    } else {
        longer = callers;
        view = longer;
    }
}

} // namespace telvofm
