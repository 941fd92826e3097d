#include "virtual_printer/fiscal/passwords.h"

namespace virtual_printer {

Refusal checkPasswords(std::span<const Field> kinds, std::span<const std::string> fields,
                       const Settings& settings)
{
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        const bool isWrong =
            (kinds[index].name == "password" && fields[index] != settings.password) ||
            (kinds[index].name == "servicePassword" && fields[index] != settings.servicePassword);
        if (isWrong) {
            return Refusal::wrongPassword;
        }
    }
    return Refusal::none;
}

} // namespace virtual_printer
