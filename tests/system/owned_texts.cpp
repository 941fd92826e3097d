// The callers of all exports are made of templates, once for all tests of texts.
#include "tests/system/owned_texts.h"

namespace telvofm::test {
namespace {

template <auto function>
struct TextCaller;

template <typename Result, typename... Parameters, Result (*function)(Parameters...)>
struct TextCaller<function>
{
    static constexpr std::size_t textCount =
        (std::size_t{0} + ... + (std::is_same_v<Parameters, const char*> ? 1 : 0));

    // Calls with all arguments, which are taken in their order: braces see to that.
    struct Outcome
    {
        explicit Outcome(Parameters... values)
        {
            if constexpr (std::is_void_v<Result>) {
                function(values...);
                text = "nothing";
            } else if constexpr (std::is_arithmetic_v<Result>) {
                text = std::to_string(function(values...));
            } else if constexpr (std::is_same_v<Result, const char*>) {
                text = function(values...);
            }
        }

        std::string text = "not called";
    };

    static std::string call(CallArguments& arguments)
    {
        return Outcome{arguments.next<Parameters>()...}.text;
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
