// An amount as a caller may give it: a number, or a text that goes to the printer unchanged. The plain,
// `_int` and `_str` exports differ only in how they make their amounts; commands, requests and the call log
// take either kind.
#pragma once

#include "device/number_text.h"
#include "device/text.h"

#include <utility>
#include <variant>

namespace telvofm {

class Amount
{
public:
    explicit Amount(double number) : value(number) {}
    explicit Amount(const char* text) : value(std::in_place_type<Text>, text) {}

    // As the request carries it: fixed notation with `decimals` decimals, or the caller's text.
    template <typename Write>
    void writeFixed(int decimals, Write write) const
    {
        if (const double* number = std::get_if<double>(&value)) {
            write(NumberText::fixed(*number, decimals).view());
        } else {
            write(*std::get_if<Text>(&value));
        }
    }

    // As the call log shows it: six significant digits, or the caller's text.
    template <typename Write>
    void writeGeneral(Write write) const
    {
        if (const double* number = std::get_if<double>(&value)) {
            write(NumberText::general(*number).view());
        } else {
            write(*std::get_if<Text>(&value));
        }
    }

    // The most characters that `writeGeneral` writes.
    [[nodiscard]] std::size_t mostCharacters() const
    {
        const Text* text = std::get_if<Text>(&value);
        return text == nullptr ? NumberText::mostCharacters : std::string_view(*text).size();
    }

    // Exactly zero (a negative zero counts); a text never is.
    [[nodiscard]] bool isZero() const;

private:
    std::variant<double, Text> value;
};

Amount number(double value);
Amount hundredths(int value);
Amount thousandths(int value);
Amount tenThousandths(int value);
// Copies the text; a null pointer counts as an empty one.
Amount text(const char* value);

} // namespace telvofm
