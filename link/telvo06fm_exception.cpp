#include "link/telvo06fm_exception.h"

#include <string>
#include <string_view>

namespace telvofm {
namespace {

// For codes 0 to 12 the text starts `code` bytes into the constant: this is meant, callers know these texts.
std::string messageOf(std::int32_t code)
{
    constexpr std::string_view constant = "Telvo error ";
    if (code >= 0 && code <= static_cast<std::int32_t>(constant.size())) {
        return std::string(constant.substr(static_cast<std::size_t>(code)));
    }
    return std::string(constant) + std::to_string(code);
}

} // namespace

Telvo06FMException::Telvo06FMException(std::int32_t failureCode)
    : std::runtime_error(messageOf(failureCode)), code(failureCode)
{
}

} // namespace telvofm
