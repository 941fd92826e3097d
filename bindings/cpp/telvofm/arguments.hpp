// What a function of telvofm.h is given for the arguments of Session::call(), and what does not compile
// there.
#pragma once

#include "file_name.hpp"
#include "text.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

namespace telvofm::inside {

// An argument as the library takes it; a text is encoded and lives until the call is over. The path of a file
// goes out as the system's own bytes.
template <typename Argument>
auto converted(const Argument& argument)
{
    if constexpr (std::is_same_v<Argument, std::filesystem::path>) {
        return encodeFileName(argument);
    } else if constexpr (std::is_convertible_v<const Argument&, std::string_view>) {
        return encode(argument);
    } else {
        return Result<Argument>(argument);
    }
}

template <typename Value>
const char* passed(const Value& value) requires std::is_same_v<Value, std::string>
{
    return value.c_str();
}
template <typename Value>
Value passed(const Value& value) requires(!std::is_same_v<Value, std::string>)
{
    return value;
}

template <typename Parameter>
inline constexpr bool isBuffer =
    std::is_same_v<Parameter, char*> || std::is_same_v<Parameter, unsigned char*> ||
    std::is_same_v<Parameter, unsigned int*>;

// Whether a number would lose something on its way: 12.5 for an int, or a long.
template <typename Parameter, typename Argument>
inline constexpr bool narrows =
    !std::is_same_v<Parameter, bool> &&
    ((std::is_floating_point_v<Argument> && std::is_integral_v<Parameter>) ||
     (std::is_integral_v<Argument> && std::is_integral_v<Parameter> && sizeof(Argument) > sizeof(Parameter)));

template <typename... Arguments, typename... Parameters>
constexpr bool narrowsAny(int (*)(Parameters...))
{
    static_assert(sizeof...(Arguments) == sizeof...(Parameters),
                  "the function takes another number of arguments");
    return (narrows<Parameters, Arguments> || ...);
}

template <typename... Parameters>
constexpr bool fillsABuffer(int (*)(Parameters...))
{
    return (isBuffer<Parameters> || ...);
}

} // namespace telvofm::inside
