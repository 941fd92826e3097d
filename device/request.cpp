#include "device/request.h"

#include "device/character_map.h"

#include <algorithm>
#include <array>

namespace telvofm {
namespace {

constexpr char requestStart = 0x1C;
constexpr char fieldEnd = 0x00;
constexpr char requestEnd = 0x04;
constexpr std::array<char, 2> endOfLastField = {fieldEnd, requestEnd};

} // namespace

Request::Request(std::string& target, int address, Command command, const CharacterMap* map)
    : storage(target), conversion(map)
{
    const std::array start = {requestStart, static_cast<char>(address & 0xFF), static_cast<char>(command),
                              requestEnd};
    storage.assign(start.data(), start.size());
}

Request& Request::number(int value)
{
    return raw(NumberText::whole(value).view());
}

Request& Request::general(double value)
{
    return raw(NumberText::general(value).view());
}

Request& Request::amount(const Amount& value, int decimals)
{
    value.writeFixed(decimals, [this](std::string_view digits) { raw(digits); });
    return *this;
}

Request& Request::amountOrZero(const Amount& value, int decimals)
{
    return value.isZero() ? raw("0") : amount(value, decimals);
}

Request& Request::markedAmountOrZero(char mark, const Amount& value, int decimals)
{
    const std::size_t fieldStart = storage.size() - 1;
    amountOrZero(value, decimals);
    storage.insert(fieldStart, 1, mark);
    return *this;
}

Request& Request::character(char value)
{
    return raw({&value, 1});
}

Request& Request::text(std::string_view value)
{
    reopen();
    appendConverted(value);
    return endField();
}

Request& Request::paddedText(std::string_view value, std::size_t width)
{
    reopen();
    appendConverted(value);
    storage.append(width - std::min(width, value.size()), ' ');
    return endField();
}

Request& Request::fixedText(std::string_view value, std::size_t width)
{
    return paddedText(value.substr(0, width), width);
}

Request& Request::raw(std::string_view value)
{
    reopen();
    storage.append(value);
    return endField();
}

Request& Request::empty()
{
    return raw({});
}

void Request::reopen()
{
    storage.pop_back();
}

Request& Request::endField()
{
    storage.append(endOfLastField.data(), endOfLastField.size());
    return *this;
}

void Request::appendConverted(std::string_view value)
{
    if (conversion != nullptr) {
        conversion->appendConverted(storage, value);
    } else {
        storage.append(value);
    }
}

} // namespace telvofm
