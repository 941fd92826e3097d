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

std::optional<HttpAnswer> look(Assertion& assertion, const ControlledPrinter& printer, bool isOver)
{
    printer.station.show(); // a till may have cleared the journal and wait for its answer
    if (assertion.holds(printer)) {
        return verdict({});
    }
    return isOver ? std::optional(verdict(assertion.differences(printer))) : std::nullopt;
}

} // namespace

Outcome assertNow(const Call& call)
{
    return verdict(Assertion(call.body, call.codes).differences(call.printer()));
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
    Assertion assertion(*until, call.codes);
    if (auto answer = look(assertion, call.printer(), limit.count() == 0)) {
        return *answer;
    }
    // Whoever holds it expects nothing to be thrown: what the trace or the journal no longer has is an
    // answer.
    return Later{limit,
                 [assertion = std::move(assertion),
                  printer = call.addressed](bool isOver) mutable -> std::optional<HttpAnswer> {
                     try {
                         return look(assertion, *printer, isOver);
                     } catch (const ControlRefusal& refusal) {
                         return errorAnswer(refusal.status, refusal.what());
                     } catch (const std::exception& failure) {
                         return errorAnswer(status::internalError, failure.what());
                     }
                 }};
}

} // namespace virtual_printer
