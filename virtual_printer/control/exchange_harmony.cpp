#include "virtual_printer/control/exchange_harmony.h"

#include <algorithm>

namespace virtual_printer {
namespace {

// What an entry says of an exchange; what it does not say may be either.
class Said
{
public:
    explicit Said(const Json& entry)
        : expected(entry), name(entry.value("name", "")),
          commands(commandsCalled(name, entry.value("command", ""))), other(otherCalled(name))
    {
    }

    [[nodiscard]] bool is(const char* member, bool value) const
    {
        const auto found = expected.find(member);
        return found != expected.end() && found->is_boolean() && *found == value;
    }
    [[nodiscard]] bool has(const char* member) const
    {
        return expected.contains(member) && !expected[member].is_null();
    }
    [[nodiscard]] bool hasNo(const char* member) const
    {
        return expected.contains(member) && expected[member].is_null();
    }

    [[nodiscard]] bool isAnswered() const
    {
        return is("taken", true) || !expected.value("answer", "").empty();
    }
    [[nodiscard]] bool isRepeat() const
    {
        return has("repeatOf") || has("repeatedAfter") || expected.value("attempt", 1) > 1;
    }
    [[nodiscard]] bool isHit() const { return expected.contains("faults") && !expected["faults"].empty(); }
    [[nodiscard]] bool isDamaged() const { return name == "damagedRequest" || name == "damagedBlock"; }
    [[nodiscard]] bool isNoRepeat() const { return hasNo("repeatOf") || hasNo("repeatedAfter"); }
    [[nodiscard]] bool mayBeQuestion() const { return other == nullptr && anyOf(isQuestion); }
    // Nothing but a question has the name and the code.
    [[nodiscard]] bool isQuestionOnly() const
    {
        return !commands.empty() && std::all_of(commands.begin(), commands.end(), isQuestion);
    }
    // Fields are those of one command.
    [[nodiscard]] bool areFieldsOfOne() const
    {
        return !expected.contains("fields") || expected["fields"].empty() ||
               anyOf([this](const CommandRule* command) {
                   const auto fields = expected["fields"].items();
                   return std::all_of(fields.begin(), fields.end(), [command](const auto& wanted) {
                       return std::any_of(
                           command->fields.begin(), command->fields.end(),
                           [&wanted](const Field& field) { return field.name == wanted.key(); });
                   });
               });
    }

    const Json& expected;
    std::string name;
    std::vector<const CommandRule*> commands;
    const OtherExchange* other;

private:
    static bool isQuestion(const CommandRule* command) { return command->wants == Wants::reply; }

    template <typename Condition>
    [[nodiscard]] bool anyOf(Condition condition) const
    {
        return std::any_of(commands.begin(), commands.end(), condition);
    }
};

// What is called so never comes to it.
void requireReachable(const OtherExchange* other, bool isExecuted, bool isAcknowledged)
{
    if (other == nullptr) {
        return;
    }
    const bool isNeverExecuted = isExecuted && !other->isExecuted;
    if (isNeverExecuted || (isAcknowledged && !other->isAcknowledged)) {
        refuseEntry("What is called " + std::string(other->name) + " is never " +
                    (isNeverExecuted ? "executed" : "acknowledged") + "; ask whether it is \"received\".");
    }
}

} // namespace

// What is carried out, kept or accepted was not refused, and what is kept or answered was carried out.
// Questions alone are answered with data, and nothing is kept upon them.
void requireHarmony(const Json& expected, Stage stage, const std::string& place)
{
    const Said said(expected);
    const bool isExecuted = stage == Stage::executed || said.is("executed", true);
    const bool isAcknowledged = stage == Stage::acknowledged || said.is("acknowledged", true);
    const bool isCommitted = said.is("committed", true);
    const bool isRefused = said.has("refusal");
    const char* const answered = said.is("taken", true) ? "taken" : "answered with data";
    requireReachable(said.other, isExecuted || isCommitted, isAcknowledged);
    const auto require = [&place](bool isImpossible, const char* one, const char* other) {
        if (isImpossible) {
            refuseEntry("\"" + place + "\" is " + one + " and " + other +
                        ", and no exchange is both; leave one of them out.");
        }
    };
    require(isExecuted && isRefused, "executed", "refused");
    require(isAcknowledged && isRefused, "acknowledged", "refused");
    require(isCommitted && isRefused, "committed", "refused");
    require(said.isAnswered() && isRefused, answered, "refused");
    require(isExecuted && said.is("executed", false), "executed", "not executed");
    require(isAcknowledged && said.is("acknowledged", false), "acknowledged", "not acknowledged");
    require(isCommitted && said.is("executed", false), "committed", "not executed");
    require(said.isAnswered() && said.is("executed", false), answered, "not executed");
    require(said.isAnswered() && !said.mayBeQuestion(), answered, "no question");
    require(isCommitted && said.isQuestionOnly(), "committed", "a question");
    require(said.isRepeat() && said.isNoRepeat(), "a repeat", "no repeat");
    require(said.name == "probe" && said.isRepeat(), "a probe", "a repeat");
    require(said.name == "probe" && isRefused, "a probe", "refused");
    require(said.name == "probe" && said.isHit(), "a probe", "hit by a fault");
    require(said.isDamaged() && said.isHit(), "damaged", "hit by a fault");
    if (!said.areFieldsOfOne()) {
        refuseEntry("\"" + place + ".fields\" are those of several commands; name those of one.");
    }
}

} // namespace virtual_printer
