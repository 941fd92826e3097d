#include "tests/second_opinion/exported_calls.h"

#include <tuple>
#include <type_traits>
#include <vector>

namespace telvofm::test {
namespace {

// A caller in another language passes other bytes for true than a bool of ours can hold.
template <typename Type>
using Passed = std::conditional_t<std::is_same_v<Type, bool>, unsigned char, Type>;

std::string_view nextName(std::string_view& names)
{
    const std::string_view name = names.substr(0, names.find(' '));
    names.remove_prefix(std::min(name.size() + 1, names.size()));
    return name;
}

void keep(Occasion& occasion, const char* text)
{
    occasion.result = jsonBytes(text);
}

void keep(Occasion& occasion, bool truth)
{
    occasion.result = truth ? "true" : "false";
}

void keep(Occasion& occasion, ResultObject* object)
{
    occasion.resultObject = object;
    occasion.result = std::to_string(occasion.object);
}

template <typename Number>
requires(std::is_integral_v<Number>) void keep(Occasion& occasion, Number number)
{
    occasion.result = std::to_string(number);
}

template <typename Result, typename... Types>
ExportedCall callOf(std::string_view name, std::string_view parameters, Result (*function)(Types...))
{
    auto* const seen = reinterpret_cast<Result (*)(Passed<Types>...)>(reinterpret_cast<void (*)()>(function));
    return {name, [=](Occasion& occasion) -> std::function<void()> {
                [[maybe_unused]] std::string_view names = parameters;
                const std::tuple<Passed<Types>...> arguments{
                    occasion.drawn(nextName(names), static_cast<Passed<Types>*>(nullptr))...};
                Occasion* const target = &occasion;
                return [=] {
                    if constexpr (std::is_void_v<Result>) {
                        std::apply(seen, arguments);
                    } else {
                        keep(*target, std::apply(seen, arguments));
                    }
                };
            }};
}

} // namespace

std::span<const ExportedCall> exportedCalls()
{
    // A name is written once, so that it cannot stand beside the type of another function.
#define TELVOFM_ENTRY(name, parameters) callOf(#name, parameters, &(name)),
    static const std::vector<ExportedCall> calls = {
#include "tools/export_table_entries.inc"
    };
#undef TELVOFM_ENTRY
    return calls;
}

} // namespace telvofm::test
