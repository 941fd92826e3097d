#include "tools/export_table.h"

#include "tools/exported_function.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace telvofm::tools {
namespace {

template <typename Number>
std::string wantedNumber()
{
    if constexpr (std::is_floating_point_v<Number>) {
        return "number, such as 12.50";
    } else {
        return "whole number from " + std::to_string(std::numeric_limits<Number>::min()) + " to " +
               std::to_string(std::numeric_limits<Number>::max());
    }
}

template <typename Number>
Number numberOf(const Argument& argument)
{
    Number value{};
    const char* end = argument.text.data() + argument.text.size();
    const auto parsed = std::from_chars(argument.text.data(), end, value);
    if (argument.text.empty() || parsed.ec != std::errc() || parsed.ptr != end) {
        throw std::invalid_argument("'" + argument.text + "' is no " + wantedNumber<Number>());
    }
    return value;
}

bool isNull(const Argument& argument)
{
    return argument.isWord && argument.text == "null";
}

// One overload per parameter type of the interface.
template <typename Number>
requires(std::is_arithmetic_v<Number>) Number
    convert(std::type_identity<Number> /*type*/, const Argument& argument, CallContext& /*context*/)
{
    return numberOf<Number>(argument);
}

bool convert(std::type_identity<bool> /*type*/, const Argument& argument, CallContext& /*context*/)
{
    return numberOf<int>(argument) != 0;
}

char convert(std::type_identity<char> /*type*/, const Argument& argument, CallContext& /*context*/)
{
    if (argument.text.size() != 1) {
        throw std::invalid_argument("'" + argument.text + "' is no single character");
    }
    return argument.text.front();
}

const char* convert(std::type_identity<const char*> /*type*/, const Argument& argument,
                    CallContext& /*context*/)
{
    return isNull(argument) ? nullptr : argument.text.c_str();
}

const unsigned char* convert(std::type_identity<const unsigned char*> /*type*/, const Argument& argument,
                             CallContext& /*context*/)
{
    return isNull(argument) ? nullptr : reinterpret_cast<const unsigned char*>(argument.text.data());
}

const void* convert(std::type_identity<const void*> /*type*/, const Argument& argument,
                    CallContext& /*context*/)
{
    return isNull(argument) ? nullptr : argument.text.data();
}

char* convert(std::type_identity<char*> /*type*/, const Argument& argument, CallContext& context)
{
    return isNull(argument) ? nullptr : context.newBuffer(numberOf<std::size_t>(argument));
}

unsigned char* convert(std::type_identity<unsigned char*> /*type*/, const Argument& argument,
                       CallContext& context)
{
    return reinterpret_cast<unsigned char*>(convert(std::type_identity<char*>{}, argument, context));
}

[[maybe_unused]] unsigned int* convert(std::type_identity<unsigned int*> /*type*/, const Argument& argument,
                                       CallContext& context)
{
    return isNull(argument) ? nullptr : &context.count;
}

template <typename Object>
requires(std::is_same_v<std::remove_const_t<Object>, ResultObject>) Object* convert(
    std::type_identity<Object*> /*type*/, const Argument& argument, CallContext& context)
{
    return isNull(argument) ? nullptr : context.result();
}

std::string resultText(const char* text)
{
    return text == nullptr ? "null" : text;
}

std::string resultText(bool flag)
{
    return flag ? "true" : "false";
}

// Only createResultObject returns an object, and its text is all that callers by name get: it goes at once.
std::string resultText(ResultObject* object)
{
    const bool isNull = object == nullptr;
    exported<decltype(destroyResultObject)>("destroyResultObject")(object);
    return isNull ? "null" : "result";
}

template <typename Number>
requires(std::is_arithmetic_v<Number>) std::string resultText(Number number)
{
    return std::to_string(number);
}

// Which parameter an argument is meant for stands before what is wrong with it.
template <typename Type>
Type converted(std::string_view parameter, const Argument& argument, CallContext& context)
{
    try {
        return convert(std::type_identity<Type>{}, argument, context);
    } catch (const std::invalid_argument& wrong) {
        throw std::invalid_argument(std::string(parameter) + ": " + wrong.what());
    }
}

template <typename Result, typename... Types, std::size_t... Index>
std::string invoke(Result (*function)(Types...), std::span<const Parameter> parameters,
                   std::span<const Argument> arguments, CallContext& context,
                   std::index_sequence<Index...> /*indices*/)
{
    if constexpr (std::is_void_v<Result>) {
        function(converted<Types>(parameters[Index].name, arguments[Index], context)...);
        return "nothing";
    } else {
        return resultText(function(converted<Types>(parameters[Index].name, arguments[Index], context)...));
    }
}

template <typename Type>
constexpr Kind kindOf(std::string_view name)
{
    using Bare = std::remove_const_t<std::remove_pointer_t<Type>>;
    if constexpr (std::is_same_v<Type, const char*>) {
        return Kind::text;
    } else if constexpr (std::is_same_v<Type, char*> || std::is_same_v<Type, unsigned char*>) {
        return Kind::buffer;
    } else if constexpr (std::is_same_v<Bare, ResultObject>) {
        return Kind::result;
    } else if constexpr (std::is_same_v<Type, unsigned int*>) {
        return Kind::count;
    } else if constexpr (std::is_pointer_v<Type>) {
        return name == "marker" ? Kind::marker : Kind::bytes;
    } else if constexpr (std::is_same_v<Type, char>) {
        return Kind::character;
    } else if constexpr (std::is_same_v<Type, bool>) {
        return Kind::truth;
    } else {
        return std::is_floating_point_v<Type> ? Kind::number : Kind::whole;
    }
}

template <typename... Types>
std::vector<Parameter> parametersOf(std::string_view names)
{
    std::vector<Parameter> parameters;
    [[maybe_unused]] const auto add = [&](auto kind) {
        const std::string_view name = names.substr(0, names.find(' '));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        parameters.push_back({name, kind(name)});
    };
    (add(kindOf<Types>), ...);
    return parameters;
}

template <typename Result, typename... Types>
Export entry(std::string_view name, std::string_view names, std::type_identity<Result(Types...)> /*type*/)
{
    std::vector<Parameter> parameters = parametersOf<Types...>(names);
    return {name, parameters, [=](std::span<const Argument> arguments, CallContext& context) {
                if (arguments.size() != sizeof...(Types)) {
                    throw std::invalid_argument(std::string(name) + " takes " +
                                                std::to_string(sizeof...(Types)) + " arguments, not " +
                                                std::to_string(arguments.size()));
                }
                return invoke(exported<Result(Types...)>(name), parameters, arguments, context,
                              std::index_sequence_for<Types...>{});
            }};
}

} // namespace

CallContext::~CallContext()
{
    if (resultObject != nullptr) {
        exported<decltype(destroyResultObject)>("destroyResultObject")(resultObject);
    }
}

char* CallContext::newBuffer(std::size_t size)
{
    constexpr char untouched = '\xAA';
    buffer.assign(size, untouched);
    return buffer.data();
}

ResultObject* CallContext::result()
{
    if (resultObject == nullptr) {
        resultObject = exported<decltype(createResultObject)>("createResultObject")();
    }
    return resultObject;
}

std::span<const Export> exportTable()
{
    // A name is written once, so that it cannot stand beside the type of another function.
#define TELVOFM_ENTRY(name, parameters) entry(#name, parameters, std::type_identity<decltype(name)>{}),
    static const std::vector<Export> table = {
#include "tools/export_table_entries.inc"
    };
#undef TELVOFM_ENTRY
    return table;
}

const Export* findExport(std::string_view name)
{
    const auto table = exportTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const Export& e) { return e.name == name; });
    return found == table.end() ? nullptr : &*found;
}

} // namespace telvofm::tools
