// Properties that hold for whatever a caller hands over.
#include "device/number_text.h"
#include "device/request.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace telvofm {
namespace {

std::vector<std::string> fieldsOf(std::string_view request)
{
    std::vector<std::string> fields;
    std::string_view rest = request.substr(3, request.size() - 4);
    while (!rest.empty()) {
        const auto end = rest.find('\0');
        fields.emplace_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return fields;
}

std::string printedFixed(double value, int decimals)
{
    std::array<char, 400> text;
    const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string printedGeneral(double value)
{
    std::array<char, 400> text;
    const int length = std::snprintf(text.data(), text.size(), "%.6g", value);
    return {text.data(), static_cast<std::size_t>(length)};
}

RC_GTEST_PROP(RequestProperty, FieldsComeBackAsTheyWentIn,
              (const std::vector<std::string>& given, int address))
{
    std::string storage;
    Request request(storage, address, Command::itemSale, nullptr);
    std::vector<std::string> expected;
    for (std::string field : given) {
        std::erase(field, '\0');
        request.raw(field);
        expected.push_back(field);
    }
    RC_ASSERT(request.bytes().front() == '\x1C');
    RC_ASSERT(request.bytes()[1] == static_cast<char>(address));
    RC_ASSERT(request.bytes().back() == '\x04');
    RC_ASSERT(fieldsOf(request.bytes()) == expected);
}

RC_GTEST_PROP(RequestProperty, NumbersReadBackAsTheyWere, (int value))
{
    std::string storage;
    const auto request = Request(storage, 1, Command::subTotal, nullptr).number(value);
    RC_ASSERT(std::stoi(fieldsOf(request.bytes()).at(0)) == value);
}

RC_GTEST_PROP(RequestProperty, FixedTextHasItsWidth, (const std::string& given))
{
    std::string storage;
    const auto request = Request(storage, 1, Command::itemSale, nullptr).fixedText(given, 3);
    RC_ASSERT(request.bytes().size() == 3U + 3U + 2U);
}

RC_GTEST_PROP(NumberProperty, FixedIsWhatTheSystemPrints, (double value))
{
    const int decimals = *rc::gen::inRange(0, 11);
    RC_ASSERT(std::string(NumberText::fixed(value, decimals).view()) == printedFixed(value, decimals));
}

// Amounts around the halves of their last digit, where rounding is decided by the binary value.
RC_GTEST_PROP(NumberProperty, AmountsRoundAsTheSystemPrintsThem, ())
{
    const int decimals = *rc::gen::inRange(0, 5);
    const int numerator = *rc::gen::arbitrary<int>();
    const int divisor = *rc::gen::element(1, 8, 64, 100, 200, 1000, 2000, 4096, 10000, 20000);
    const double value = static_cast<double>(numerator) / divisor;
    RC_ASSERT(std::string(NumberText::fixed(value, decimals).view()) == printedFixed(value, decimals));
}

RC_GTEST_PROP(NumberProperty, GeneralIsWhatTheSystemPrints, (double value))
{
    RC_ASSERT(std::string(NumberText::general(value).view()) == printedGeneral(value));
}

} // namespace
} // namespace telvofm
