// Assertions: whether it is so now, and waiting until it is.
#include "virtual_printer/control/assertion.h"
#include "virtual_printer/control/routes.h"

namespace virtual_printer {
namespace {

constexpr int unmet = 422;

HttpAnswer verdict(const std::vector<std::string>& differences)
{
    return jsonAnswer({{"holds", differences.empty()}, {"differences", differences}},
                      differences.empty() ? 200 : unmet);
}

} // namespace

Outcome assertNow(const Call& call)
{
    return verdict(check(call.body, call.printer()));
}

Outcome waitFor(const Call& call)
{
    constexpr std::int64_t usual = 5'000;
    constexpr std::int64_t longest = 60'000;
    const Members members = call.members();
    members.allow({"until", "limit"});
    const Json* until = members.find("until");
    if (until == nullptr) {
        throw ControlRefusal(status::badRequest,
                             "\"until\" is missing; give what to wait for as an assertion.");
    }
    const std::chrono::milliseconds limit(members.whole("limit", usual, 0, longest));
    const auto look = [expected = *until,
                       printer = call.addressed](bool isOver) -> std::optional<HttpAnswer> {
        const auto differences = check(expected, *printer);
        return differences.empty() || isOver ? std::optional(verdict(differences)) : std::nullopt;
    };
    if (auto answer = look(limit.count() == 0)) {
        return *answer;
    }
    return Later{limit, look};
}

} // namespace virtual_printer
