// The callers of all exports are made of templates, once for all tests of texts.
#include "tests/system/owned_texts.h"

#include <tuple>

namespace telvofm::test {
namespace {

template <auto function>
struct TextCaller;

template <typename Result, typename... Parameters, Result (*function)(Parameters...)>
struct TextCaller<function>
{
    static constexpr std::size_t textCount =
        (std::size_t{0} + ... + (std::is_same_v<Parameters, const char*> ? 1 : 0));

    static std::string call(CallArguments& arguments)
    {
        const std::tuple<Parameters...> values{arguments.next<Parameters>()...};
        if constexpr (std::is_void_v<Result>) {
            std::apply(function, values);
            return "nothing";
        } else if constexpr (std::is_arithmetic_v<Result>) {
            return std::to_string(std::apply(function, values));
        } else if constexpr (std::is_same_v<Result, const char*>) {
            return std::apply(function, values);
        } else {
            return "not called";
        }
    }
};

constexpr TextExport table[] = {
#define TELVOFM_ENTRY(name, parameters) {#name, TextCaller<&(name)>::textCount, &TextCaller<&(name)>::call},
#include "tools/export_table_entries.inc"
#undef TELVOFM_ENTRY
};

} // namespace

std::span<const TextExport> allExports()
{
    return table;
}

} // namespace telvofm::test
