#include "virtual_printer/control/exchange_harmony.h"

#include "virtual_printer/faults/fault.h"

#include <algorithm>
#include <initializer_list>

namespace virtual_printer {
namespace {

// What an entry says of an exchange; what it does not say may be either.
class Said
{
public:
    explicit Said(const Json& entry)
        : expected(entry), name(entry.value("name", "")),
          commands(commandsCalled(name, entry.value("command", ""))),
          other(otherCalled(name.empty() && commands.empty() ? "unknown" : name))
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
    // One of these faults has done to it what it does.
    [[nodiscard]] bool isHitBy(std::initializer_list<FaultKind> kinds) const
    {
        const Json deeds = expected.value("faults", Json::array());
        return std::any_of(kinds.begin(), kinds.end(), [&deeds](FaultKind kind) {
            return std::find(deeds.begin(), deeds.end(), ruleOf(kind).deed) != deeds.end();
        });
    }
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
// Questions alone are answered with data, and nothing is kept upon them. What faults did to an exchange says
// how it ended where that can be only one way.
void requireHarmony(const Json& expected, Stage stage, const std::string& place)
{
    const Said said(expected);
    using enum FaultKind;
    const bool isExecuted =
        stage == Stage::executed || said.is("executed", true) || said.isHitBy({executedNotAcknowledged});
    const bool isAcknowledged = stage == Stage::acknowledged || said.is("acknowledged", true);
    const bool isCommitted = said.is("committed", true);
    const bool isRefused = said.has("refusal");
    const char* const answered = said.is("taken", true) ? "taken" : "answered with data";
    const bool isKeptBack = said.isHitBy({refuse, requestLost, silence, acknowledgedNotExecuted, diskFull});
    const bool isUnanswered =
        said.isHitBy({refuse, requestLost, silence, acknowledgeLost, powerLoss, diskFull});
    const bool isNotRefused = said.isHitBy({refuse, requestLost, silence, acknowledgedNotExecuted});
    const bool hasOtherRefusal =
        isRefused && expected["refusal"].value("name", "diskFull") != textOf(Refusal::diskFull).name;
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
    require(isExecuted && isKeptBack, "executed", "kept from it by a fault");
    require(isCommitted && isKeptBack, "committed", "kept from it by a fault");
    require(said.isAnswered() && isKeptBack, answered, "kept from it by a fault");
    require(isAcknowledged && isUnanswered, "acknowledged", "left without an acceptance by a fault");
    require(isRefused && isNotRefused, "refused by the printer", "not refused by it, as a fault says");
    require(said.isHitBy({diskFull}) && said.hasNo("refusal"), "not refused",
            "refused because the disk was full");
    require(said.isHitBy({diskFull}) && hasOtherRefusal, "refused for another reason",
            "refused because the disk was full");
    require(said.isHitBy({diskFull, acknowledgedNotExecuted}) && said.isQuestionOnly(), "a question",
            "hit by a fault of what is carried out");
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
