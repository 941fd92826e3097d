// Builds one request of the printer's language: 0x1C, the device address, the command code, fields that each
// end with 0x00, and 0x04. The request is complete at every moment; each field goes in before the closing
// 0x04.
//
//     printer.send(printer.request(address, Command::destroyParagon).number(row).text(description));
//
// Nothing is checked or escaped: the printer judges what it gets.
#pragma once

#include "device/amount.h"
#include "device/command.h"

#include <string>
#include <string_view>

namespace telvofm {

class CharacterMap;

class Request
{
public:
    // Builds in `target`, which must outlive the request. Without a map texts go out as they are.
    Request(std::string& target, int address, Command command, const CharacterMap* map);

    // Decimal text.
    Request& number(int value);
    // Six significant digits at most, no fixed number of decimals: 16.6667, 20.
    Request& general(double value);
    // Fixed notation with `decimals` decimals, or the caller's text.
    Request& amount(const Amount& value, int decimals);
    // As `amount`, but exactly zero is the single character "0".
    Request& amountOrZero(const Amount& value, int decimals);
    // As `amountOrZero`, with a character in front in every case.
    Request& markedAmountOrZero(char mark, const Amount& value, int decimals);
    // One byte as it stands, also 0x00.
    Request& character(char value);
    // Through the code-page conversion when it is on.
    Request& text(std::string_view value);
    // As `text`, but a text shorter than `width` bytes gets blanks up to it; a longer one stays whole.
    Request& paddedText(std::string_view value, std::size_t width);
    // As `text`, but exactly `width` bytes: filled with blanks or cut.
    Request& fixedText(std::string_view value, std::size_t width);
    // Byte for byte, never converted.
    Request& raw(std::string_view value);
    // A field with nothing in it.
    Request& empty();

    [[nodiscard]] std::string_view bytes() const { return storage; }

private:
    void reopen();
    Request& endField();
    void appendConverted(std::string_view value);

    std::string& storage;
    const CharacterMap* conversion;
};

} // namespace telvofm
