// Any row of fields for the request builder, beside the plain concatenation of what each field is on the
// wire; numbers beside the C library's printing.
#include "device/character_map.h"
#include "device/request.h"
#include "tests/fuzz/fuzzed_bytes.h"

#include <array>
#include <cstdio>
#include <optional>

namespace {

using namespace telvofm;
using namespace telvofm::fuzz;

using Printed = std::array<char, 400>;

std::string printedGeneral(double value)
{
    Printed text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

std::string printedFixed(double value, int decimals)
{
    Printed text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

// An amount with what it is on the wire: a number, or a text that stays as it is.
struct GivenAmount
{
    Amount amount;
    std::optional<double> value;
    std::string text;

    [[nodiscard]] std::string fixed(int decimals) const
    {
        return value ? printedFixed(*value, decimals) : text;
    }
    [[nodiscard]] std::string fixedOrZero(int decimals) const
    {
        return value && *value == 0 ? "0" : fixed(decimals);
    }
};

GivenAmount amountFrom(FuzzedBytes& input)
{
    constexpr std::size_t kinds = 5;
    const std::size_t kind = input.choice(kinds);
    if (kind == 4) {
        const std::string given(input.text());
        return {text(given.c_str()), std::nullopt, given.c_str()};
    }
    if (kind == 3) {
        const auto value = input.number<double>();
        return {number(value), value, {}};
    }
    constexpr std::array<double, 3> divisors = {100, 1000, 10000};
    constexpr std::array makers = {&hundredths, &thousandths, &tenThousandths};
    const auto value = input.number<int>();
    return {makers[kind](value), value / divisors[kind], {}};
}

class Fields
{
public:
    Fields(FuzzedBytes& bytes, bool converts)
        : input(bytes), map(converts ? &CharacterMap::outgoing : nullptr)
    {
        const auto address = input.number<int>();
        const auto command = input.byte();
        expected = {'\x1C', static_cast<char>(address), static_cast<char>(command), '\x04'};
        Request request(storage, address, static_cast<Command>(command), map);
        require(request.bytes() == expected);
        while (!input.isAtEnd()) {
            const std::string field = add(request) + std::string(1, '\0');
            expected.insert(expected.size() - 1, field);
            require(request.bytes() == expected);
        }
    }

private:
    // Adds one to the request and returns what it has to be.
    std::string add(Request& request)
    {
        constexpr std::size_t kinds = 11;
        switch (input.choice(kinds)) {
        case 0: {
            const auto value = input.number<int>();
            request.number(value);
            return std::to_string(value);
        }
        case 1: {
            const auto value = input.number<double>();
            request.general(value);
            return printedGeneral(value);
        }
        case 2:
        case 3:
        case 4:
            return addAmount(request);
        case 5: {
            const char value = static_cast<char>(input.byte());
            request.character(value);
            return {value};
        }
        case 6: {
            const std::string_view value = input.text();
            request.raw(value);
            return std::string(value);
        }
        case 7:
            request.empty();
            return {};
        default:
            return addText(request);
        }
    }

    std::string addAmount(Request& request)
    {
        constexpr std::size_t mostDecimals = 10;
        const int decimals = static_cast<int>(input.choice(mostDecimals + 1));
        const std::size_t way = input.choice(3);
        const char mark = static_cast<char>(input.byte());
        const GivenAmount given = amountFrom(input);
        if (way == 0) {
            request.amount(given.amount, decimals);
            return given.fixed(decimals);
        }
        if (way == 1) {
            request.amountOrZero(given.amount, decimals);
            return given.fixedOrZero(decimals);
        }
        request.markedAmountOrZero(mark, given.amount, decimals);
        return mark + given.fixedOrZero(decimals);
    }

    std::string addText(Request& request)
    {
        const std::size_t way = input.choice(3);
        const std::size_t width = input.byte();
        std::string value(input.text());
        if (way == 0) {
            request.text(value);
        } else if (way == 1) {
            request.paddedText(value, width);
            value.resize(std::max(width, value.size()), ' ');
        } else {
            request.fixedText(value, width);
            value.resize(width, ' ');
        }
        for (char& byte : value) { // a blank stays one
            byte = map == nullptr ? byte : map->convert(byte);
        }
        return value;
    }

    FuzzedBytes& input;
    const CharacterMap* map;
    std::string storage;
    std::string expected;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedBytes input(data, size);
    const bool converts = (input.byte() & 1U) != 0;
    const Fields fields(input, converts);
    return 0;
}
