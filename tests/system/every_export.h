// Every export as a call with arguments of its own types that make some sense to it.
#pragma once

#include "telvofm.h"

#include <array>
#include <string>
#include <string_view>
#include <type_traits>

namespace telvofm::test {

struct GivenArguments
{
    const char* text = ""; // wherever a text is wanted
    ResultObject* object = nullptr;
    std::array<char, 4096> buffer{};
    unsigned int count = 0;
};

template <typename Parameter>
Parameter argumentOf(GivenArguments& given)
{
    if constexpr (std::is_same_v<Parameter, double>) {
        return 12.345;
    } else if constexpr (std::is_same_v<Parameter, char>) {
        return 'A';
    } else if constexpr (std::is_arithmetic_v<Parameter>) {
        return 1;
    } else if constexpr (std::is_convertible_v<Parameter, const ResultObject*>) {
        return given.object;
    } else if constexpr (std::is_same_v<Parameter, unsigned int*>) {
        return &given.count;
    } else if constexpr (std::is_same_v<Parameter, char*> || std::is_same_v<Parameter, unsigned char*>) {
        return reinterpret_cast<Parameter>(given.buffer.data());
    } else {
        return reinterpret_cast<Parameter>(given.text);
    }
}

inline std::string textOfResult(const char* text)
{
    return text;
}
inline std::string textOfResult(ResultObject* object)
{
    destroyResultObject(object);
    return object == nullptr ? "null" : "object";
}
template <typename Number>
std::string textOfResult(Number number)
{
    return std::to_string(number);
}

template <auto function>
struct CallOf;

template <typename Result, typename... Parameters, Result (*function)(Parameters...)>
struct CallOf<function>
{
    // The result as text.
    static std::string made(GivenArguments& given)
    {
        if constexpr (std::is_void_v<Result>) {
            function(argumentOf<Parameters>(given)...);
            return "nothing";
        } else {
            return textOfResult(function(argumentOf<Parameters>(given)...));
        }
    }
};

struct ExportedCall
{
    std::string_view name;
    std::string (*make)(GivenArguments&);
};

inline constexpr ExportedCall everyExport[] = {
#define TELVOFM_ENTRY(name, parameters) {#name, &CallOf<&(name)>::made},
#include "tools/export_table_entries.inc"
#undef TELVOFM_ENTRY
};

} // namespace telvofm::test
