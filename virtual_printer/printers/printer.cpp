#include "virtual_printer/printers/printer.h"

#include "virtual_printer/answers/replies.h"

#include <algorithm>
#include <utility>

namespace virtual_printer {
namespace {

// How long something has taken so far, for the trace.
class Stopwatch
{
public:
    [[nodiscard]] std::chrono::microseconds elapsed() const
    {
        return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                     start);
    }

private:
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

Request withUtf8Texts(const Request& request, CodePage codePage)
{
    Request converted = request;
    for (std::string& field : converted.fields) {
        field = toUtf8(field, codePage);
    }
    return converted;
}

bool isSame(const State& a, const State& b)
{
    return a.standing == b.standing && a.settings == b.settings && a.receipt == b.receipt &&
           a.pictures == b.pictures;
}

bool changesMemory(const State& before, const Draft& draft)
{
    return !isSame(before, draft.next) || !draft.documents.empty() || !draft.closures.empty() ||
           draft.service != Draft::Service::none;
}

// The place in the journal of the document whose lines the draft has: the one that it keeps, or the one that
// is open.
int documentOf(const Draft& draft)
{
    const int kept = draft.state().standing->documents;
    if (!draft.documents.empty()) {
        return kept;
    }
    return draft.state().receipt ? kept + 1 : 0;
}

// With enough of it for the first block, so that what cannot be read is still refused. Throws MemoryDamaged.
ReplyData inCodePage(Reply reply, CodePage codePage)
{
    if (!reply.further) {
        return ReplyData(fromUtf8(reply.data, codePage));
    }
    ReplyData data([further = std::move(reply.further), codePage] {
        const auto piece = further();
        return piece ? std::optional(fromUtf8(*piece, codePage)) : std::nullopt;
    });
    data.fetch();
    return data;
}

// The state as it is while there is no paper.
State withoutPaper(State state)
{
    Hardware hardware = *state.hardware;
    hardware.paperIsOut = true;
    state.hardware = std::make_shared<const Hardware>(std::move(hardware));
    return state;
}

std::shared_ptr<const Hardware> withPaperOf(Hardware hardware, const Hardware& other)
{
    hardware.paperIsOut = other.paperIsOut;
    return std::make_shared<const Hardware>(std::move(hardware));
}

// The memory's backup takes the place of settings and pictures.
Refusal restore(Draft& draft, const std::optional<Backup>& backup)
{
    if (!backup) {
        return Refusal::nothingToRestore;
    }
    // Passwords are nobody's to bring back.
    Settings settings = *backup->settings;
    settings.password = draft.state().settings->password;
    settings.servicePassword = draft.state().settings->servicePassword;
    draft.settings() = std::move(settings);
    draft.pictures() = *backup->pictures;
    return Refusal::none;
}

} // namespace

Printer::Printer(Memory memory, State stateWhenNew, Clock startedClock)
    : kept(std::move(memory)), whenNew(std::move(stateWhenNew)), clock(std::move(startedClock))
{
    start();
}

void Printer::restart()
{
    Hardware hardware = *current.hardware;
    hardware.display.clear();
    hardware.operatorDisplay.clear();
    current.upload = std::make_shared<const Upload>();
    try {
        start();
    } catch (const DiskFull& failure) {
        // It has loaded what was kept. Only its line has found no room, and other printers are to go on.
        happened.push_back(
            {.refusal = Refusal::diskFull, .command = "start", .shown = {}, .detail = failure.what()});
    } catch (const MemoryDamaged& failure) {
        // There is nothing to go on from but what it stood at, and other printers are to go on.
        happened.push_back(
            {.refusal = Refusal::journalDamaged, .command = "start", .shown = {}, .detail = failure.what()});
    }
    changeHardware(hardware);
}

void Printer::start()
{
    const auto before = kept.load();
    current = before.value_or(whenNew);
    if (const auto behind = now() - ownClock(); behind > std::chrono::seconds(0)) {
        // Not kept: the clock of the next start may be right.
        clock = [runs = std::move(clock), behind] { return runs() + behind; };
    }
    Draft draft(current, now());
    if (before && before->receipt) {
        draft.printInReceipt({.kind = Line::Kind::powerLost});
    }
    if (!before) {
        draft.standing();
        draft.settings();
        draft.pictures();
    }
    if (changesMemory(current, draft)) {
        kept.commit(before.value_or(State()), draft);
        current = draft.next;
        happened.push_back({Refusal::none, "start", std::move(draft.shown), documentOf(draft)});
    }
}

Moment Printer::now() const
{
    return std::max(ownClock(), earliest());
}

Moment Printer::earliest() const
{
    Moment moment = current.standing->lastDocument;
    if (current.standing->dayIsOpen) {
        moment = std::max(moment, current.standing->dayBegan);
    }
    return current.receipt ? std::max(moment, current.receipt->document.moment) : moment;
}

Moment Printer::ownClock() const
{
    return std::min(runningClock(), lastMoment);
}

Moment Printer::runningClock() const
{
    return clock() + current.standing->clockOffset;
}

bool Printer::expectsBlocks() const
{
    return current.upload->command != 0;
}

Answer Printer::execute(const Request& request, CodePage codePage, const Hindrance& hindrance)
{
    const Stopwatch watch;
    const Moment present = now();
    Request converted = withUtf8Texts(request, codePage);
    Decision decision = decide(hindrance.paperIsOut ? withoutPaper(current) : current, converted, present);
    std::optional<ReplyData> data;
    try {
        if (decision.refusal == Refusal::none && decision.rule->wants != Wants::nothing) {
            Reply reply = replyTo(*decision.rule, Fields(decision.rule->fields, converted.fields), current,
                                  kept, present);
            decision.settle(reply.verdict);
            for (Line& line : reply.lines) {
                decision.draft.print(std::move(line));
            }
            if (decision.rule->wants == Wants::reply) {
                data = inCodePage(std::move(reply), codePage);
            }
        }
        if (decision.refusal == Refusal::none && decision.draft.service == Draft::Service::restore) {
            decision.refusal = restore(decision.draft, kept.backup());
        }
        if (decision.refusal == Refusal::none && decision.rule->command == telvofm::Command::setDateTime) {
            // It was decided by the clock that shows, which stands while the one that runs is elsewhere.
            decision.draft.standing().clockOffset += present - runningClock();
        }
    } catch (const MemoryDamaged&) {
        decision.refusal = Refusal::journalDamaged;
    }
    const auto decided = watch.elapsed();
    Answer answer = carryOut(decision, hindrance);
    answer.moment = present;
    answer.decided = decided;
    answer.committed = watch.elapsed() - decided;
    answer.fields = std::move(converted.fields);
    if (answer.refusal != Refusal::none) {
        current.upload = std::make_shared<const Upload>(); // blocks that follow a refused request are noise
    } else {
        answer.data = std::move(data);
    }
    return answer;
}

// A refused block leaves the upload as it was: the till sends it again, and is to be told why again.
Answer Printer::takeBlock(std::string_view data, bool isLast, CodePage codePage, const Hindrance& hindrance)
{
    const State state = hindrance.paperIsOut ? withoutPaper(current) : current;
    return carryOut(decideBlock(state, data, isLast, codePage, now()), hindrance);
}

// Commits what was decided: from here on it has happened.
Answer Printer::carryOut(Decision decision, const Hindrance& hindrance)
{
    const std::string name(decision.rule == nullptr ? "" : decision.rule->name);
    Answer answer{.rule = decision.rule};
    if (decision.refusal == Refusal::none && hindrance.doesNothing) {
        return answer;
    }
    if (decision.refusal == Refusal::none && changesMemory(current, decision.draft)) {
        try {
            if (hindrance.diskIsFull) {
                throw DiskFull("The disk is full.");
            }
            kept.commit(current, decision.draft);
            answer.isCommitted = true;
        } catch (const DiskFull&) {
            decision.refusal = Refusal::diskFull;
        }
    }
    if (decision.refusal != Refusal::none) {
        happened.push_back(
            {.refusal = decision.refusal, .command = name, .shown = {}, .detail = decision.detail});
        answer.refusal = decision.refusal;
        answer.detail = std::move(decision.detail);
        return answer;
    }
    answer.isExecuted = true;
    const auto hardware = current.hardware;
    current = decision.draft.next;
    if (hindrance.paperIsOut) {
        current.hardware = withPaperOf(*current.hardware, *hardware);
    }
    const int document = documentOf(decision.draft);
    happened.push_back({.command = name,
                        .shown = std::move(decision.draft.shown),
                        .document = document,
                        .clearsJournal = decision.draft.service == Draft::Service::clearJournal});
    return answer;
}

void Printer::wasExchange(std::uint64_t number)
{
    if (!happened.empty() && happened.back().exchange == 0) {
        happened.back().exchange = number;
    }
}

std::vector<Happened> Printer::takeHappened()
{
    return std::exchange(happened, {});
}

void Printer::changeSettings(Settings settings)
{
    Draft draft(current, now());
    draft.settings() = std::move(settings);
    kept.commit(current, draft);
    current = draft.next;
}

void Printer::takeOver(const Memory& other)
{
    auto restored = other.load();
    if (!restored) {
        throw MemoryDamaged("There is no printer in it; give a memory that a printer has written.");
    }
    kept.copyFrom(other);
    current = std::move(*restored);
}

void Printer::goBack()
{
    kept.goBack();
    current = kept.load().value();
}

Memory Printer::snapshot() const
{
    Memory copy;
    copy.copyFrom(kept);
    return copy;
}

void Printer::setClock(Moment moment, const std::function<Clock(Moment)>& started)
{
    clock = started(moment - current.standing->clockOffset);
}

void Printer::changeHardware(const Hardware& hardware)
{
    current.hardware = std::make_shared<const Hardware>(hardware);
}

} // namespace virtual_printer
