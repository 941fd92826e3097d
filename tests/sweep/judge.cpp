#include "tests/sweep/judge.h"

#include <algorithm>
#include <array>

namespace telvofm::test::sweep {
namespace {

constexpr int silentAlthoughReady = 64;

// Whether all planned blocks were accepted, in their order, repeats of them in between.
bool holdsInOrder(std::span<const HeardRequest> heard, const std::vector<std::string>& blocks)
{
    auto due = blocks.begin();
    for (const HeardRequest& request : heard) {
        for (const std::string& block : request.uploaded) {
            if (due != blocks.end() && block == *due) {
                ++due;
            }
        }
    }
    return due == blocks.end();
}

bool isExecuted(const HeardRequest& request, const CallPlan& plan)
{
    return !request.refusal && request.bytes == plan.request();
}

bool isTrueSuccess(const CallRecord& record)
{
    const auto executed = [&](const HeardRequest& request) { return isExecuted(request, record.plan); };
    if (record.plan.fetches()) {
        return std::any_of(record.heard.begin(), record.heard.end(), [&](const HeardRequest& request) {
            return executed(request) && record.outcome.delivered(request.reply);
        });
    }
    return std::any_of(record.heard.begin(), record.heard.end(), executed) &&
           holdsInOrder(record.heard, record.plan.blocks());
}

bool isPrintersCode(int code)
{
    constexpr int largest = 255;
    return code > 0 && code <= largest;
}

bool isLibrarysCode(int code)
{
    constexpr auto codes = std::to_array<int>({-1, -10000, -10001, -10002, -10103, -10201, -10202});
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool isTrueFailure(const CallRecord& record)
{
    const int code = record.outcome.result;
    if (!record.outcome.deliveredNothing() && record.plan.fetches()) {
        return false;
    }
    if (!isPrintersCode(code)) {
        // The one export without a code says neither which it was.
        return isLibrarysCode(code) && (code != -1 || record.outcome.name == "getVariableStr");
    }
    return std::find(record.refusals.begin(), record.refusals.end(), code) != record.refusals.end();
}

bool isTrueSilence(const CallRecord& record)
{
    return record.outcome.result == silentAlthoughReady && record.link == Link::serial &&
           (record.outcome.deliveredNothing() || !record.plan.fetches());
}

bool isInBlock(Role role)
{
    return role == Role::blockLength || role == Role::blockData || role == Role::blockTerminator ||
           role == Role::blockChecksum;
}

bool changesBytes(Fault::Kind kind)
{
    return kind == Fault::Kind::flipped || kind == Fault::Kind::inserted || kind == Fault::Kind::deleted ||
           kind == Fault::Kind::doubled;
}

// A single flipped bit there never leaves the XOR as it was: the block is repeated, and the damage delivers
// nothing.
bool isSeenByChecksum(const CallRecord& record)
{
    return record.fault.kind == Fault::Kind::flipped && record.fault.direction == Direction::toTill &&
           (record.struckRole == Role::blockData || record.struckRole == Role::blockTerminator ||
            record.struckRole == Role::blockChecksum);
}

// The printer took something for whole that the till never sent.
bool tookDamagedUnit(const CallRecord& record)
{
    const auto blocks = record.plan.blocks();
    return std::any_of(record.heard.begin(), record.heard.end(), [&](const HeardRequest& request) {
        const bool isOther =
            request.refusal != SimulatedPrinter::damagedUnit && request.bytes != record.plan.request();
        const bool hasOther =
            std::any_of(request.uploaded.begin(), request.uploaded.end(), [&](const auto& b) {
                return std::find(blocks.begin(), blocks.end(), b) == blocks.end();
            });
        return isOther || hasOther;
    });
}

// Why no till could have seen that its result is untrue.
std::optional<Verdict> excuseOf(const CallRecord& record)
{
    if (record.metLateAnswer) {
        return Verdict::lateAnswer;
    }
    if (!changesBytes(record.fault.kind) || isSeenByChecksum(record)) {
        return std::nullopt;
    }
    if (record.fault.direction == Direction::toPrinter) {
        if (tookDamagedUnit(record)) {
            return Verdict::requestDamaged;
        }
        // Behind its request a call that fetches only says which blocks were good.
        const bool isDialogue = record.plan.fetches() && record.fault.position > record.plan.request().size();
        return isDialogue ? std::optional(Verdict::answerDamaged) : std::nullopt;
    }
    return record.struckRole && isInBlock(*record.struckRole) ? Verdict::blockDamaged
                                                              : Verdict::answerDamaged;
}

} // namespace

std::string_view nameOf(Verdict verdict)
{
    constexpr std::string_view names[] = {"success",         "failure",        "silence, or code 64",
                                          "late answer",     "answer damaged", "block damaged",
                                          "request damaged", "VIOLATION"};
    return names[static_cast<std::size_t>(verdict)];
}

std::string contradiction(const Conduct& conduct, const CallPlan& plan, const Outcome& outcome)
{
    if (!conduct.deviation.empty()) {
        return conduct.deviation;
    }
    const bool isText = outcome.name == "getVariableStr";
    const int due = isText && !conduct.delivers ? -1 : conduct.result;
    if (outcome.thrown.empty() && outcome.result != due) {
        return "it returned " + std::to_string(outcome.result) + " where " + std::to_string(due) + " was due";
    }
    const bool isDelivered = conduct.delivers ? outcome.delivered(conduct.reply) : outcome.deliveredNothing();
    return plan.fetches() && !isDelivered ? "it delivered something else than what came" : "";
}

Judgement judgedByPrinter(const CallRecord& record)
{
    const Outcome& outcome = record.outcome;
    if (!outcome.thrown.empty()) {
        return {Verdict::violation, "an exception passed out: " + outcome.thrown};
    }
    const bool succeeded = outcome.result == 0;
    if (succeeded ? isTrueSuccess(record) : isTrueFailure(record)) {
        return {succeeded ? Verdict::success : Verdict::failure, {}};
    }
    if (isTrueSilence(record)) {
        return {Verdict::silence, {}};
    }
    if (const auto excuse = excuseOf(record)) {
        return {*excuse, {}};
    }
    return {Verdict::violation, "it returned " + std::to_string(outcome.result) +
                                    ", which the printer's record does not bear out"};
}

} // namespace telvofm::test::sweep
