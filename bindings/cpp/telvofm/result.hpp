// A value or the failure that stands in its place, used as C++23's std::expected is.
#pragma once

#include "failure.hpp"

#include <functional>
#include <utility>
#include <variant>

namespace telvofm {

// Either a Value or a Failure.
template <typename Value>
class [[nodiscard]] Result
{
public:
    Result(Value value) : held_(std::in_place_index<0>, std::move(value)) {}
    Result(Failure failure) : held_(std::in_place_index<1>, std::move(failure)) {}

    // Whether there is a value; so is the whole as a condition.
    [[nodiscard]] bool has_value() const { return held_.index() == 0; }
    explicit operator bool() const { return has_value(); }

    // Only if there is a value.
    Value& operator*() { return *std::get_if<0>(&held_); }
    const Value& operator*() const { return *std::get_if<0>(&held_); }
    Value* operator->() { return std::get_if<0>(&held_); }
    const Value* operator->() const { return std::get_if<0>(&held_); }

    // Only if there is none.
    [[nodiscard]] const Failure& error() const { return *std::get_if<1>(&held_); }

    // The value, or the other one in its place.
    [[nodiscard]] Value value_or(Value otherwise) const
    {
        return has_value() ? **this : std::move(otherwise);
    }

    // What `next` makes of the value, or the failure as it is.
    template <typename Next>
    auto and_then(Next&& next) -> std::invoke_result_t<Next, Value&>
    {
        if (!has_value()) {
            return error();
        }
        return std::invoke(std::forward<Next>(next), **this);
    }

private:
    std::variant<Value, Failure> held_;
};

// Of a call that gives nothing back but the seconds that it took: after more than `slow` it may have been
// sent again, and carried out twice.
struct Done
{
    double seconds = 0;
};
using Outcome = Result<Done>;

} // namespace telvofm
