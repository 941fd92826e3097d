// What a request's body says, member by member: whatever is not as it should be is refused in a sentence that
// names the member.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/fiscal/money.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace virtual_printer {

// An empty body is an empty object. Refuses what is no JSON object, nested deeper than anything here is, or
// has a member twice.
Json parseBody(const std::string& body);

class Members
{
public:
    // `name` is that of the whole in sentences: "vat.A".
    Members(const Json& wholeObject, std::string itsName);

    // Refuses every member that is not in the list.
    void allow(std::initializer_list<std::string_view> names) const;
    // Null when there is no such member.
    [[nodiscard]] const Json* find(std::string_view member) const;

    // What is not there is `otherwise`.
    [[nodiscard]] bool flag(std::string_view member, bool otherwise) const;
    [[nodiscard]] std::int64_t whole(std::string_view member, std::int64_t otherwise, std::int64_t smallest,
                                     std::int64_t largest) const;
    [[nodiscard]] std::string text(std::string_view member, std::string_view otherwise, std::size_t shortest,
                                   std::size_t longest) const;
    [[nodiscard]] std::int64_t decimal(std::string_view member, std::int64_t otherwise, int decimals) const;
    [[nodiscard]] std::string oneOf(std::string_view member, std::string_view otherwise,
                                    std::initializer_list<std::string_view> words) const;
    [[nodiscard]] std::optional<Moment> moment(std::string_view member) const;

    [[nodiscard]] std::string nameOf(std::string_view member) const;

private:
    const Json& object;
    std::string name;
};

} // namespace virtual_printer
