// The two ends of an extract, both within it, as requests give them.
#pragma once

#include "virtual_printer/device_language.h"
#include "virtual_printer/moments.h"
#include "virtual_printer/money.h"
#include "virtual_printer/refusal.h"

#include <cstdint>
#include <string>

namespace virtual_printer {

template <typename Value>
struct Bounds
{
    Value from;
    Value to;

    [[nodiscard]] bool contain(const Value& value) const { return from <= value && value <= to; }
};

using Dates = Bounds<std::string>;
using Numbers = Bounds<std::int64_t>;

// The bounds in the field with this index and the one behind it.
inline Refusal readBounds(const Request& request, std::size_t first, Dates& dates)
{
    if (request.fields.size() < first + 2) {
        return Refusal::wrongFields;
    }
    const auto from = parseMoment(request.fields[first], Edge::first);
    const auto to = parseMoment(request.fields[first + 1], Edge::last);
    if (!from || !to) {
        return Refusal::badDate;
    }
    dates = {*from, *to};
    return Refusal::none;
}

inline Refusal readBounds(const Request& request, std::size_t first, Numbers& numbers)
{
    if (request.fields.size() < first + 2) {
        return Refusal::wrongFields;
    }
    const auto from = parseDecimal(request.fields[first], 0);
    const auto to = parseDecimal(request.fields[first + 1], 0);
    if (!from || !to) {
        return Refusal::badNumber;
    }
    numbers = {*from, *to};
    return Refusal::none;
}

} // namespace virtual_printer
