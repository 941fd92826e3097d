// A text argument as a caller gives it: NUL-terminated, in the application's code page. The text is copied at
// once, so that what a call logs is what it sends, even when another thread changes the caller's text while
// the call waits for its turn. Texts of the usual length are copied without an allocation.
//
// A null pointer counts as an empty text, so that a wrong call cannot bring the host program down.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace telvofm {

class Text
{
public:
    explicit Text(const char* text);
    ~Text() = default;
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    operator std::string_view() const { return view; }

private:
    static constexpr std::size_t usualLength = 64;

    std::array<char, usualLength> usual;
    std::string longer;
    std::string_view view;
};

// What the `_str` and most `_int` exports use of a text that stands for a single character: its first byte,
// and 0x00 for an empty text, which the commands send as it is.
inline char firstCharacter(const char* text)
{
    return text == nullptr ? '\0' : *text;
}

} // namespace telvofm
