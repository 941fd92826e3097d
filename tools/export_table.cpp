#include "tools/export_table.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace telvofm::tools {
namespace {

template <typename Number>
Number numberOf(const Argument& argument)
{
    Number value{};
    const char* end = argument.text.data() + argument.text.size();
    const auto parsed = std::from_chars(argument.text.data(), end, value);
    if (argument.text.empty() || parsed.ec != std::errc() || parsed.ptr != end) {
        throw std::invalid_argument("'" + argument.text + "' is no number that fits the parameter");
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
        throw std::invalid_argument("'" + argument.text + "' is not a single character");
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
    destroyResultObject(object);
    return isNull ? "null" : "result";
}

template <typename Number>
requires(std::is_arithmetic_v<Number>) std::string resultText(Number number)
{
    return std::to_string(number);
}

template <typename Result, typename... Parameters, std::size_t... Index>
std::string invoke(Result (*function)(Parameters...), std::span<const Argument> arguments,
                   CallContext& context, std::index_sequence<Index...> /*indices*/)
{
    if constexpr (std::is_void_v<Result>) {
        function(convert(std::type_identity<Parameters>{}, arguments[Index], context)...);
        return "nothing";
    } else {
        return resultText(function(convert(std::type_identity<Parameters>{}, arguments[Index], context)...));
    }
}

template <typename Result, typename... Parameters>
Export entry(std::string_view name, Result (*function)(Parameters...))
{
    return {name, sizeof...(Parameters), [=](std::span<const Argument> arguments, CallContext& context) {
                if (arguments.size() != sizeof...(Parameters)) {
                    throw std::invalid_argument(std::string(name) + " takes " +
                                                std::to_string(sizeof...(Parameters)) + " arguments, not " +
                                                std::to_string(arguments.size()));
                }
                return invoke(function, arguments, context, std::index_sequence_for<Parameters...>{});
            }};
}

} // namespace

char* CallContext::newBuffer(std::size_t size)
{
    constexpr char untouched = '\xAA';
    buffer.assign(size, untouched);
    return buffer.data();
}

ResultObject* CallContext::result()
{
    if (resultObject == nullptr) {
        resultObject = createResultObject();
    }
    return resultObject;
}

std::span<const Export> exportTable()
{
    // A name is written once, so that it cannot stand beside another function.
#define TELVOFM_ENTRY(name) entry(#name, &(name)),
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
