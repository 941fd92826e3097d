// A text argument as a caller gives it: NUL-terminated, in the application's code page. A null pointer counts
// as an empty text, so that a wrong call cannot bring the host program down.
#pragma once

#include <string_view>

namespace telvofm {

class Text
{
public:
    Text(const char* text) : view(text == nullptr ? "" : text) {}
    operator std::string_view() const { return view; }

    // 0x00 for an empty text: the commands send it as it is.
    [[nodiscard]] char firstCharacter() const { return view.empty() ? '\0' : view.front(); }

private:
    std::string_view view;
};

} // namespace telvofm
